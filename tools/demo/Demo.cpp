#include "Demo.h"

#include "Decoders.h"

#include "desktop/support/HotKeys.h"
#include "desktop/support/Patience.h"
#include "desktop/support/Pictures.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace brindlecam::demo {

using desktop::Desktop;
using desktop::Input;
using desktop::picturesIn;

namespace {

constexpr QSize kScreen(1280, 800);
constexpr QPoint kStill(20, 20); // the sample desktop stands still there
constexpr QRect kArea(QPoint(216, 206), QPoint(1203, 715));
constexpr int kSteps = 20; // of a drag, as a hand goes
constexpr QPoint kFirstNumber(386, 346);
constexpr QPoint kOnItsDisc(377, 346); // beside the digit
constexpr QRgb kRed = qRgb(0xed, 0x2e, 0x2e);

volatile std::sig_atomic_t interrupted = 0;

/// What the harness has been asked for: it does not come back when that can't be had.
QString undertaking;

void print(std::FILE* file, const QString& line)
{
    std::fputs((line + QLatin1Char('\n')).toUtf8().constData(), file);
    std::fflush(file);
}

void printFailure(const QString& why)
{
    print(stderr, QStringLiteral("La demostración falla: ") + why);
}

void listen(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtFatalMsg)
        printFailure(undertaking);
    print(stderr, message);
    if (type == QtFatalMsg)
        std::_Exit(EXIT_FAILURE);
}

} // namespace

Demo::Demo(const QString& programs, const QString& results)
    : m_programs(programs)
    , m_results(results)
{
    QDir(m_results).removeRecursively();
    QDir().mkpath(m_results);
    qInstallMessageHandler(listen);
}

void Demo::interrupt()
{
    interrupted = 1;
}

bool Demo::show()
{
    const bool shown = openDesktop() && startProgram() && takeScreen() && openArea() &&
                       annotate() && takeArea() && tellPictures();
    keepLog();
    return shown;
}

bool Demo::openDesktop()
{
    undertaking = QStringLiteral("no arranca la pantalla virtual");
    m_desktop = Desktop::start({.screen = {.pixels = kScreen},
                                .windowManager = desktop::WindowManager::none,
                                .accessibility = desktop::Accessibility::on});
    undertaking = QStringLiteral("no arranca el gestor de ventanas");
    m_desktop->startWindowManager();
    undertaking = QStringLiteral("no hay teclado español");
    m_desktop->setKeyboard(QStringLiteral("es")); // with the dead key of the text
    undertaking = QStringLiteral("no arranca el escritorio de muestra");
    m_sample = std::make_unique<desktop::Process>(m_programs + QStringLiteral("/sample_desktop"),
                                                  QStringList(), m_desktop->environment());
    return m_sample->awaitLine("ready").isEmpty() ? fail(undertaking) : true;
}

bool Demo::startProgram()
{
    undertaking = QStringLiteral("el programa se cierra al empezar");
    m_program =
        std::make_unique<desktop::ProgramUnderTest>(*m_desktop, inResults(QStringLiteral("home")));
    m_controls = std::make_unique<desktop::Controls>(*m_program, *m_desktop);
    m_program->launch();
    return await(QStringLiteral("el programa no responde"),
                 [this] { return m_program->isReady() || !m_program->isRunning(); }) &&
           (m_program->isRunning() || fail(undertaking));
}

bool Demo::takeScreen()
{
    if (m_program->command({QStringLiteral("fullScreen")}).exitCode != 0)
        return fail(QStringLiteral("no acepta la orden fullScreen"));
    if (!isKept(1, QStringLiteral("no aparece la captura de pantalla completa"),
                QStringLiteral("la captura no está en el portapapeles")))
        return false;
    // Captures are named by the second, and the later one of a name stays.
    const qint64 second = QDateTime::currentSecsSinceEpoch();
    return await(QStringLiteral("el reloj está parado"),
                 [second] { return QDateTime::currentSecsSinceEpoch() != second; });
}

bool Demo::openArea()
{
    // The message about the first capture covers nothing that is looked at or dragged over.
    const QColor before = m_desktop->screen().pixel(kStill);
    m_desktop->input().chord(desktop::hotKey(desktop::kAreaKey));
    if (!await(QStringLiteral("Mayús+Super+9 no abre la captura de área"),
               [&] { return m_desktop->screen().pixel(kStill) != before; }))
        return false;
    m_desktop->input().drag(kArea.topLeft(), kArea.bottomRight() + QPoint(1, 1), kSteps);
    return true;
}

bool Demo::annotate()
{
    Input& input = m_desktop->input();
    const auto dragged = [&input](QPoint from, QPoint to) {
        return [&input, from, to] { input.drag(from, to, kSteps); };
    };
    const auto clicked = [&input](QPoint place) { return [&input, place] { input.click(place); }; };
    if (!choose(QStringLiteral("Flecha")) ||
        !draws(QStringLiteral("la flecha"), {520, 330, 60, 20}, dragged({500, 346}, {596, 330})))
        return false;
    if (!choose(QStringLiteral("Rectángulo")) ||
        !draws(QStringLiteral("el rectángulo"), {300, 606, 200, 6},
               dragged({233, 609}, {671, 634})))
        return false;
    if (!choose(QStringLiteral("Texto")) ||
        !draws(QStringLiteral("el texto"), {400, 334, 90, 24}, [this] { write(); }))
        return false;
    if (!choose(QStringLiteral("Números de paso ① ② ③")) ||
        !draws(QStringLiteral("el número 1"), {376, 336, 20, 20}, clicked(kFirstNumber)) ||
        !draws(QStringLiteral("el número 2"), {669, 601, 20, 20}, clicked({679, 610})))
        return false;
    if (!choose(QStringLiteral("Pixelar")))
        return false;
    for (const int line : {487, 601, 639}) {
        if (!draws(QStringLiteral("el pixelado"), {740, line - 4, 60, 8},
                   dragged({730, line - 9}, {813, line + 9})))
            return false;
    }
    return true;
}

bool Demo::takeArea()
{
    const QImage session = m_desktop->screen().grabAtRest();
    if (session.isNull() || !session.save(inResults(QStringLiteral("session.png"))))
        return fail(QStringLiteral("la pantalla no se queda quieta"));
    m_desktop->input().tap(Qt::Key_Return);
    if (!isKept(2, QStringLiteral("no aparece la captura de área"),
                QStringLiteral("la captura de área no está en el portapapeles")))
        return false;
    const QByteArray png = m_desktop->clipboard().read("image/png").value_or(QByteArray());
    QFile file(inResults(QStringLiteral("clipboard.png")));
    if (!file.open(QIODevice::WriteOnly) || file.write(png) != png.size())
        return fail(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    if (QImage::fromData(png).pixel(kOnItsDisc - kArea.topLeft()) != kRed)
        return fail(QStringLiteral("a la captura copiada le faltan las anotaciones"));
    return true;
}

bool Demo::tellPictures()
{
    print(stdout, {});
    return tell(QStringLiteral("Capturas:"), picturesIn(m_program->folders().captures())) &&
           tell(QStringLiteral("Historial:"), picturesIn(m_program->folders().history())) &&
           tell(QStringLiteral("Portapapeles:"), {inResults(QStringLiteral("clipboard.png"))}) &&
           tell(QStringLiteral("La sesión, vista desde fuera:"),
                {inResults(QStringLiteral("session.png"))});
}

bool Demo::choose(const QString& tool)
{
    const auto button = m_controls->find(tool, desktop::ControlKind::button);
    if (!button)
        return fail(QStringLiteral("no aparece el botón «%1»").arg(tool));
    m_desktop->input().click(button->pixels.center());
    return true;
}

void Demo::write()
{
    Input& input = m_desktop->input();
    input.click({404, 346});
    input.chord({Qt::Key_Shift, Qt::Key_A});
    input.type("qu");
    input.tap(Qt::Key_Dead_Acute);
    input.type("i sube");
    input.tap(Qt::Key_Return);
}

bool Demo::draws(const QString& what, const QRect& part, const std::function<void()>& action)
{
    const QImage before = m_desktop->screen().grab(part);
    action();
    return await(QStringLiteral("no aparece ") + what,
                 [&] { return m_desktop->screen().grab(part) != before; });
}

bool Demo::isKept(int count, const QString& noPicture, const QString& noCopy)
{
    const desktop::PrivateFolders& folders = m_program->folders();
    return await(noPicture,
                 [&] {
                     return picturesIn(folders.captures()).size() >= count &&
                            picturesIn(folders.history()).size() >= count;
                 }) &&
           await(noCopy, [this] { return m_desktop->clipboard().formats().contains("image/png"); });
}

bool Demo::tell(const QString& title, const QStringList& pictures)
{
    print(stdout, title);
    for (const QString& picture : pictures) {
        if (!isSoundPng(picture))
            return fail(QStringLiteral("pngcheck rechaza ") + picture);
        const auto size = sizeOf(picture);
        if (!size)
            return fail(picture + QStringLiteral(" no se puede leer"));
        print(stdout, QStringLiteral("  %1   %2").arg(*size, picture));
    }
    return true;
}

bool Demo::await(const QString& failure, const std::function<bool()>& condition)
{
    const bool came = desktop::waitUntil([&] { return interrupted != 0 || condition(); });
    if (interrupted != 0)
        return false;
    return came || fail(failure);
}

bool Demo::fail(const QString& why) const
{
    printFailure(why);
    if (m_program) {
        const QStringList log = m_program->log().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& line : log)
            print(stderr, QStringLiteral("  ") + line);
    }
    return false;
}

QString Demo::inResults(const QString& name) const
{
    return QDir(m_results).filePath(name);
}

void Demo::keepLog() const
{
    QFile file(inResults(QStringLiteral("brindlecam.log")));
    if (m_program && file.open(QIODevice::WriteOnly))
        file.write(m_program->log().toUtf8());
}

} // namespace brindlecam::demo
