#include "desktop/support/FaultTest.h"

#include "desktop/support/Clipboard.h"

#include <QDir>

#include <algorithm>

namespace brindlecam::desktop {

namespace {

constexpr Qt::KeyboardModifiers kSuperShift = Qt::MetaModifier | Qt::ShiftModifier;

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
    const auto rival = desktop().rival();
    return waitUntil([&] {
        return rival->isHotKeyTaken(Qt::Key_9, kSuperShift) &&
               rival->isHotKeyTaken(Qt::Key_8, kSuperShift);
    });
}

std::vector<SeenWindow> FaultTest::overlays()
{
    std::vector<SeenWindow> found = windows().all();
    std::erase_if(found, [](const SeenWindow& window) {
        return window.title != QLatin1String("Brindlecam");
    });
    return found;
}

bool FaultTest::awaitSession(std::size_t overlayCount)
{
    const auto rival = desktop().rival();
    return waitUntil([&] {
        const std::vector<SeenWindow> up = overlays();
        const WindowId focused = windows().focused();
        return up.size() == overlayCount && std::ranges::count(up, focused, &SeenWindow::id) &&
               rival->isHotKeyTaken(Qt::Key_Escape, {});
    });
}

bool FaultTest::awaitSessionEnd()
{
    const auto rival = desktop().rival();
    return waitUntil(
        [&] { return overlays().empty() && !rival->isHotKeyTaken(Qt::Key_Escape, {}); });
}

void FaultTest::select(const QRect& pixels)
{
    input().drag(pixels.topLeft(), pixels.topLeft() + QPoint(pixels.width(), pixels.height()));
}

bool FaultTest::awaitToast(const QString& text)
{
    return waitUntil([&] {
        for (const SeenWindow& window : windows().all()) {
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
        return std::ranges::count(windows().all(), program().pid(), &SeenWindow::pid) == 0;
    });
}

QImage FaultTest::pastedPicture()
{
    return desktop().clipboard().picture();
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
    auto window =
        desktop().open({.pixels = pixels, .kind = kind, .picture = sample(pixels.size())});
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
