#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "HistoryModel.h"
#include "Promise.h"
#include "history/History.h"
#include "history/HistoryNames.h"

#include <QFile>
#include <QTemporaryDir>

#include <array>

namespace brindlecam {

namespace {

constexpr int kMostFiles = 30;
constexpr int kMostSteps = 12;
constexpr int kMostNameBytes = 60;
constexpr int kSecondsAroundAnHour = 3;

const QDateTime kNewYear(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC);
const QDateTime kFirst(QDate(1970, 1, 2), QTime(0, 0), Qt::UTC);
const QDateTime kLast(QDate(9999, 12, 31), QTime(23, 59, 59, 999), Qt::UTC);

/// Often within the same few milliseconds, where names meet.
QDateTime moment(fuzz::FuzzInput& input)
{
    if (input.oneIn(4))
        return QDateTime::fromMSecsSinceEpoch(
            input.number(kFirst.toMSecsSinceEpoch(), kLast.toMSecsSinceEpoch()), Qt::UTC);
    return input.oneIn(16) ? kLast : kNewYear.addMSecs(input.integer(0, 31));
}

QString digits(int number, int count)
{
    return QStringLiteral("%1").arg(number, count, 10, QLatin1Char('0'));
}

/// Like a name of ours, with dates and times that exist and such that do not.
QString datedName(fuzz::FuzzInput& input)
{
    constexpr std::array kEndings{".png", ".gif", ".PNG", ".png.AbCdEf", ".jpg"};
    QString name = digits(input.integer(0, 9999), 4);
    name += digits(input.integer(0, 13), 2);
    name += digits(input.integer(0, 32), 2);
    name += QLatin1Char('-') + digits(input.integer(0, 24), 2);
    name += digits(input.integer(0, 60), 2);
    name += digits(input.integer(0, 60), 2);
    name += QLatin1Char('-') + digits(input.integer(0, 999), 3);
    return name + QLatin1String(input.oneOf(kEndings));
}

QString unfinishedName(fuzz::FuzzInput& input)
{
    constexpr int kUsual = 13;
    QString letters;
    for (int left = input.oneIn(8) ? kUsual - 1 : kUsual; left > 0; --left)
        letters += QString::number(input.integer(0, 35), 36);
    return QStringLiteral(".brindlecam-%1.part").arg(letters);
}

QString someName(fuzz::FuzzInput& input)
{
    switch (input.integer(0, 3)) {
    case 0:
        return HistoryNames::nameFor(moment(input), QStringLiteral("png"));
    case 1:
        return datedName(input);
    case 2:
        return unfinishedName(input);
    default:
        return QString::fromUtf8(input.bytes(kMostNameBytes))
            .remove(QLatin1Char('/'))
            .remove(QChar(0));
    }
}

void leaveSomething(fuzz::FuzzInput& input, fuzz::HistoryModel& model)
{
    using Kind = fuzz::HistoryModel::Kind;
    constexpr std::array kKinds{Kind::file, Kind::file, Kind::file, Kind::folder, Kind::link};
    constexpr std::array kModes{0600, 0644, 0640, 0700};
    const QString name = someName(input);
    const Kind kind = input.oneOf(kKinds);
    const int mode = input.oneOf(kModes);
    const int age = 3600 + input.integer(-kSecondsAroundAnHour, kSecondsAroundAnHour);
    model.leave(name, kind, mode, kNewYear.addSecs(-age));
}

/// A folder that is there with anything in it, or is not there.
void furnish(fuzz::FuzzInput& input, fuzz::HistoryModel& model)
{
    if (input.oneIn(8))
        return;
    model.makeFolder(input.flag() ? 0755 : 0700);
    for (int left = input.integer(0, kMostFiles); left > 0; --left)
        leaveSomething(input, model);
}

void take(fuzz::FuzzInput& input, const History& history, fuzz::HistoryModel& model,
          const QDateTime& now)
{
    const QString extension = input.flag() ? QStringLiteral("gif") : QStringLiteral("png");
    const QByteArray picture = input.oneIn(16) ? QByteArray() : "picture " + input.bytes(3);
    const bool added = history.add(picture, extension);
    BRINDLECAM_PROMISE(added == model.add(picture, extension, now));
}

} // namespace

} // namespace brindlecam

/// A history folder with anything in it: what counts as an entry, what a new one is called, and
/// what goes. Whatever is not ours stays as it is.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace brindlecam;
    fuzz::FuzzInput input(data, size);
    const QTemporaryDir place;
    const QString folder = place.filePath(QStringLiteral("Brindlecam/Recientes"));
    fuzz::HistoryModel model(folder);
    furnish(input, model);
    QDateTime now = kNewYear;
    const History history({folder}, [&now] { return now; });
    model.check(history);
    enum class Step { add, clear, tidy };
    for (int left = kMostSteps; left > 0 && !input.isSpent(); --left) {
        now = moment(input);
        switch (input.oneIn(6) ? static_cast<Step>(input.integer(1, 2)) : Step::add) {
        case Step::add:
            take(input, history, model, now);
            break;
        case Step::clear:
            BRINDLECAM_PROMISE(history.clear() == model.clear());
            break;
        case Step::tidy:
            history.tidy();
            model.tidy(now);
            break;
        }
        model.check(history);
    }
    return 0;
}
