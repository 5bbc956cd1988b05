#include "Stage.h"

#include "PagePainter.h"

#include "desktop/support/Patience.h"

#include <X11/keysym.h>

namespace brindlecam::bench {

namespace {

constexpr std::uint16_t kHotKeyModifiers = XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT;
constexpr int kPageStep = 97; // pixels between places looked at

QImage painted(QSize pixels, Page page)
{
    switch (page) {
    case Page::interface:
        return test::PagePainter::interfacePage(pixels);
    case Page::photo:
        return test::PagePainter::photoPage(pixels);
    }
    Q_UNREACHABLE();
}

} // namespace

QString name(Page page)
{
    switch (page) {
    case Page::interface:
        return QStringLiteral("interface page");
    case Page::photo:
        return QStringLiteral("photo page");
    }
    Q_UNREACHABLE();
}

Stage::Stage(QSize pixels, Page page)
    : m_pixels(pixels)
    , m_shown(page)
    , m_desktop({.server = {.pixels = pixels}})
    , m_page(painted(pixels, page))
    , m_eyes(m_desktop.server().display())
    , m_hands(m_desktop.server().display())
{
    // The program asks about every window there is, as on any desktop.
    for (int i = 0; i < 5; ++i)
        m_windows.push_back(std::make_unique<desktop::ClientWindow>(
            display(),
            desktop::ClientWindowOptions{.pixels = QRect(100 + 60 * i, 100 + 40 * i, 800, 500)}));
    m_windows.push_back(std::make_unique<desktop::ClientWindow>(
        display(), desktop::ClientWindowOptions{.pixels = QRect({}, pixels),
                                                .kind = desktop::WindowKind::unmanaged,
                                                .picture = m_page}));
    m_frameCopy = std::make_unique<FrameCopy>(display(), pixels, m_windows.back()->id());
    // Away from the hint and the corners.
    m_hands.moveTo({pixels.width() / 2, pixels.height() * 3 / 4});
    awaitPage();
}

void Stage::start(const QJsonObject& settings)
{
    m_program.reset();
    m_program = std::make_unique<desktop::ProgramUnderTest>(m_desktop);
    m_program->writeSettings(settings);
    m_program->start();
    const bool grabbed = desktop::waitUntil([this] {
        return m_desktop.connection().isKeyGrabbedByOther(XK_9, kHotKeyModifiers) &&
               m_desktop.connection().isKeyGrabbedByOther(XK_8, kHotKeyModifiers);
    });
    if (!grabbed)
        qFatal("the hot keys are not taken:\n%s", qPrintable(m_program->log()));
}

void Stage::quit()
{
    if (m_program->quit() != 0)
        qFatal("the program ended badly:\n%s", qPrintable(m_program->log()));
    m_program.reset();
}

Clock::time_point Stage::strikeArea()
{
    return m_hands.strike({XK_Super_L, XK_Shift_L}, XK_9);
}

Clock::time_point Stage::strikeFullScreen()
{
    return m_hands.strike({XK_Super_L, XK_Shift_L}, XK_8);
}

void Stage::awaitOverlay()
{
    // A bright place far from hint and pointer is dimmed by now.
    QPoint place(0, m_pixels.height() - 1);
    for (int x = 0; x < m_pixels.width() / 4; ++x) {
        if (qGray(m_page.pixel(x, place.y())) > qGray(m_page.pixel(place)))
            place.setX(x);
    }
    if (!m_eyes.awaitOther({place, m_page.pixel(place)}))
        qFatal("no overlay comes:\n%s", qPrintable(m_program->log()));
}

void Stage::endSession()
{
    m_hands.letGo();
    m_hands.tap(XK_Escape);
    awaitPage();
}

void Stage::awaitPage()
{
    std::vector<Sample> samples;
    for (int y = 0; y < m_pixels.height(); y += kPageStep) {
        for (int x = 0; x < m_pixels.width(); x += kPageStep)
            samples.push_back({{x, y}, m_page.pixel(x, y)});
    }
    if (!m_eyes.await(samples))
        qFatal("the page does not come back");
}

void Stage::lowerPage()
{
    const desktop::Connection& connection = m_desktop.connection();
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(connection.raw(), m_windows.back()->id(), XCB_CONFIG_WINDOW_STACK_MODE,
                         &below);
    connection.sync();
}

} // namespace brindlecam::bench
