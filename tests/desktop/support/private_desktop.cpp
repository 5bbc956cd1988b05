#include "desktop/support/Desktop.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace brindlecam::desktop;

namespace {

// As shells have it.
constexpr int kUsage = 2;
constexpr int kNotFound = 127;
constexpr int kSignalled = 128;

volatile std::sig_atomic_t command = 0; ///< its process; 0 while there is none
volatile std::sig_atomic_t asked = 0;   ///< the last signal that came

/// What asks us to end is for the command to answer; we end when it does.
void passOn(int signal, siginfo_t* info, void* /*context*/)
{
    asked = signal;
    // Keys on the terminal reach the command by themselves.
    if (command != 0 && info->si_code != SI_KERNEL)
        ::kill(static_cast<pid_t>(command), signal);
}

void passSignalsOn()
{
    struct sigaction action {};
    action.sa_sigaction = passOn;
    action.sa_flags = SA_SIGINFO | SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        ::sigaction(signal, &action, nullptr);
}

struct Order {
    DesktopOptions desktop;
    QStringList command;
};

/// "1366x768", or "1366x768x16" with a depth.
bool readSize(const QString& words, ScreenOptions& screen)
{
    const QStringList numbers = words.split(QLatin1Char('x'));
    if (numbers.size() < 2 || numbers.size() > 3)
        return false;
    screen.pixels = {numbers[0].toInt(), numbers[1].toInt()};
    if (numbers.size() == 3)
        screen.depth = numbers[2].toInt();
    return !screen.pixels.isEmpty() && screen.depth > 0;
}

/// None when that is no order; says so.
std::optional<Order> orderOf(const QStringList& arguments)
{
    const QCommandLineOption manager(QStringLiteral("window-manager"), {});
    const QCommandLineOption compositor(QStringLiteral("compositor"), {});
    const QCommandLineOption without(QStringLiteral("without"), {}, QStringLiteral("EXTENSION"));
    QCommandLineParser parser;
    parser.addOptions({manager, compositor, without});
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    Order order{.desktop = {.windowManager = WindowManager::none}, .command = {}};
    const bool read = parser.parse(arguments);
    order.command = parser.positionalArguments();
    if (!read || order.command.size() < 2 ||
        !readSize(order.command.takeFirst(), order.desktop.screen)) {
        std::fputs("usage: private_desktop [--window-manager] [--compositor] "
                   "[--without EXTENSION] SIZE COMMAND…\n",
                   stderr);
        return std::nullopt;
    }
    if (parser.isSet(manager))
        order.desktop.windowManager = WindowManager::openbox;
    if (parser.isSet(compositor))
        order.desktop.compositor = Compositor::picom;
    order.desktop.screen.without = parser.value(without);
    return order;
}

/// Runs the command to its end, with our own input and output; its exit code as shells tell it.
int run(QStringList words, const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    const QString program = words.takeFirst();
    process.start(program, words);
    if (!process.waitForStarted(-1)) {
        std::fprintf(stderr, "private_desktop: %s: %s\n", qPrintable(program),
                     qPrintable(process.errorString()));
        return kNotFound;
    }
    command = static_cast<std::sig_atomic_t>(process.processId());
    if (asked != 0)
        ::kill(static_cast<pid_t>(command), asked); // it came before there was anybody to ask
    process.waitForFinished(-1);
    command = 0;
    // A signal's number is told as a code, too.
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode()
                                                        : kSignalled + process.exitCode();
}

/// Ends whatever the command has left behind: we have taken its place as the parent.
void endOrphans()
{
    const QString children = QStringLiteral("/proc/self/task/%1/children").arg(::getpid());
    do {
        QFile list(children);
        if (!list.open(QIODevice::ReadOnly))
            return;
        for (const QByteArray& child : list.readAll().simplified().split(' ')) {
            if (const pid_t pid = child.toInt(); pid > 0)
                ::kill(pid, SIGKILL);
        }
    } while (::waitpid(-1, nullptr, 0) > 0 || errno == EINTR);
}

} // namespace

/// Runs a command on a desktop of its own, as large as SIZE (1366x768, or 1366x768x16 with a
/// depth), and ends as it does; nothing that was started there, the command's own children
/// included, lives on.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const auto order = orderOf(QCoreApplication::arguments());
    if (!order)
        return kUsage;
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    passSignalsOn();
    auto desktop = Desktop::start(order->desktop);
    const int code = asked != 0 ? kSignalled + asked : run(order->command, desktop->environment());
    desktop.reset();
    endOrphans();
    return code;
}
