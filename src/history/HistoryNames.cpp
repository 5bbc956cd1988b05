#include "history/HistoryNames.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <optional>

namespace brindlecam::HistoryNames {

namespace {

const QString kDay = QStringLiteral("yyyyMMdd");
const QString kClock = QStringLiteral("HHmmss-zzz");
constexpr int kLastYear = 9999; // later ones have five digits

/// What the clock showed. As UTC, because local clocks skip an hour in spring.
std::optional<QDateTime> timeIn(const QString& name)
{
    // Never destroyed: a capture may still be on its way to the disk when the X server's end ends
    // the program from inside of Qt.
    static const auto& pattern = *new QRegularExpression(QRegularExpression::anchoredPattern(
        QStringLiteral("([0-9]{8})-([0-9]{6}-[0-9]{3})\\.(?:png|gif)")));
    const QRegularExpressionMatch match = pattern.match(name);
    const QDate day = QDate::fromString(match.captured(1), kDay);
    const QTime clock = QTime::fromString(match.captured(2), kClock);
    return day.isValid() && clock.isValid() ? std::optional(QDateTime(day, clock, Qt::UTC))
                                            : std::nullopt;
}

} // namespace

QString nameFor(const QDateTime& time, const QString& fileExtension)
{
    return time.toString(kDay + QLatin1Char('-') + kClock) + QLatin1Char('.') + fileExtension;
}

QString nextName(const QDateTime& now, const QStringList& entries, const QString& fileExtension)
{
    QDateTime time(now.date(), now.time(), Qt::UTC);
    if (const auto newest = entries.isEmpty() ? std::nullopt : timeIn(entries.constFirst())) {
        const QDateTime next = newest->addMSecs(1);
        if (next.date().year() <= kLastYear)
            time = std::max(time, next);
    }
    return nameFor(time, fileExtension);
}

bool isEntry(const QString& name)
{
    return timeIn(name).has_value();
}

QStringList entries(const QStringList& names)
{
    QStringList kept;
    std::copy_if(names.begin(), names.end(), std::back_inserter(kept), isEntry);
    std::stable_sort(kept.begin(), kept.end(),
                     [](const QString& a, const QString& b) { return a > b; });
    return kept;
}

QStringList surplus(QStringList entries, const QString& added)
{
    const bool isThere = entries.removeOne(added);
    return entries.mid(isThere ? kMostEntries - 1 : kMostEntries);
}

} // namespace brindlecam::HistoryNames
