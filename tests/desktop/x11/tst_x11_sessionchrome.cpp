// Covers SessionChrome, SessionFrame, SessionPanel.
#include "desktop/support/Pictures.h"
#include "desktop/support/x11/X11ClientWindow.h"
#include "desktop/support/x11/X11Input.h"
#include "desktop/support/x11/X11Rival.h"
#include "long/ChromePlacement.h"
#include "long/DashedRing.h"
#include "long/SessionChrome.h"
#include "look/PanelButton.h"
#include "notices/Activity.h"
#include "platform/Platform.h"
#include "support/TestCase.h"
#include "x11/RootImage.h"
#include "x11/ThisDesktop.h"
#include "x11/ports/Monitors.h"

#include <QApplication>
#include <QRegion>
#include <QWindow>

#include <algorithm>
#include <optional>

namespace brindlecam {

using desktop::X11ClientWindow;
using test::activate;
using test::display;
using test::rootImage;
using test::settle;

namespace {

constexpr int kPastRepeatMs = 1100; ///< the server repeats after 660 ms
constexpr QRect kOther(60, 60, 1480, 780);
constexpr QRect kCaptured(503, 201, 401, 299);
constexpr QSize kTile(401, 299);
const QColor kColor(0xed, 0x42, 0x3d);

} // namespace

/// On a desktop of 1600 × 900 pixels, at whatever scale it has.
class TestX11SessionChrome final : public test::TestCase {
    Q_OBJECT

private:
    Platform m_platform = choosePorts().value().make();
    Activity m_activity;
    SessionChrome m_chrome{m_platform, m_activity};
    desktop::X11Input m_hands{display()};
    std::optional<X11ClientWindow> m_other; ///< the program that is captured; it has the keyboard
    QStringList m_heard;
    bool m_closes = true; ///< what hears of the end closes the chrome, as owners do

    [[nodiscard]] ScreenInfo screen() const { return m_platform.displays->screens().front(); }
    [[nodiscard]] ChromePlacement::Places places() const
    {
        return ChromePlacement::places(kCaptured, screen());
    }

    bool openOther()
    {
        m_other.emplace(display(), desktop::ClientWindowOptions{
                                       .pixels = kOther, .picture = desktop::pattern(kTile)});
        activate(*m_other);
        const bool has = QTest::qWaitFor([this] { return m_other->hasFocus(); });
        m_other->forget();
        return has;
    }
    bool show(const QRect& captured, const ScreenInfo& on)
    {
        const auto hear = [this](const char* what) {
            m_heard << QLatin1String(what);
            if (m_closes)
                m_chrome.close();
        };
        m_chrome.show({.captured = captured,
                       .screen = on,
                       .status = QStringLiteral("Enter = listo"),
                       .doneTitle = QStringLiteral("Listo"),
                       .color = kColor,
                       .onDone = [hear] { hear("done"); },
                       .onCancel = [hear] { hear("cancel"); }});
        const auto windows = QGuiApplication::topLevelWindows();
        return QTest::qWaitFor([&] {
            return std::ranges::all_of(windows, [](const QWindow* window) {
                return !window->isVisible() || window->isExposed();
            });
        });
    }
    bool show() { return show(kCaptured, screen()); }
    /// Whether the other program's window is seen as it is, with nothing over it: a compositor may
    /// be late.
    bool otherIsSeen() const
    {
        const QRect inside = m_other->pixels();
        return QTest::qWaitFor([&] {
            const QImage seen = rootImage(inside);
            for (int y = 0; y < seen.height(); ++y) {
                for (int x = 0; x < seen.width(); ++x) {
                    const QPoint place(x % kTile.width(), y % kTile.height());
                    if (seen.pixel(x, y) != desktop::patternAt(place))
                        return false;
                }
            }
            return true;
        });
    }
    /// The middle of a button, in pixels of the desktop.
    [[nodiscard]] QPoint middleOf(const char* title) const
    {
        for (const QWidget* widget : QApplication::allWidgets()) {
            const auto* button = qobject_cast<const PanelButton*>(widget);
            if (button && button->isVisible() && button->text() == QLatin1String(title))
                return places().panel.topLeft() +
                       (QRectF(button->geometry()).center() * screen().scale).toPoint();
        }
        return {};
    }

private Q_SLOTS:
    void cleanup()
    {
        m_hands.letGo();
        m_chrome.close();
        m_other.reset();
        m_hands.moveTo({2, 2}); // away from where a double click is waited for
        settle();
        m_heard.clear();
        m_closes = true;
    }

    void otherProgramKeepsTheKeyboard()
    {
        m_closes = false;
        QVERIFY(openOther());
        const int gains = m_other->focusGains();
        QVERIFY(show());
        settle();
        QVERIFY(m_other->hasFocus());
        m_hands.click(middleOf("Listo"));
        QTRY_COMPARE(m_heard, QStringList(QStringLiteral("done")));
        m_hands.click(middleOf("Cancelar"));
        QTRY_COMPARE(m_heard.size(), 2);
        QCOMPARE(m_heard.back(), QStringLiteral("cancel"));
        settle();
        QVERIFY(m_other->hasFocus());
        QCOMPARE(m_other->focusGains(), gains); // it has never lost it
        QVERIFY(m_other->clicks().empty());
    }

    void clicksAndWheelReachWhatIsCaptured_data()
    {
        QTest::addColumn<QPoint>("place"); // from the captured rectangle's corner
        const int stroke = -qRound(2 * screen().scale);
        QTest::newRow("inside") << QPoint(200, 100);
        QTest::newRow("on the first pixel") << QPoint(0, 0);
        QTest::newRow("on a stroke") << QPoint(2, stroke);
        QTest::newRow("in the corner of the frame") << QPoint(stroke, stroke);
    }
    void clicksAndWheelReachWhatIsCaptured()
    {
        QFETCH(QPoint, place);
        QVERIFY(openOther());
        QVERIFY(show());
        const QPoint at = kCaptured.topLeft() + place;
        m_hands.click(at);
        m_hands.click(at, desktop::Button::wheelDown);
        m_hands.click(at, desktop::Button::wheelUp);
        QTRY_COMPARE(m_other->clicks().size(), std::size_t(3));
        const auto& clicks = m_other->clicks();
        for (const auto& click : clicks)
            QCOMPARE(click.place + m_other->pixels().topLeft(), at);
        QCOMPARE(clicks[1].button, std::uint8_t(desktop::Button::wheelDown));
        QVERIFY(m_heard.isEmpty());
    }

    void keysEndItWhileAnotherProgramIsActive_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("heard");
        QTest::newRow("Escape") << Qt::Key_Escape << QStringLiteral("cancel");
        QTest::newRow("Return") << Qt::Key_Return << QStringLiteral("done");
        QTest::newRow("keypad Enter") << Qt::Key_Enter << QStringLiteral("done");
    }
    void keysEndItWhileAnotherProgramIsActive()
    {
        QFETCH(Qt::Key, key);
        QFETCH(QString, heard);
        QVERIFY(openOther());
        QVERIFY(show());
        m_hands.tap(Qt::Key_A);
        QTRY_COMPARE(m_other->keyEvents(), 2); // all others are still its own
        m_hands.press(key);
        QTRY_COMPARE(m_heard, QStringList(heard));
        QVERIFY(!m_chrome.isShown());
        QTest::qWait(kPastRepeatMs); // held for longer than anybody does
        m_hands.release(key);
        settle();
        QCOMPARE(m_other->keyEvents(), 2);
        QVERIFY(m_other->hasFocus());
        QCOMPARE(m_heard.size(), 1);
        m_hands.tap(key);
        QTRY_COMPARE(m_other->keyEvents(), 4);
    }

    void keyOfAnotherProgramIsLeftOut()
    {
        m_closes = false;
        QVERIFY(openOther());
        desktop::X11Rival rival(display());
        QVERIFY(rival.takeHotKey(Qt::Key_Return, Qt::NoModifier));
        QVERIFY(show());
        m_hands.tap(Qt::Key_Return);
        QVERIFY(QTest::qWaitFor([&] { return rival.gotKeys(); }));
        settle();
        QVERIFY(m_heard.isEmpty());
        m_hands.tap(Qt::Key_Enter);
        QTRY_COMPARE(m_heard.size(), 1);
        m_hands.click(middleOf("Listo"));
        QTRY_COMPARE(m_heard.size(), 2);
    }

    void secondClickOfADoubleClickReachesNobody()
    {
        QVERIFY(openOther());
        QVERIFY(show());
        const QPoint place = middleOf("Listo");
        m_hands.click(place);
        QTRY_COMPARE(m_heard, QStringList(QStringLiteral("done")));
        QVERIFY(!m_chrome.isShown());
        m_hands.click(place);
        settle();
        QVERIFY(m_other->clicks().empty());
    }

    void frameIsItsStrokesAndNothingElse()
    {
        QVERIFY(openOther());
        QVERIFY(otherIsSeen());
        const QRect around = places().frame.adjusted(-8, -8, 8, 8);
        const QImage before = rootImage(around);
        const QRect captured = kCaptured.translated(-around.topLeft());
        const QRect panel = places().panel.translated(-around.topLeft());
        QRegion strokes;
        for (const QRect& stroke : DashedRing::strokesAround(captured, screen().scale))
            strokes += stroke;
        const QImage expected = [&] {
            QImage image = before;
            for (const QRect& rect : strokes) {
                for (int y = rect.top(); y <= rect.bottom(); ++y) {
                    for (int x = rect.left(); x <= rect.right(); ++x)
                        image.setPixelColor(x, y, kColor);
                }
            }
            return image;
        }();
        const QRegion frame = QRegion(before.rect()) - panel;
        QVERIFY(frame.contains(captured));
        QVERIFY(show());
        QTRY_COMPARE(desktop::difference(rootImage(around), expected, frame), 0);
        settle();
        QCOMPARE(desktop::difference(rootImage(around), expected, frame), 0);
        QCOMPARE(desktop::difference(rootImage(around), before, captured), 0);
        m_chrome.close();
        QTRY_COMPARE(desktop::difference(rootImage(around), before, before.rect()), 0);
    }

    void panelIsDarkWithRoundCorners()
    {
        QVERIFY(openOther());
        QVERIFY(otherIsSeen());
        const QRect panel = places().panel;
        const QImage before = rootImage(panel);
        QVERIFY(show());
        const QPoint middle(panel.width() / 2, qRound(3 * screen().scale));
        constexpr int kBrightestEdge = 80;
        const int darkest = m_platform.compositing->blends() ? 40 : 26;
        QTRY_VERIFY(rootImage(panel).pixelColor(middle).lightness() <= darkest);
        settle();
        const QImage after = rootImage(panel);
        const int right = panel.width() - 1;
        const int bottom = panel.height() - 1;
        for (const QPoint corner :
             {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)})
            QCOMPARE(after.pixelColor(corner), before.pixelColor(corner));
        for (const QPoint edge : {QPoint(panel.width() / 2, 0), QPoint(panel.width() / 2, bottom),
                                  QPoint(0, panel.height() / 2), QPoint(right, panel.height() / 2)})
            QVERIFY(after.pixelColor(edge).lightness() <= kBrightestEdge);
    }

    void itsScreenMayGoMeanwhile()
    {
        auto monitors = std::make_optional<test::Monitors>();
        const auto screens = m_platform.displays->screens();
        const auto right = std::ranges::find_if(
            screens, [](const ScreenInfo& each) { return each.native == test::Monitors::kRight; });
        QVERIFY(right != screens.end());
        QVERIFY(show(QRect(900, 200, 200, 150), *right));
        monitors.reset();
        settle();
        QVERIFY(m_chrome.isShown());
        m_chrome.setText(QStringLiteral("Capturando…"));
        settle();
        m_hands.tap(Qt::Key_Return);
        QTRY_COMPARE(m_heard, QStringList(QStringLiteral("done")));
        QVERIFY(!m_chrome.isShown());
        QVERIFY(show()); // and again on what there is
    }
};

BRINDLECAM_TEST(TestX11SessionChrome);

} // namespace brindlecam

#include "tst_x11_sessionchrome.moc"
