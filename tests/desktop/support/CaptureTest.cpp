#include "desktop/support/CaptureTest.h"

#include <QDir>

#include <algorithm>

namespace brindlecam::desktop {

namespace {

constexpr Qt::KeyboardModifiers kShiftSuper = Qt::ShiftModifier | Qt::MetaModifier;

QStringList picturesIn(const QString& folder)
{
    QStringList paths;
    for (const QFileInfo& file :
         QDir(folder).entryInfoList({QStringLiteral("*.png")}, QDir::Files, QDir::Name))
        paths << file.filePath();
    return paths;
}

bool isOnly(const QStringList& paths, const QImage& expected)
{
    return paths.size() == 1 && samePixels(QImage(paths.front()), expected);
}

} // namespace

void CaptureTest::usePatternedDesktop(const DesktopOptions& options)
{
    DesktopOptions patterned = options;
    patterned.patterned = true;
    useDesktop(patterned);
}

void CaptureTest::startProgram(const QStringList& arguments)
{
    program().start(arguments);
    // The overlays are made ready after the hot keys. Looking at the keys before would mean to take
    // them for a moment, and the program could find them taken.
    const auto ready = [this] {
        return windows().exists(program().pid(), QRect(10, 10, 300, 200));
    };
    const auto rival = desktop().rival();
    const auto owned = [&](Qt::Key key) { return rival->isHotKeyTaken(key, kShiftSuper); };
    if (!waitUntil(ready) || !owned(kAreaKey) || !owned(kFullScreenKey))
        qFatal("the hot keys are not taken:\n%s", qPrintable(program().log()));
}

void CaptureTest::pressHotKey(Qt::Key key)
{
    const auto rival = desktop().rival();
    if (!waitUntil([&] { return !rival->isKeyboardTaken(); }))
        qWarning("somebody keeps the keyboard");
    input().chord({Qt::Key_Shift, Qt::Key_Super_L, key});
}

bool CaptureTest::openArea()
{
    pressHotKey(kAreaKey);
    return sessionIsReady();
}

bool CaptureTest::sessionIsReady(std::size_t overlayCount)
{
    const auto ready = [&] {
        const auto all = overlays();
        // A pin or a dialog may have had the keyboard before.
        return all.size() == overlayCount &&
               std::ranges::find(all, windows().focused(), &SeenWindow::id) != all.end();
    };
    if (!waitUntil(ready))
        return false;
    // A window without a background shows what lies beneath until it is painted.
    const QImage beneath = pattern(screen().pixels().size());
    const auto painted = [&] {
        const QImage now = screen().grab();
        const auto all = overlays();
        return std::all_of(all.begin(), all.end(), [&](const SeenWindow& overlay) {
            const QPoint corner = overlay.pixels.bottomLeft();
            return now.pixelColor(corner) != beneath.pixelColor(corner);
        });
    };
    return waitUntil(painted);
}

QRect CaptureTest::placeOf(const char* name, std::optional<ControlKind> kind)
{
    const auto control = controls().find(QString::fromUtf8(name), kind);
    return control ? control->pixels : QRect();
}

bool CaptureTest::press(const char* name)
{
    const QRect button = placeOf(name, ControlKind::button);
    // Off the screen, the pointer would stop at the edge, on something else.
    if (button.isEmpty() || !screen().pixels().contains(button.center()))
        return false;
    input().click(button.center());
    return true;
}

bool CaptureTest::sessionIsOver()
{
    return waitUntil([this] { return overlays().empty(); });
}

std::vector<SeenWindow> CaptureTest::overlays()
{
    return windows().shown(program().pid(), Role::overlay);
}

std::vector<SeenWindow> CaptureTest::toasts()
{
    return windows().shown(program().pid(), Role::toast);
}

std::vector<SeenWindow> CaptureTest::dialogs()
{
    return windows().shown(program().pid(), Role::dialog);
}

bool CaptureTest::toastIsGone()
{
    return waitUntil([this] { return !toastIsShown(); });
}

bool CaptureTest::becomesActive(const ClientWindow& window)
{
    return waitUntil([&] { return windows().active() == window.id(); });
}

QImage CaptureTest::pasted()
{
    return desktop().clipboard().picture();
}

bool CaptureTest::isPasted(const QImage& expected)
{
    return waitUntil([&] { return samePixels(pasted(), expected); });
}

bool CaptureTest::clipboardIsTaken()
{
    return desktop().clipboard().isTaken();
}

QStringList CaptureTest::captures()
{
    return picturesIn(program().folders().captures());
}

QStringList CaptureTest::history()
{
    return picturesIn(program().folders().history());
}

bool CaptureTest::isOnlyCapture(const QImage& expected)
{
    return waitUntil([&] { return isOnly(captures(), expected); });
}

bool CaptureTest::isOnlyInHistory(const QImage& expected)
{
    return waitUntil([&] { return isOnly(history(), expected); });
}

} // namespace brindlecam::desktop
