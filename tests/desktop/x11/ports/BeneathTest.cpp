#include "x11/ports/BeneathTest.h"

#include "desktop/support/Patience.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/grab/RootReader.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/windows/PanelWindows.h"
#include "x11/ports/Frames.h"

#include <QPainter>

#include <xcb/composite.h>

#include <memory>

namespace brindlecam::test {

namespace {

constexpr int kRadius = 12;

} // namespace

PanelOfOurs::PanelOfOurs(QSize pixels)
    : m_shape(pixels)
{
    m_shape.clear();
    QPainter painter(&m_shape);
    painter.setBrush(Qt::color1);
    painter.drawRoundedRect(m_shape.rect(), kRadius, kRadius);
}

void PanelOfOurs::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(40, 44, 52, 200));
    painter.drawRoundedRect(rect(), kRadius, kRadius);
}

Compositor::Compositor()
    : m_process(QStringLiteral("picom"),
                {QStringLiteral("--backend"), QStringLiteral("xrender"), QStringLiteral("--config"),
                 QStringLiteral("/dev/null")},
                QProcessEnvironment::systemEnvironment())
{
    if (!desktop::waitUntil([] { return runs(); }))
        qFatal("no compositor: %s", m_process.log().constData());
}

Compositor::~Compositor()
{
    if (!m_process.end())
        qWarning("the compositor does not end");
}

bool Compositor::runs()
{
    return desktop::Connection(display()).selectionOwner("_NET_WM_CM_S0") != XCB_WINDOW_NONE;
}

BeneathTest::BeneathTest()
    : m_panels(std::make_shared<PanelWindows>(std::make_shared<X11Events>()),
               std::make_shared<ServerPixels>())
{
}

void BeneathTest::initTestCase()
{
    m_client.emplace();
    m_client->paintDesktop(m_pattern);
    const RootReader reader(std::make_shared<ServerPixels>());
    QTRY_VERIFY(reader.read(QRect({}, kDesktop)).value() == m_pattern);
}

void BeneathTest::cleanup()
{
    m_panel.reset();
    m_compositor.reset();
    // What was shown is gone, and a compositor has let go of everything.
    const auto all = openFrames(QRect({}, kDesktop));
    QVERIFY(desktop::waitUntil([&] { return nextImage(*all) == m_pattern; }));
}

QImage BeneathTest::stacked(std::initializer_list<const Page*> pages) const
{
    QImage picture = m_pattern;
    QPainter painter(&picture);
    for (const Page* page : pages)
        painter.drawImage(page->rect().topLeft(), page->image());
    painter.end();
    return picture;
}

bool BeneathTest::hasComposite()
{
    const auto* const extension = xcb_get_extension_data(x11::connection(), &xcb_composite_id);
    return extension && extension->present;
}

bool BeneathTest::isDepth16()
{
    return x11::screen().root_depth == 16;
}

void BeneathTest::desktops()
{
    QTest::addColumn<bool>("composited");
    QTest::newRow("bare") << false;
    QTest::newRow("composited") << true;
}

bool BeneathTest::begin()
{
    QFETCH(bool, composited);
    if (!hasComposite() || (composited && !canComposite())) {
        QTest::qSkip("nothing to see beneath, or a compositor that wants more colours", __FILE__,
                     __LINE__);
        return false;
    }
    if (composited)
        m_compositor.emplace();
    return true;
}

void BeneathTest::showPanel()
{
    // Composite brings the windows with an alpha channel; Qt finds none at this depth.
    if (!canComposite())
        QTest::ignoreMessage(QtWarningMsg, "Falling back to using screens root_visual.");
    const auto plain = openFrames(kPanel);
    const QImage before = nextImage(*plain);
    m_panel.emplace(kPanel.size());
    m_panels.assume(*m_panel, PanelRole::sessionPanel, kPanel);
    if (!m_compositor)
        m_panel->cut();
    m_panels.show(*m_panel, kPanel);
    QTRY_COMPARE(x11::rectOnRoot(panelId()), kPanel);
    const QPoint middle = QRect({}, kPanel.size()).center();
    QTRY_VERIFY(nextImage(*plain).pixel(middle) != before.pixel(middle));
}

bool BeneathTest::showsAtOnce(RegionFrames& frames, std::initializer_list<const Page*> pages)
{
    const auto next = awaitNext(frames);
    if (!next || !next.value() || next.value()->showsPanels)
        return false;
    return next.value()->image == stacked(pages).copy(kRegion);
}

bool BeneathTest::showsBeneath(RegionFrames& frames, std::initializer_list<const Page*> pages)
{
    const QImage expected = stacked(pages).copy(kRegion);
    const QRect covered = kPanel.translated(-kRegion.topLeft());
    const QImage image = nextImage(frames);
    if (image.copy(covered) != expected.copy(covered))
        return false;
    if (!m_compositor)
        return image == expected;
    return desktop::waitUntil([&] { return nextImage(frames) == expected; });
}

// A compositor on a busy machine brings it late.
bool BeneathTest::isPanelOnTheScreen(std::initializer_list<const Page*> pages)
{
    const auto plain = openFrames(kPanel);
    const QImage without = stacked(pages).copy(kPanel);
    return QTest::qWaitFor([&] { return nextImage(*plain) != without; });
}

} // namespace brindlecam::test
