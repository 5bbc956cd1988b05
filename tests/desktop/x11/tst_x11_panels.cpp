// Covers Exposures, FocusKeeper, PanelTraits, PanelWindow, PanelWindows, PlaceKeeper, X11.
#include "desktop/support/x11/X11ClientWindow.h"
#include "desktop/support/x11/X11Hardware.h"
#include "desktop/support/x11/X11Input.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/X11Events.h"
#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/windows/PanelWindows.h"
#include "platform/x11/windows/QtOnX11.h"
#include "platform/x11/windows/X11Panels.h"
#include "support/TestCase.h"
#include "x11/RootImage.h"
#include "x11/ThisDesktop.h"

#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <cstring>

namespace brindlecam {

using desktop::X11ClientWindow;
using test::activate;
using test::display;
using test::rootImage;
using test::settle;
using x11::idOf;

namespace {

constexpr QRect kScreen(0, 0, 1366, 768);

/// Whether the window has come to rest there: a window manager places it once more after the map.
bool restsAt(const QWidget& widget, const QRect& rect)
{
    if (x11::rectOnRoot(idOf(widget)) != rect)
        return false;
    QTest::qWait(100);
    return x11::rectOnRoot(idOf(widget)) == rect;
}

/// Paints a one-pixel checkerboard in device pixels, as the frozen picture is painted.
class Checkerboard final : public QWidget {
public:
    Checkerboard()
        : image(kScreen.size(), QImage::Format_RGB32)
    {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, (x + y) % 2 == 0 ? 0xffffffff : 0xff204060);
        }
    }

    QImage image;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
        painter.drawImage(0, 0, image);
    }
};

} // namespace

class TestX11Panels final : public test::TestCase {
    Q_OBJECT

private:
    std::shared_ptr<X11Events> m_events = std::make_shared<X11Events>();
    X11Panels m_panels{std::make_shared<PanelWindows>(m_events), std::make_shared<ServerPixels>()};
    desktop::X11Input m_hands{display()};
    desktop::X11Hardware m_hardware{display()};

    static std::vector<std::uint32_t> atoms(const QWidget& widget, const char* property)
    {
        return x11::property32(idOf(widget), x11::atom(property), XCB_ATOM_ATOM);
    }
    static bool overridesRedirect(const QWidget& widget)
    {
        const x11::Owned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
            x11::connection(), xcb_get_window_attributes(x11::connection(), idOf(widget)),
            nullptr));
        return reply && reply->override_redirect;
    }

private Q_SLOTS:
    void initTestCase() { QCOMPARE(QGuiApplication::primaryScreen()->devicePixelRatio(), 1.5); }
    void cleanup() { settle(); }

    void overlayCoversExactlyItsRectanglePixelForPixel()
    {
        Checkerboard overlay;
        m_panels.assume(overlay, PanelRole::overlay, {});
        for (int round = 0; round < 2; ++round) {
            m_panels.show(overlay, kScreen);
            QTRY_COMPARE(rootImage(kScreen), overlay.image);
            settle();
            QCOMPARE(x11::rectOnRoot(idOf(overlay)), kScreen);
            overlay.hide();
            settle();
        }
        QVERIFY(overridesRedirect(overlay));
    }

    void overlayIsWholeAgainWhereAnotherWindowWas()
    {
        Checkerboard overlay;
        m_panels.assume(overlay, PanelRole::overlay, {});
        m_panels.show(overlay, kScreen);
        QTRY_COMPARE(rootImage(kScreen), overlay.image);
        const xcb_window_t other = xcb_generate_id(x11::connection());
        const std::uint32_t values[] = {x11::screen().white_pixel, 1};
        xcb_create_window(x11::connection(), XCB_COPY_FROM_PARENT, other, x11::root(), 100, 80, 300,
                          200, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
        xcb_map_window(x11::connection(), other);
        QTRY_VERIFY(rootImage(kScreen) != overlay.image);
        xcb_destroy_window(x11::connection(), other);
        QTRY_COMPARE(rootImage(kScreen), overlay.image);
    }

    void overlayStaysExactWhenQtPlacesItByPoints()
    {
        QWidget overlay;
        m_panels.assume(overlay, PanelRole::overlay, {});
        m_panels.show(overlay, kScreen);
        settle();
        overlay.resize(overlay.width() + 3, overlay.height() - 2);
        QTRY_COMPARE(x11::rectOnRoot(idOf(overlay)), kScreen);
    }

    void rolesHaveTheirKind_data()
    {
        QTest::addColumn<PanelRole>("role");
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("overlay") << PanelRole::overlay << QByteArray("DOCK");
        QTest::newRow("toast") << PanelRole::toast << QByteArray("NOTIFICATION");
        QTest::newRow("countdown") << PanelRole::countdown << QByteArray("NOTIFICATION");
        QTest::newRow("frame") << PanelRole::frame << QByteArray("DOCK");
        QTest::newRow("session panel") << PanelRole::sessionPanel << QByteArray("UTILITY");
        QTest::newRow("drawer") << PanelRole::drawer << QByteArray("UTILITY");
    }
    void rolesHaveTheirKind()
    {
        QFETCH(PanelRole, role);
        QFETCH(QByteArray, type);
        X11ClientWindow below(display(), {.pixels = QRect(300, 300, 200, 200)});
        activate(below);
        QTRY_VERIFY(below.hasFocus());
        QWidget widget;
        m_panels.assume(widget, role, {});
        const QRect rect(101, 203, 307, 211);
        m_panels.show(widget, rect);
        QTRY_VERIFY(restsAt(widget, rect));
        const auto types = atoms(widget, "_NET_WM_WINDOW_TYPE");
        QVERIFY(!types.empty());
        QCOMPARE(types.size(), std::size_t(1));
        QCOMPARE(types.front(), x11::atom(("_NET_WM_WINDOW_TYPE_" + type).constData()));
        QVERIFY(overridesRedirect(widget));
        QCOMPARE(x11::property32(idOf(widget), x11::atom("_NET_WM_BYPASS_COMPOSITOR"),
                                 XCB_ATOM_CARDINAL),
                 std::vector<std::uint32_t>{2});
        settle();
        QVERIFY(below.hasFocus());
    }

    void overlayTakesTheFocusAndTyping()
    {
        m_hardware.setKeyboard(QStringLiteral("es"));
        X11ClientWindow below(display(), {.pixels = QRect(300, 300, 200, 200)});
        activate(below);
        QTRY_VERIFY(below.hasFocus());
        QWidget overlay;
        QVBoxLayout layout(&overlay);
        QLineEdit field;
        layout.addWidget(&field);
        m_panels.assume(overlay, PanelRole::overlay, {});
        m_panels.show(overlay, kScreen);
        m_panels.focus(overlay);
        field.setFocus();
        QTRY_VERIFY(field.hasFocus());
        m_hands.type("ab");
        QTRY_COMPARE(field.text(), QStringLiteral("ab"));
        m_hands.tap(Qt::Key_Dead_Acute);
        m_hands.tap(Qt::Key_E);
        QTRY_COMPARE(field.text(), QStringLiteral("abé"));
        QCOMPARE(below.keyEvents(), 0);
        m_hardware.setKeyboard(QStringLiteral("us"));
    }

    void focusAskedForBeforeTheMapComesWithIt()
    {
        QWidget panel;
        m_panels.assume(panel, PanelRole::sessionPanel, {});
        m_panels.focus(panel);
        settle();
        QVERIFY(!panel.isActiveWindow());
        m_panels.show(panel, QRect(10, 10, 100, 100));
        QTRY_VERIFY(panel.isActiveWindow());
    }

    void pressOnAnotherOverlayMovesTheFocusThere()
    {
        QWidget left;
        QWidget right;
        QVBoxLayout layout(&right);
        QWidget child;
        layout.addWidget(&child);
        m_panels.assume(left, PanelRole::overlay, {});
        m_panels.assume(right, PanelRole::overlay, {});
        m_panels.show(left, QRect(0, 0, 683, 768));
        m_panels.show(right, QRect(683, 0, 683, 768));
        m_panels.focus(left);
        QTRY_VERIFY(left.isActiveWindow());
        m_hands.click({1000, 400});
        QTRY_VERIFY(right.isActiveWindow());
        m_hands.click({300, 400});
        QTRY_VERIFY(left.isActiveWindow());
    }

    void untouchablePanelsLetClicksThrough_data()
    {
        QTest::addColumn<PanelRole>("role");
        QTest::newRow("toast") << PanelRole::toast;
        QTest::newRow("countdown") << PanelRole::countdown;
        QTest::newRow("frame") << PanelRole::frame;
    }
    void untouchablePanelsLetClicksThrough()
    {
        QFETCH(PanelRole, role);
        X11ClientWindow below(display(), {.pixels = QRect(300, 300, 300, 300),
                                          .kind = desktop::WindowKind::unmanaged});
        QWidget toast;
        m_panels.assume(toast, role, {});
        m_panels.show(toast, QRect(350, 350, 200, 100));
        QVERIFY(QTest::qWaitForWindowExposed(&toast));
        m_hands.click({400, 400});
        QTRY_COMPARE(below.clicks().size(), std::size_t(1));
    }

    void dialogIsActiveAndStaysOnTop()
    {
        const QColor colour(0x33, 0x66, 0x99);
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 900, 600), .colour = colour});
        activate(below);
        QTRY_VERIFY(below.hasFocus());
        QMessageBox alert(QMessageBox::Warning, QStringLiteral("Title"), QStringLiteral("Text"));
        m_panels.assume(alert, PanelRole::dialog, {});
        m_panels.show(alert, {});
        QTRY_VERIFY(alert.isActiveWindow());
        QVERIFY(!overridesRedirect(alert));
        const auto state = atoms(alert, "_NET_WM_STATE");
        QVERIFY(std::ranges::find(state, x11::atom("_NET_WM_STATE_ABOVE")) != state.end());
        if (x11::hasWindowManager())
            below.raise();
        settle();
        const auto rect = x11::rectOnRoot(idOf(alert));
        QVERIFY(rect);
        // What lies under the alert's middle is the alert, and not the window that was raised.
        QVERIFY(rootImage(QRect(rect->center(), QSize(1, 1))).pixelColor(0, 0) != colour);
    }

    void opacityIsToldToTheCompositor()
    {
        QWidget toast;
        m_panels.assume(toast, PanelRole::toast, {});
        m_panels.show(toast, QRect(10, 10, 100, 50));
        QVERIFY(m_panels.fade(toast, 0.5));
        const auto opacity =
            x11::property32(idOf(toast), x11::atom("_NET_WM_WINDOW_OPACITY"), XCB_ATOM_CARDINAL);
        QCOMPARE(opacity.size(), std::size_t(1));
        QVERIFY(std::abs(opacity.front() / 4294967295.0 - 0.5) < 0.001);
    }

    void movedPanelIsThereExactly()
    {
        QWidget panel;
        m_panels.assume(panel, PanelRole::drawer, {});
        m_panels.show(panel, QRect(10, 20, 101, 53));
        QTRY_COMPARE(x11::rectOnRoot(idOf(panel)), QRect(10, 20, 101, 53));
        m_panels.place(panel, QRect(11, 33, 103, 57));
        QTRY_VERIFY(restsAt(panel, QRect(11, 33, 103, 57)));
    }

    void cutPanelIsThereWhereItWasCutToOnly()
    {
        const QColor colour(0x33, 0x66, 0x99);
        X11ClientWindow below(display(), {.pixels = QRect(100, 100, 500, 400),
                                          .kind = desktop::WindowKind::unmanaged,
                                          .colour = colour});
        QWidget panel;
        panel.setStyleSheet(QStringLiteral("background: white"));
        const QRect place(201, 203, 151, 101);
        m_panels.assume(panel, PanelRole::frame, place);
        const QRegion left = QRegion(7, 11, 30, 3) + QRegion(50, 20, 1, 1);
        m_panels.cut(panel, left);
        m_panels.show(panel, place);
        const auto seen = [&] {
            const QImage image = rootImage(place);
            QRegion region;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    if (image.pixelColor(x, y) != colour)
                        region += QRect(x, y, 1, 1);
                }
            }
            return region;
        };
        QTRY_COMPARE(seen(), left);
        m_panels.cut(panel, QRegion(3, 3, 2, 2));
        QTRY_COMPARE(seen(), QRegion(3, 3, 2, 2));
        m_panels.cut(panel, {});
        QTRY_COMPARE(seen(), QRegion(QRect(QPoint(), place.size())));
    }

    void menuOpensOnceAndGoesWithTheChoice()
    {
        QWidget panel;
        m_panels.assume(panel, PanelRole::drawer, {});
        m_panels.show(panel, QRect(150, 150, 300, 300));
        QTRY_COMPARE(x11::rectOnRoot(idOf(panel)), QRect(150, 150, 300, 300));
        QStringList chosen;
        const auto open = [&] {
            m_panels.popUp(panel, {20, 20},
                           {{QStringLiteral("uno"), [&] { chosen << QStringLiteral("uno"); }},
                            {QStringLiteral("dos"), [&] { chosen << QStringLiteral("dos"); }}});
        };
        open();
        open();
        QCOMPARE(panel.findChildren<QMenu*>().size(), 1);
        auto* menu = panel.findChild<QMenu*>();
        QTRY_VERIFY(menu->windowHandle() && menu->windowHandle()->isExposed());
        const auto place = x11::rectOnRoot(idOf(*menu));
        QVERIFY(place);
        QVERIFY((place->topLeft() - QPoint(180, 180)).manhattanLength() <= 4); // at scale 1.5
        QCOMPARE(menu->actions().size(), 2);
        menu->actions().at(1)->trigger();
        QCOMPARE(chosen, QStringList(QStringLiteral("dos")));
        menu->close();
        QTRY_VERIFY(!panel.findChild<QMenu*>());
    }

    void widgetMayDieBeforeThePanels()
    {
        auto widget = std::make_unique<QWidget>();
        m_panels.assume(*widget, PanelRole::toast, {});
        m_panels.show(*widget, QRect(10, 10, 100, 50));
        widget.reset();
        settle();
        QWidget next;
        m_panels.assume(next, PanelRole::toast, {});
        m_panels.show(next, QRect(10, 10, 100, 50));
        QTRY_COMPARE(x11::rectOnRoot(idOf(next)), QRect(10, 10, 100, 50));
    }
};

BRINDLECAM_TEST(TestX11Panels);

} // namespace brindlecam

#include "tst_x11_panels.moc"
