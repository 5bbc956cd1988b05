#include "desktop/support/CaptureTest.h"

#include <QDir>

#include <algorithm>

namespace brindlecam::desktop {

void CaptureTest::usePatternedDesktop(const DesktopOptions& options)
{
    DesktopOptions patterned = options;
    patterned.patterned = true;
    useDesktop(patterned);
}

std::unique_ptr<ClientWindow> CaptureTest::openSample(const QRect& pixels, WindowKind kind)
{
    const QImage picture = coarsePattern(pixels.size());
    auto window = desktop().open({.pixels = pixels, .kind = kind, .picture = picture});
    // Seen, not only mapped: a compositor takes its time.
    const auto isSeen = [&] {
        const QImage seen = screen().grab(window->pixels());
        return samePixels(seen, picture.convertToFormat(seen.format()));
    };
    if (!waitUntil(isSeen))
        qFatal("the sample window does not show its picture");
    return window;
}

bool CaptureTest::becomesActive(const ClientWindow& window)
{
    return waitUntil([&] { return windows().active() == window.id(); });
}

bool CaptureTest::getsFocus(const ClientWindow& window)
{
    return waitUntil([&] { return window.hasFocus(); });
}

bool CaptureTest::worksIn(ClientWindow& window)
{
    if (!desktop().hasWindowManager())
        window.takeFocus();
    else if (!becomesActive(window))
        return false;
    return getsFocus(window);
}

void CaptureTest::startProgram(const QStringList& arguments)
{
    program().start(arguments);
    if (!hotKeysAreTaken())
        qFatal("the hot keys are not taken:\n%s", qPrintable(program().log()));
}

bool CaptureTest::hotKeysAreTaken()
{
    // The overlays come after the hot keys.
    const auto ready = [this] {
        return windows().exists(program().pid(), QRect(10, 10, 300, 200));
    };
    const auto rival = desktop().rival();
    return waitUntil(ready) && waitUntil([&] { return areHotKeysTaken(*rival); });
}

void CaptureTest::pressHotKey(Qt::Key key)
{
    const auto rival = desktop().rival();
    if (!waitUntil([&] { return !rival->isKeyboardTaken(); }))
        qWarning("somebody keeps the keyboard");
    pressHotKeyAtOnce(key);
}

bool CaptureTest::openArea(std::size_t overlayCount)
{
    pressHotKey(kAreaKey);
    return sessionIsReady(overlayCount);
}

bool CaptureTest::sessionIsReady(std::size_t overlayCount)
{
    const auto rival = desktop().rival();
    return overlaysAreUp(overlayCount) &&
           waitUntil([&] { return rival->isHotKeyTaken(Qt::Key_Escape, {}); });
}

bool CaptureTest::overlaysAreUp(std::size_t overlayCount)
{
    const auto ready = [&] {
        const auto all = overlays();
        // A pin or a dialog may have had the keyboard before.
        return all.size() == overlayCount &&
               std::ranges::count(all, windows().focused(), &SeenWindow::id) == 1;
    };
    if (!waitUntil(ready))
        return false;
    // A window without a background shows what lies beneath until it is painted.
    const auto painted = [this] {
        const auto all = overlays();
        return std::ranges::all_of(all, [this](const SeenWindow& overlay) {
            const QPoint corner = overlay.pixels.bottomLeft();
            return screen().pixel(corner) != QColor(patternAt(corner));
        });
    };
    return waitUntil(painted);
}

void CaptureTest::select(const QRect& area)
{
    input().drag(area.topLeft(), area.topLeft() + QPoint(area.width(), area.height()));
}

bool CaptureTest::sessionIsOver()
{
    const auto rival = desktop().rival();
    return waitUntil(
        [&] { return overlays().empty() && !rival->isHotKeyTaken(Qt::Key_Escape, {}); });
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

bool CaptureTest::programHasKeyboard()
{
    return waitUntil([this] { return windows().hasKeyboard(program().pid()); });
}

bool CaptureTest::nothingIsShown()
{
    return waitUntil([this] { return windows().shown(program().pid()).empty(); });
}

bool CaptureTest::toastComes()
{
    return waitUntil([this] { return !toasts().empty(); });
}

bool CaptureTest::toastIsGone()
{
    return waitUntil([this] { return toasts().empty(); });
}

bool CaptureTest::toastSays(const QString& message)
{
    return waitUntil([&] {
        for (const SeenWindow& window : toasts()) {
            const std::pair toast(window.pid, window.id);
            if (window.title == message && toast != m_lastToast) {
                m_lastToast = toast;
                return true;
            }
        }
        return false;
    });
}

bool CaptureTest::dialogOpens()
{
    return waitUntil([this] { return dialogs().size() == 1; });
}

bool CaptureTest::dialogsAreGone()
{
    return waitUntil([this] { return dialogs().empty(); });
}

bool CaptureTest::dialogHasKeyboard()
{
    return waitUntil([this] {
        const auto all = dialogs();
        return std::ranges::count(all, windows().focused(), &SeenWindow::id) == 1;
    });
}

bool CaptureTest::escapeMenu()
{
    constexpr int kMenuCloses = 2000; // ms
    return waitUntil([this] {
        input().tap(Qt::Key_Escape);
        return waitUntil([this] { return menus().empty(); }, kMenuCloses);
    });
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

QStringList CaptureTest::filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

QImage CaptureTest::onlyPictureIn(const QString& folder)
{
    // What is whole already but not yet in its place is no picture, either.
    const QStringList pictures = picturesIn(folder);
    return pictures.size() == 1 && filesIn(folder).size() == 1 ? QImage(pictures.front())
                                                               : QImage();
}

bool CaptureTest::isOnlyCapture(const QImage& expected)
{
    return waitUntil(
        [&] { return samePixels(onlyPictureIn(program().folders().captures()), expected); });
}

bool CaptureTest::isOnlyInHistory(const QImage& expected)
{
    return waitUntil(
        [&] { return samePixels(onlyPictureIn(program().folders().history()), expected); });
}

std::vector<SeenWindow> CaptureTest::shown(Role role)
{
    return windows().shown(program().pid(), role);
}

} // namespace brindlecam::desktop
