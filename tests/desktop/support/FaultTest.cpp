#include "desktop/support/FaultTest.h"

#include "desktop/support/x11/ClipboardReader.h"

#include <QDir>

#include <algorithm>

namespace brindlecam::desktop {

namespace {

constexpr std::uint16_t kSuperShift = XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT;

/// Every pixel's colour tells its place; the channels keep their high bits for depth 16.
QImage sample(QSize pixels)
{
    QImage picture(pixels, QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x)
            picture.setPixel(x, y, qRgb(x % 32 * 8, y % 32 * 8, (x / 32 + y / 32 * 5) % 32 * 8));
    }
    return picture;
}

} // namespace

bool FaultTest::awaitHotKeys()
{
    const Connection& connection = desktop().connection();
    return waitUntil([&] {
        return connection.isKeyGrabbedByOther(XK_9, kSuperShift) &&
               connection.isKeyGrabbedByOther(XK_8, kSuperShift);
    });
}

std::vector<VisibleWindow> FaultTest::overlays()
{
    std::vector<VisibleWindow> windows = visibleWindows(desktop().connection());
    std::erase_if(windows, [](const VisibleWindow& window) {
        return window.title != QLatin1String("Brindlecam");
    });
    return windows;
}

bool FaultTest::awaitSession(std::size_t overlayCount)
{
    const Connection& connection = desktop().connection();
    return waitUntil([&] {
        const std::vector<VisibleWindow> up = overlays();
        const xcb_window_t focused = focusedWindow(connection);
        return up.size() == overlayCount && std::ranges::count(up, focused, &VisibleWindow::id) &&
               connection.isKeyGrabbedByOther(XK_Escape, 0);
    });
}

bool FaultTest::awaitSessionEnd()
{
    return waitUntil([this] {
        return overlays().empty() && !desktop().connection().isKeyGrabbedByOther(XK_Escape, 0);
    });
}

void FaultTest::select(const QRect& pixels)
{
    input().drag(pixels.topLeft(), pixels.topLeft() + QPoint(pixels.width(), pixels.height()));
}

bool FaultTest::awaitToast(const QString& text)
{
    return waitUntil([&] {
        for (const VisibleWindow& window : visibleWindows(desktop().connection())) {
            const std::pair toast(window.pid, window.id);
            if (window.title == text && toast != m_lastToast) {
                m_lastToast = toast;
                return true;
            }
        }
        return false;
    });
}

bool FaultTest::awaitNothingShown()
{
    return waitUntil([this] {
        const auto windows = visibleWindows(desktop().connection());
        return std::ranges::count(windows, program().pid(), &VisibleWindow::pid) == 0;
    });
}

QImage FaultTest::pastedPicture()
{
    ClipboardReader reader(display());
    const auto png = reader.read("image/png");
    return png ? QImage::fromData(*png, "PNG") : QImage();
}

QStringList FaultTest::namesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

qsizetype FaultTest::taken()
{
    const QStringList names = history();
    return std::ranges::count_if(
        names, [](const QString& name) { return !name.startsWith(QLatin1Char('.')); });
}

QImage FaultTest::onlyPictureIn(const QString& folder)
{
    const QStringList names = namesIn(folder);
    return names.size() == 1 ? QImage(folder + QLatin1Char('/') + names.first()) : QImage();
}

std::unique_ptr<ClientWindow> FaultTest::showSample(const QRect& pixels, WindowKind kind)
{
    auto window = std::make_unique<ClientWindow>(
        display(),
        ClientWindowOptions{.pixels = pixels, .kind = kind, .picture = sample(pixels.size())});
    // Seen, not only mapped: a compositor takes its time.
    const auto shown = [&] {
        const QImage seen = screen().grab(window->pixels());
        return samePixels(seen, sample(pixels.size()).convertToFormat(seen.format()));
    };
    if (!waitUntil(shown))
        qFatal("the sample window does not show its picture");
    return window;
}

} // namespace brindlecam::desktop
