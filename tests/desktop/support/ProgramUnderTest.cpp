#include "desktop/support/ProgramUnderTest.h"

#include "desktop/support/Patience.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace brindlecam::desktop {

namespace {

const auto kScales = QStringLiteral("QT_SCREEN_SCALE_FACTORS");

QString binary()
{
    QString path = qEnvironmentVariable("BRINDLECAM_PROGRAM");
    if (!QFileInfo(path).isExecutable())
        qFatal("BRINDLECAM_PROGRAM names no program: \"%s\"", qPrintable(path));
    return path;
}

/// Whether some process listens on a socket below this folder. Reading the kernel's table, instead
/// of connecting, keeps the program from seeing a visitor who says nothing.
bool somebodyListensBelow(const QString& folder)
{
    constexpr int kFlagsColumn = 3;
    constexpr int kPathColumn = 7;
    constexpr uint kAcceptsConnections = 0x10000;
    QFile table(QStringLiteral("/proc/net/unix"));
    if (!table.open(QIODevice::ReadOnly))
        return false;
    const QList<QByteArray> lines = table.readAll().split('\n');
    for (const QByteArray& line : lines) {
        const QByteArrayList columns = line.simplified().split(' ');
        if (columns.size() <= kPathColumn || !columns[kPathColumn].startsWith(folder.toUtf8()))
            continue;
        if ((columns[kFlagsColumn].toUInt(nullptr, 16) & kAcceptsConnections) != 0)
            return true;
    }
    return false;
}

} // namespace

ProgramUnderTest::ProgramUnderTest(const Desktop& desktop, const QString& home)
    : m_folders(home)
    , m_environment(desktop.programsEnvironment())
{
    m_folders.addTo(m_environment);
    m_environment.insert(QStringLiteral("QT_FONT_DPI"), QStringLiteral("96"));
    m_environment.remove(QStringLiteral("QT_SCALE_FACTOR"));
    m_environment.remove(kScales);
}

void ProgramUnderTest::setScales(const QString& scales)
{
    m_environment.insert(kScales, scales);
}

void ProgramUnderTest::writeSettings(QJsonObject settings)
{
    if (!settings.contains(QLatin1String("didShowWelcome")))
        settings.insert(QLatin1String("didShowWelcome"), true);
    if (!settings.contains(QLatin1String("checkUpdates")))
        settings.insert(QLatin1String("checkUpdates"), false);
    const QString path = m_folders.settingsFile();
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(settings).toJson()) < 0)
        qFatal("settings cannot be written: %s", qPrintable(file.errorString()));
}

QJsonObject ProgramUnderTest::settings() const
{
    QFile file(m_folders.settingsFile());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

void ProgramUnderTest::start(const QStringList& arguments)
{
    launch(arguments);
    if (!waitUntil([this] { return isReady() || !isRunning(); }) || !isRunning())
        qFatal("the program does not come up:\n%s", qPrintable(log()));
}

void ProgramUnderTest::launch(const QStringList& arguments)
{
    if (!QFileInfo::exists(m_folders.settingsFile()))
        writeSettings({});
    m_earlierLog = log();
    m_process = another(arguments);
}

std::unique_ptr<Process> ProgramUnderTest::another(const QStringList& arguments) const
{
    QStringList words = commandLine(arguments);
    const QString first = words.takeFirst();
    return std::make_unique<Process>(first, words, m_environment);
}

QStringList ProgramUnderTest::commandLine(const QStringList& arguments) const
{
    return m_launcher + QStringList(binary()) + arguments;
}

QString ProgramUnderTest::socket() const
{
    return QStringLiteral("%1/brindlecam-%2.socket")
        .arg(m_folders.runtime(), m_environment.value(QStringLiteral("DISPLAY")));
}

bool ProgramUnderTest::isAnswering() const
{
    // The socket appears under its own name once it is listened to; a crashed run may have left
    // one.
    return QFileInfo::exists(socket()) && somebodyListensBelow(m_folders.runtime());
}

int ProgramUnderTest::answerTo(const QByteArray& line) const
{
    constexpr int kPatienceMilliseconds = 10000;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray path = QFile::encodeName(socket());
    if (path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return -1;
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));
    const int client = ::socket(AF_UNIX, SOCK_STREAM, 0);
    QByteArray answer;
    if (::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        ::send(client, line.constData(), static_cast<std::size_t>(line.size()), MSG_NOSIGNAL) ==
            line.size()) {
        std::array<char, 512> bytes{};
        pollfd readable{client, POLLIN, 0};
        while (!answer.contains('\n') && ::poll(&readable, 1, kPatienceMilliseconds) == 1) {
            const ssize_t count = ::read(client, bytes.data(), bytes.size());
            if (count <= 0)
                break;
            answer.append(bytes.data(), count);
        }
    }
    ::close(client);
    bool isNumber = false;
    const int code = answer.left(answer.indexOf('\n')).toInt(&isNumber);
    return isNumber ? code : -1;
}

CommandResult ProgramUnderTest::command(const QStringList& arguments) const
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    QStringList words = commandLine(arguments);
    const QString first = words.takeFirst();
    process.start(first, words);
    CommandResult result;
    if (!process.waitForFinished(kPatience))
        process.kill();
    else if (process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.error = QString::fromUtf8(process.readAllStandardError());
    return result;
}

int ProgramUnderTest::quit()
{
    return m_process->end() ? m_process->exitCode() : -1;
}

void ProgramUnderTest::kill()
{
    m_process->kill();
}

QString ProgramUnderTest::log() const
{
    return m_process ? m_earlierLog + QString::fromUtf8(m_process->log()) : m_earlierLog;
}

} // namespace brindlecam::desktop
