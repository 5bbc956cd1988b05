#include "Stage.h"

#include "PagePainter.h"

#include "desktop/support/Patience.h"

#include <QThread>

namespace brindlecam::bench {

namespace {

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
    , m_desktop(desktop::Desktop::start({.screen = {.pixels = pixels}}))
    , m_page(painted(pixels, page))
    , m_eyes(*m_desktop)
{
    input().hurry();
    // The program asks about every window there is, as on any desktop.
    for (int i = 0; i < 5; ++i)
        m_windows.push_back(
            m_desktop->open({.pixels = QRect(100 + 60 * i, 100 + 40 * i, 800, 500)}));
    m_windows.push_back(m_desktop->open(
        {.pixels = QRect({}, pixels), .kind = desktop::WindowKind::unmanaged, .picture = m_page}));
    m_frameCopy = std::make_unique<FrameCopy>(m_desktop->name(), pixels, m_windows.back()->id());
    input().moveTo(aside());
    awaitPage();
}

void Stage::start(const QJsonObject& settings)
{
    m_program.reset();
    m_program = std::make_unique<desktop::ProgramUnderTest>(*m_desktop);
    m_program->writeSettings(settings);
    m_program->start();
    const auto rival = m_desktop->rival();
    if (!desktop::waitUntil([&rival] { return desktop::areHotKeysTaken(*rival); }))
        qFatal("the hot keys are not taken:\n%s", qPrintable(m_program->log()));
}

void Stage::quit()
{
    if (m_program->quit() != 0)
        qFatal("the program ended badly:\n%s", qPrintable(m_program->log()));
    m_program.reset();
}

Clock::time_point Stage::strike(const QList<Qt::Key>& keys)
{
    for (const Qt::Key key : keys.first(keys.size() - 1))
        input().press(key);
    input().awaitTaken();
    input().press(keys.back());
    return input().lastSent();
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

void Stage::openSession()
{
    strikeArea();
    awaitOverlay();
    QThread::msleep(kUnhurried);
    input().letGo();
}

void Stage::select(const QRect& area)
{
    input().drag(area.topLeft(), area.topLeft() + QPoint(area.width(), area.height()), kDragMoves);
}

void Stage::endSession()
{
    input().letGo();
    input().tap(Qt::Key_Escape);
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

QPoint Stage::aside() const
{
    return {m_pixels.width() / 2, m_pixels.height() * 3 / 4};
}

void Stage::lowerPage()
{
    m_windows.back()->lower();
}

} // namespace brindlecam::bench
