#include "shell/Commands.h"

#include "base/Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <string_view>

namespace brindlecam::Commands {

namespace {

/// Options of Qt's application classes, with one or two dashes.
constexpr std::array<std::string_view, 15> kQtOptionsWithValue{"platform",
                                                               "platformpluginpath",
                                                               "platformtheme",
                                                               "plugin",
                                                               "qwindowgeometry",
                                                               "qwindowicon",
                                                               "qwindowtitle",
                                                               "style",
                                                               "stylesheet",
                                                               "session",
                                                               "display",
                                                               "name",
                                                               "title",
                                                               "geometry",
                                                               "icon"};
constexpr std::array<std::string_view, 6> kQtSwitches{"reverse", "sync",        "nograb",
                                                      "dograb",  "widgetcount", "testability"};

constexpr QLatin1String kDelay("delay");

template <typename List>
bool holds(const List& names, const QString& name)
{
    return std::any_of(names.begin(), names.end(), [&name](std::string_view candidate) {
        return name == QLatin1String(candidate.data(), static_cast<qsizetype>(candidate.size()));
    });
}

/// The option's name without dashes and value; empty when the argument is no option.
QString optionName(const QString& argument)
{
    if (!argument.startsWith(QLatin1Char('-')))
        return {};
    const qsizetype dashes = argument.startsWith(QLatin1String("--")) ? 2 : 1;
    return argument.mid(dashes).section(QLatin1Char('='), 0, 0);
}

/// The value of the option at `i`, attached to it or the next argument.
QString optionValue(const QStringList& arguments, qsizetype i)
{
    const qsizetype sign = arguments.at(i).indexOf(QLatin1Char('='));
    return sign < 0 ? arguments.value(i + 1) : arguments.at(i).mid(sign + 1);
}

InstanceReply reply(ExitCode code, const QString& line)
{
    return {code, line.toUtf8() + '\n'};
}

InstanceReply wrongReply(const QString& argument, Updates updates)
{
    return reply(wrongArguments, complaint(argument) + QLatin1Char('\n') + usage(updates));
}

/// How many arguments from here on are Qt's.
qsizetype qtArguments(const QString& argument)
{
    const QString name = optionName(argument);
    if (holds(kQtSwitches, name))
        return 1;
    if (holds(kQtOptionsWithValue, name))
        return argument.contains(QLatin1Char('=')) ? 1 : 2;
    return 0;
}

Command wrong(const QString& argument)
{
    return {.kind = Command::Kind::wrong, .wrongArgument = argument};
}

std::optional<int> seconds(const QString& value)
{
    constexpr int kMostSeconds = 60;
    bool isNumber = false;
    const int number = value.toInt(&isNumber);
    return isNumber && number >= 1 && number <= kMostSeconds ? std::optional(number) : std::nullopt;
}

bool canBeDelayed(std::optional<CaptureAction> action)
{
    return action == CaptureAction::area || action == CaptureAction::fullScreen;
}

/// What is to be done; false for a word that names nothing, or for a second one.
bool takeWord(Command& command, const QString& word)
{
    if (command.action || command.other)
        return false;
    command.action = captureAction(word);
    command.other = programAction(word);
    return command.action || command.other;
}

} // namespace

Command parse(const QStringList& arguments)
{
    Command command;
    for (qsizetype i = 0; i < arguments.size();) {
        const QString& argument = arguments.at(i);
        if (const qsizetype skipped = qtArguments(argument)) {
            if (optionName(argument) == QLatin1String("display"))
                command.display = optionValue(arguments, i);
            if (optionName(argument) == QLatin1String("platform"))
                command.backEnd = optionValue(arguments, i);
            i += skipped;
            continue;
        }
        ++i;
        if (argument == QLatin1String("--version"))
            return {.kind = Command::Kind::version};
        if (argument == QLatin1String("--help") || argument == QLatin1String("-h"))
            return {.kind = Command::Kind::help};
        if (argument == QLatin1String("--ports")) {
            command.kind = Command::Kind::ports; // of the display that another option may name
            continue;
        }
        if (argument == QLatin1String("--livetest")) {
            command.liveTest = true;
            continue;
        }
        if (optionName(argument) == kDelay && !command.delay) {
            const QString value = optionValue(arguments, i - 1);
            command.delay = seconds(value);
            if (!command.delay)
                return wrong(value.isEmpty() ? argument : value);
            i += argument.contains(QLatin1Char('=')) ? 0 : 1;
            continue;
        }
        if (!takeWord(command, argument))
            return wrong(argument);
    }
    if (command.delay && !canBeDelayed(command.action))
        return wrong(QStringLiteral("--") + kDelay);
    return command;
}

Command parseWords(const QByteArrayList& words)
{
    QStringList arguments;
    for (const QByteArray& word : words)
        arguments << QString::fromLocal8Bit(word);
    return parse(arguments);
}

QString usage(Updates updates)
{
    const QString update = updates == Updates::offered
                               ? text("  update        busca una versión nueva o la descarga\n")
                               : QString();
    return text("Uso: brindlecam [acción] [opciones]\n"
                "\n"
                "Sin acción inicia Brindlecam; si ya está abierto, captura un área.\n"
                "\n"
                "  area          captura un área\n"
                "  fullScreen    captura la pantalla completa\n"
                "  recents       muestra u oculta las capturas recientes\n"
                "  folder        abre la carpeta de capturas\n"
                "  settings      abre la configuración\n"
                "%1"
                "  about         dice qué es Brindlecam\n"
                "  quit          cierra Brindlecam\n"
                "\n"
                "  --delay N     con area y fullScreen: cuenta antes N segundos, de 1 a 60\n"
                "  --livetest    las capturas que fallan no dicen nada\n"
                "  --ports       dice qué clase atiende cada puerto del sistema\n"
                "  --version     muestra la versión\n"
                "  --help        muestra esta ayuda\n")
        .arg(update);
}

QString complaint(const QString& wrongArgument)
{
    return text("Brindlecam no entiende “%1”.").arg(wrongArgument);
}

std::optional<InstanceReply> spokenReply(const Command& command, Updates updates)
{
    switch (command.kind) {
    case Command::Kind::run:
        if (command.other == ProgramAction::update && updates == Updates::absent)
            return wrongReply(rawValue(ProgramAction::update), updates);
        return std::nullopt;
    case Command::Kind::version:
        return reply(success,
                     QStringLiteral("Brindlecam %1").arg(QCoreApplication::applicationVersion()));
    case Command::Kind::help:
        return reply(success, usage(updates));
    case Command::Kind::ports:
        return wrongReply(QStringLiteral("--ports"), updates);
    case Command::Kind::wrong:
        return wrongReply(command.wrongArgument, updates);
    }
    Q_UNREACHABLE();
}

InstanceReply notAvailableReply()
{
    return reply(notAvailable, text("Esa acción no está disponible."));
}

InstanceReply busyReply()
{
    return reply(busy, text("No se hizo nada: ya hay una captura en curso."));
}

InstanceReply otherVersionReply()
{
    return reply(otherVersion, text("El Brindlecam que está abierto es de otra versión: ciérralo y "
                                    "vuelve a abrirlo."));
}

InstanceReply unansweredReply()
{
    return reply(unanswered, text("Brindlecam ya está abierto, pero no responde."));
}

} // namespace brindlecam::Commands
