#include "Program.h"
#include "app/Appearance.h"
#include "app/Catalogues.h"
#include "app/Commands.h"
#include "app/SingleInstance.h"
#include "base/Text.h"

#include <QApplication>
#include <QTextStream>

#include <cstdio>

using namespace brindlecam;

namespace {

QStringList argumentsAfterTheName(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

int say(FILE* where, const QString& words, int exitCode)
{
    QTextStream(where) << words << Qt::endl;
    return exitCode;
}

int runFirstCopy(int argc, char* argv[], const Command& command, SingleInstance& instance)
{
    if (const auto error = preparePlatform())
        return say(stderr, error->message, Commands::noDisplay);

    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setDesktopFileName(QStringLiteral("io.halvick.Brindlecam"));
    Platform platform = makePlatform();
    Catalogues catalogues;
    catalogues.install(platform.textCatalogue);
    Appearance::install(platform.interfaceFont);

    Program program(std::move(platform), command.liveTest ? CaptureFailure::Voice::silent
                                                          : CaptureFailure::Voice::alerts);
    if (command.action && !program.delegate().isAvailable(*command.action))
        return say(stderr, text("Esa acción no está disponible."), Commands::notAvailable);
    instance.listen(
        [&program](const InstanceRequest& request) { return program.delegate().answer(request); });
    program.start(command.action);
    return QApplication::exec();
}

int run(int argc, char* argv[], const Command& command)
{
    SingleInstance instance;
    switch (instance.handOver({command.action})) {
    case SingleInstance::Outcome::first:
        return runFirstCopy(argc, argv, command, instance);
    case SingleInstance::Outcome::performed:
        return Commands::success;
    case SingleInstance::Outcome::unavailable:
        return say(stderr, text("Esa acción no está disponible."), Commands::notAvailable);
    case SingleInstance::Outcome::unanswered:
        return say(stderr, text("Brindlecam ya está abierto, pero no responde."),
                   Commands::unanswered);
    }
    Q_UNREACHABLE();
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("brindlecam"));
    QCoreApplication::setApplicationVersion(QStringLiteral(BRINDLECAM_VERSION));
    const Command command = Commands::parse(argumentsAfterTheName(argc, argv));
    switch (command.kind) {
    case Command::Kind::run:
        return run(argc, argv, command);
    case Command::Kind::version:
        return say(stdout,
                   QStringLiteral("Brindlecam %1").arg(QCoreApplication::applicationVersion()),
                   Commands::success);
    case Command::Kind::help:
        return say(stdout, Commands::usage(), Commands::success);
    case Command::Kind::wrong:
        return say(stderr,
                   Commands::complaint(command.wrongArgument) + QLatin1Char('\n') +
                       Commands::usage(),
                   Commands::wrongArguments);
    }
    Q_UNREACHABLE();
}
