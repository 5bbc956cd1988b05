#include "settings/Release.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace brindlecam {

namespace {

bool isEnglish(const QString& language)
{
    return language.startsWith(QLatin1String("en"));
}

constexpr qsizetype kLongestVersion = 32;
constexpr qsizetype kMostNotes = 1000; // characters
constexpr qsizetype kMostNoteLines = 14;

/// It goes into a menu and a message.
bool isPresentable(const QString& version)
{
    return !version.isEmpty() && version.size() <= kLongestVersion &&
           std::ranges::all_of(version, [](QChar c) { return c.isPrint(); });
}

/// As much of it as fits a message.
QString shortened(const QString& notes)
{
    const QString lines = notes.section(QLatin1Char('\n'), 0, kMostNoteLines - 1).left(kMostNotes);
    return lines.size() < notes.size() ? lines + QStringLiteral("…") : notes;
}

bool isMissing(const QJsonValue& value)
{
    return value.isUndefined() || value.isNull();
}

/// None where one of them is no text.
std::optional<QHash<QString, QString>> texts(const QJsonValue& value)
{
    QHash<QString, QString> all;
    if (isMissing(value))
        return all;
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject object = value.toObject();
    for (auto each = object.begin(); each != object.end(); ++each) {
        if (!each->isString())
            return std::nullopt;
        all.insert(each.key(), each->toString());
    }
    return all;
}

} // namespace

std::optional<Release> Release::fromJson(const QByteArray& json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const QJsonValue version = object.value(QStringLiteral("version"));
    const QJsonValue url = object.value(QStringLiteral("url"));
    const QJsonValue english = object.value(QStringLiteral("url_en"));
    const auto notes = texts(object.value(QStringLiteral("notes")));
    if (!isPresentable(version.toString()) || !url.isString() ||
        !(isMissing(english) || english.isString()) || !notes)
        return std::nullopt;
    return Release{version.toString(), url.toString(),
                   english.isString() ? std::optional(english.toString()) : std::nullopt, *notes};
}

QString Release::pageIn(const QString& language) const
{
    return isEnglish(language) && englishUrl ? *englishUrl : url;
}

QString Release::notesIn(const QString& language) const
{
    const QString key = isEnglish(language) ? QStringLiteral("en") : QStringLiteral("es");
    return shortened(notes.value(key, notes.value(QStringLiteral("es"))));
}

bool Release::isSafe(const QString& url)
{
    const QUrl parsed(url, QUrl::StrictMode);
    // Not the scheme of what was parsed, which is in small letters by then.
    return parsed.isValid() && !parsed.host().isEmpty() &&
           url.startsWith(QLatin1String("https://"));
}

bool Release::isVersion(const QString& version, const QString& newerThan)
{
    const QStringList ours = newerThan.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    const QStringList theirs = version.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    const auto number = [](const QStringList& all, qsizetype i) {
        return all.value(i).toLongLong(); // 0 for what is none
    };
    for (qsizetype i = 0; i < std::max(ours.size(), theirs.size()); ++i) {
        if (number(theirs, i) != number(ours, i))
            return number(theirs, i) > number(ours, i);
    }
    return false;
}

} // namespace brindlecam
