#include "platform/linux/AutostartEntry.h"

#include "base/WholeFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>

#include <algorithm>
#include <optional>
#include <utility>

namespace brindlecam {

namespace {

constexpr qint64 kMostBytes = 64 * 1024; // of a file that others may have written

QString fileName()
{
    return QStringLiteral("io.halvick.Brindlecam.desktop");
}

/// The keys of the group that counts; none where there is no such file.
std::optional<QHash<QString, QString>> keysOf(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QHash<QString, QString> keys;
    bool counts = false;
    const QList<QByteArray> lines = file.read(kMostBytes).split('\n');
    for (const QByteArray& bytes : lines) {
        const QString line = QString::fromUtf8(bytes).trimmed();
        const qsizetype sign = line.indexOf(QLatin1Char('='));
        if (line.startsWith(QLatin1Char('[')))
            counts = line == QLatin1String("[Desktop Entry]");
        else if (counts && sign > 0 && !line.startsWith(QLatin1Char('#')))
            keys.insert(line.left(sign).trimmed(), line.mid(sign + 1).trimmed());
    }
    return keys;
}

/// The value of a key of the kind string, as it was before it was written.
QString unescaped(const QString& value)
{
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != QLatin1Char('\\') || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        const QChar next = value[++i];
        text += next == QLatin1Char('s')   ? QLatin1Char(' ')
                : next == QLatin1Char('n') ? QLatin1Char('\n')
                : next == QLatin1Char('t') ? QLatin1Char('\t')
                                           : next;
    }
    return text;
}

/// The program that a command line of a desktop file starts.
QString programIn(const QString& exec)
{
    const QString line = unescaped(exec);
    if (!line.startsWith(QLatin1Char('"')))
        return line.section(QLatin1Char(' '), 0, 0)
            .replace(QLatin1String("%%"), QLatin1String("%"));
    QString program;
    for (qsizetype i = 1; i < line.size() && line[i] != QLatin1Char('"'); ++i) {
        if (line[i] == QLatin1Char('\\') && i + 1 < line.size())
            ++i;
        program += line[i];
    }
    return program.replace(QLatin1String("%%"), QLatin1String("%"));
}

/// A path as a command line of a desktop file: quoted, and then escaped as any string is.
QString execOf(const QString& program)
{
    QString quoted;
    for (const QChar c : program) {
        if (QStringLiteral("\"`$\\").contains(c))
            quoted += QLatin1Char('\\');
        quoted += c == QLatin1Char('%') ? QStringLiteral("%%") : QString(c);
    }
    return QLatin1Char('"') + quoted.replace(QLatin1Char('\\'), QLatin1String("\\\\")) +
           QLatin1Char('"');
}

/// Whether one of these desktops, with semicolons between, is the session's.
bool namesThisDesktop(const QString& desktops)
{
    const QStringList named = desktops.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    const QStringList ours =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'), Qt::SkipEmptyParts);
    return std::ranges::any_of(ours, [&](const QString& each) { return named.contains(each); });
}

bool isThere(const QString& program)
{
    if (!program.startsWith(QLatin1Char('/')))
        return !program.isEmpty() && !QStandardPaths::findExecutable(program).isEmpty();
    const QFileInfo there(program);
    return there.isFile() && there.isExecutable();
}

bool starts(const QHash<QString, QString>& keys)
{
    const auto is = [&keys](const char* key, const char* value) {
        return keys.value(QString::fromLatin1(key)) == QLatin1String(value);
    };
    if (is("Hidden", "true") || is("X-GNOME-Autostart-enabled", "false") ||
        is("X-MATE-Autostart-enabled", "false"))
        return false;
    const auto only = keys.constFind(QStringLiteral("OnlyShowIn"));
    if ((only != keys.constEnd() && !namesThisDesktop(*only)) ||
        namesThisDesktop(keys.value(QStringLiteral("NotShowIn"))))
        return false;
    const auto tried = keys.constFind(QStringLiteral("TryExec"));
    return (tried == keys.constEnd() || isThere(unescaped(*tried))) &&
           isThere(programIn(keys.value(QStringLiteral("Exec"))));
}

} // namespace

AutostartEntry::AutostartEntry(Places places)
    : m_places(std::move(places))
{
}

AutostartEntry::Places AutostartEntry::standardPlaces()
{
    const auto kind = QStandardPaths::GenericConfigLocation;
    const QString own = QStandardPaths::writableLocation(kind);
    Places places{.own = own + QStringLiteral("/autostart"),
                  .program = QCoreApplication::applicationFilePath()};
    for (const QString& folder : QStandardPaths::standardLocations(kind)) {
        if (folder != own)
            places.systems << folder + QStringLiteral("/autostart");
    }
    return places;
}

QString AutostartEntry::path() const
{
    return m_places.own + QLatin1Char('/') + fileName();
}

QString AutostartEntry::systemFile() const
{
    for (const QString& folder : m_places.systems) {
        const QString file = folder + QLatin1Char('/') + fileName();
        if (QFileInfo(file).isFile())
            return file;
    }
    return {};
}

bool AutostartEntry::isEnabled() const
{
    auto keys = keysOf(path());
    if (!keys)
        keys = keysOf(systemFile());
    return keys && starts(*keys);
}

bool AutostartEntry::enable() const
{
    QDir().mkpath(m_places.own);
    return writeWhole(path(), QStringLiteral("[Desktop Entry]\n"
                                             "Type=Application\n"
                                             "Name=Brindlecam\n"
                                             "Exec=%1\n"
                                             "Icon=io.halvick.Brindlecam\n"
                                             "Terminal=false\n"
                                             "StartupNotify=false\n")
                                  .arg(execOf(m_places.program))
                                  .toUtf8());
}

bool AutostartEntry::disable() const
{
    const auto machines = keysOf(systemFile());
    if (machines && starts(*machines)) {
        QDir().mkpath(m_places.own);
        return writeWhole(path(), "[Desktop Entry]\nType=Application\nHidden=true\n");
    }
    const QFileInfo file(path());
    return (!file.exists() && !file.isSymLink()) || QFile::remove(path());
}

} // namespace brindlecam
