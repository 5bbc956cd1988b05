#include "desktop/support/CaptureTest.h"

#include <QDir>

#include <algorithm>

namespace brindlecam::desktop {

namespace {

constexpr auto kOverlay = "_NET_WM_WINDOW_TYPE_DOCK";
constexpr auto kToast = "_NET_WM_WINDOW_TYPE_NOTIFICATION";
constexpr auto kDialog = "_NET_WM_WINDOW_TYPE_DIALOG";
constexpr std::uint16_t kShiftSuper = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;

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
    m_windows = std::make_unique<ProgramWindows>(display());
}

void CaptureTest::startProgram(const QStringList& arguments)
{
    program().start(arguments);
    // The overlays are made ready after the hot keys. Looking at the keys before would mean to take
    // them for a moment, and the program could find them taken.
    const auto ready = [this] {
        return windows().exists(program().pid(), QRect(10, 10, 300, 200));
    };
    const auto owned = [this](xcb_keysym_t key) {
        return desktop().connection().isKeyGrabbedByOther(key, kShiftSuper);
    };
    if (!waitUntil(ready) || !owned(kAreaKey) || !owned(kFullScreenKey))
        qFatal("the hot keys are not taken:\n%s", qPrintable(program().log()));
}

bool CaptureTest::keyboardIsFree()
{
    const Connection& connection = desktop().connection();
    const Owned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
        connection.raw(),
        xcb_grab_keyboard(connection.raw(), 1, connection.root(), XCB_CURRENT_TIME,
                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    xcb_ungrab_keyboard(connection.raw(), XCB_CURRENT_TIME);
    connection.sync();
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void CaptureTest::pressHotKey(xcb_keysym_t key)
{
    if (!waitUntil([this] { return keyboardIsFree(); }))
        qWarning("somebody keeps the keyboard");
    input().chord({XK_Shift_L, XK_Super_L, key});
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

bool CaptureTest::sessionIsOver()
{
    return waitUntil([this] { return overlays().empty(); });
}

std::vector<SeenWindow> CaptureTest::overlays()
{
    return windows().shown(program().pid(), kOverlay);
}

std::vector<SeenWindow> CaptureTest::toasts()
{
    return windows().shown(program().pid(), kToast);
}

std::vector<SeenWindow> CaptureTest::dialogs()
{
    return windows().shown(program().pid(), kDialog);
}

bool CaptureTest::toastIsGone()
{
    return waitUntil([this] { return !toastIsShown(); });
}

bool CaptureTest::becomesActive(const ClientWindow& window)
{
    const Connection& connection = desktop().connection();
    const std::vector<std::uint32_t> wanted{window.id()};
    return waitUntil(
        [&] { return connection.property32(connection.root(), "_NET_ACTIVE_WINDOW") == wanted; });
}

void CaptureTest::ask(xcb_window_t window, const QByteArray& message,
                      std::initializer_list<std::uint32_t> data)
{
    const Connection& connection = desktop().connection();
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = connection.atom(message);
    std::copy(data.begin(), data.end(), std::begin(event.data.data32));
    xcb_send_event(connection.raw(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    connection.sync();
}

QImage CaptureTest::pasted()
{
    ClipboardReader reader(display());
    if (reader.owner() == 0)
        return {};
    return QImage::fromData(reader.read("image/png").value_or(QByteArray()), "PNG");
}

bool CaptureTest::isPasted(const QImage& expected)
{
    return waitUntil([&] { return samePixels(pasted(), expected); });
}

bool CaptureTest::clipboardIsTaken()
{
    return ClipboardReader(display()).owner() != 0;
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
