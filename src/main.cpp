#include "Program.h"
#include "base/Overloaded.h"
#include "base/Text.h"
#include "look/Appearance.h"
#include "look/Catalogues.h"
#include "platform/Platform.h"
#include "preferences/Config.h"
#include "shell/Commands.h"
#include "shell/SingleInstance.h"

#include <QApplication>
#include <QTextStream>

#include <cstdio>
#include <filesystem>

using namespace brindlecam;

namespace {

QByteArrayList wordsAfterTheName(int argc, char* argv[])
{
    QByteArrayList words;
    for (int i = 1; i < argc; ++i)
        words << argv[i];
    return words;
}

QByteArray workingFolder()
{
    std::error_code gone;
    return QByteArray::fromStdString(std::filesystem::current_path(gone).native());
}

int print(const InstanceReply& reply)
{
    FILE* const where = reply.exitCode == Commands::success ? stdout : stderr;
    std::fwrite(reply.text.constData(), 1, static_cast<std::size_t>(reply.text.size()), where);
    return reply.exitCode;
}

void warn(const QString& line)
{
    QTextStream(stderr) << line << Qt::endl;
}

/// One line for each port, for people and scripts.
int printPorts()
{
    const auto ports = choosePorts();
    if (!ports) {
        warn(ports.error().message);
        return Commands::noDisplay;
    }
    QTextStream out(stdout);
    for (const ServedPort& port : ports.value().served)
        out << port.name << ' ' << port.serves << '\n';
    return Commands::success;
}

int runFirstCopy(int argc, char* argv[], const Command& command, SingleInstance& instance)
{
    const auto ports = choosePorts();
    if (!ports) {
        warn(ports.error().message);
        return Commands::noDisplay;
    }

    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setDesktopFileName(QStringLiteral("io.halvick.Brindlecam"));
    Platform platform = ports.value().make();
    Catalogues catalogues;
    catalogues.install(platform.textCatalogue);
    Appearance::install(platform.interfaceFont);

    const auto voice =
        command.liveTest ? CaptureFailure::Voice::silent : CaptureFailure::Voice::alerts;
    Program program(platform, voice, instance);
    if (!program.delegate().listen())
        warn(text("Brindlecam funciona, pero no puede recibir órdenes: no hay dónde abrir su "
                  "socket."));
    program.delegate().start(command);
    return QApplication::exec();
}

int run(int argc, char* argv[], const Command& command)
{
    SingleInstance instance;
    return std::visit(
        Overloaded{
            [&](SingleInstance::First) {
                const bool isToEnd = command.other == ProgramAction::quit;
                return isToEnd ? Commands::success : runFirstCopy(argc, argv, command, instance);
            },
            [](const InstanceReply& reply) { return print(reply); },
            [](SingleInstance::Unanswered) { return print(Commands::unansweredReply()); },
        },
        instance.handOver({wordsAfterTheName(argc, argv), workingFolder()}));
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("brindlecam"));
    QCoreApplication::setApplicationVersion(QStringLiteral(BRINDLECAM_VERSION));
    const Command command = Commands::parseWords(wordsAfterTheName(argc, argv));
    // Whoever asks the environment gets the same as Qt.
    if (!command.display.isEmpty())
        qputenv("DISPLAY", command.display.toLocal8Bit());
    if (!command.backEnd.isEmpty())
        qputenv("QT_QPA_PLATFORM", command.backEnd.toLocal8Bit());
    if (command.kind == Command::Kind::ports)
        return printPorts();
    using enum Commands::Updates;
    const auto updates = Config::updateFeedUrl() ? offered : absent;
    if (const auto spoken = Commands::spokenReply(command, updates))
        return print(*spoken);
    return run(argc, argv, command);
}
