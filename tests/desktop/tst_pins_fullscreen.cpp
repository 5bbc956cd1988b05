#include "desktop/support/PinTest.h"

#include <algorithm>
#include <cstddef>

namespace brindlecam::desktop {

/// Pins over full-screen programs, which window managers keep above everything they manage.
class TestPinsFullScreen final : public PinTest {
    Q_OBJECT

private:
    /// Whatever else has happened to windows is looked at by then: the time is the point.
    static constexpr int kAllLooked = 500; // ms

    /// A pin that fills most of the right one of two screens.
    [[nodiscard]] bool pinOnTheRight()
    {
        const QRect area(900, 50, 800, 480);
        if (!openArea(2) || !pressPinButton(area))
            return false;
        input().moveTo({20, 580});
        return sessionIsOver() && isOnlyPin(area);
    }
    [[nodiscard]] bool setFullScreenOn(const ClientWindow& window, const QRect& monitor)
    {
        desktop().pager().setFullScreen(window.id(), true);
        return waitUntil([&] { return window.pixels() == monitor; });
    }
    [[nodiscard]] bool setFullScreen(const ClientWindow& window, bool fullScreen)
    {
        desktop().pager().setFullScreen(window.id(), fullScreen);
        return waitUntil([&] { return (window.pixels() == screen().pixels()) == fullScreen; });
    }
    /// How high a window of the program lies among them all; they are seen from below.
    [[nodiscard]] std::ptrdiff_t height(Role role)
    {
        const auto all = windows().shown(program().pid());
        return std::ranges::find(all, role, &SeenWindow::role) - all.begin();
    }
    [[nodiscard]] bool dialogLiesAboveThePin()
    {
        return dialogs().size() == 1 && pins().size() == 1 &&
               height(Role::dialog) > height(Role::pin);
    }
    /// Whether the open menu lights what is under the pointer.
    [[nodiscard]] bool followsThePointer()
    {
        const auto all = menus();
        if (all.empty())
            return false;
        input().moveTo(all.front().pixels.center());
        return waitUntil([this] { return !litItem().isEmpty() || menus().empty(); }) &&
               !litItem().isEmpty();
    }
    /// Qt closes a menu when it hears late that the program has lost the keyboard: once more, then.
    [[nodiscard]] bool openMenuForGood(QPoint place)
    {
        return waitUntil([&] {
            if (!openMenu(place))
                return false;
            QTest::qWait(kAllLooked);
            return menus().size() == 1;
        });
    }
    /// Chooses to save the pin at this place. A menu closes by itself when Qt hears late that the
    /// program has lost the focus.
    [[nodiscard]] bool openSavePanel(QPoint place)
    {
        constexpr int kPanelOpens = 3000; // ms
        return waitUntil([&] {
            return openMenu(place) && clickInMenu("Guardar…") &&
                   waitUntil([this] { return dialogs().size() == 1; }, kPanelOpens);
        });
    }

    enum class Managed { no, yes };
    /// Whether there is one pin now, and whose it is to place.
    [[nodiscard]] bool isPinned(Managed managed)
    {
        const auto all = pins(); // it may be made anew at any moment
        return all.size() == 1 && all.front().managed == (managed == Managed::yes);
    }

private Q_SLOTS:
    void pinLiesAboveAFullScreenProgram_data() { addCompositors(); }
    void pinLiesAboveAFullScreenProgram()
    {
        QFETCH(Compositor, compositor);
        usePins({.compositor = compositor});
        QVERIFY(pinArea());
        const auto window = desktop().open(beneath());
        QVERIFY(activate(*window));
        QVERIFY(setFullScreen(*window, true));
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        QVERIFY(liesAbove(Qt::red));
        QVERIFY(isRoundOver(Qt::red));
        QVERIFY(window->hasFocus());
        // It can be used there like anywhere.
        input().drag({500, 400}, {600, 430});
        const QRect moved = kDragged.translated(100, 30);
        QVERIFY(isOnlyPin(moved));
        QVERIFY(liesAbove(Qt::red, moved));
        QVERIFY(setFullScreen(*window, false));
        QVERIFY(activate(*window));
        QVERIFY(waitUntil([this] { return isPinned(Managed::yes); }));
        QVERIFY(isOnlyPin(moved));
        QVERIFY(shows(moved, captured()));
        input().doubleClick({600, 430});
        QVERIFY(pinsAreGone());
    }

    void pinMadeOverAFullScreenProgramLiesAboveIt()
    {
        usePins();
        const auto window = desktop().open(beneath());
        QVERIFY(activate(*window));
        QVERIFY(setFullScreen(*window, true));
        QVERIFY(pinArea());
        QVERIFY(becomesActive(*window));
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        input().drag({500, 400}, {600, 430});
        QVERIFY(isOnlyPin(kDragged.translated(100, 30)));
        QVERIFY(waitUntil([this] { return screen().pixel({600, 280}) != QColor(Qt::red); }));
    }

    void fullScreenIsNoticedWithoutARestack()
    {
        usePins();
        QVERIFY(pinArea());
        const auto window = desktop().open(beneath());
        QVERIFY(activate(*window));
        QVERIFY(liesAbove(Qt::red));
        QTest::qWait(kAllLooked);
        window->claimFullScreen(true);
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        QTest::qWait(kAllLooked);
        window->claimFullScreen(false);
        QVERIFY(waitUntil([this] { return isPinned(Managed::yes); }));
        QVERIFY(isOnlyPin(kDragged));
    }

    void overlayStaysAboveThePins()
    {
        usePins();
        QVERIFY(pinArea());
        const auto window = desktop().open(beneath());
        QVERIFY(activate(*window));
        QVERIFY(liesAbove(Qt::red));
        QVERIFY(openArea());
        QVERIFY(setFullScreen(*window, true));
        // The overlay does not give the keyboard away at once.
        QVERIFY(waitUntil([&] {
            desktop().pager().activate(window->id());
            return window->hasFocus();
        }));
        // Where the pin is, the session is dragged on and not the pin.
        const QRect area(320, 270, 300, 200);
        select(area);
        QVERIFY(isPasted(before().copy(area)));
        QVERIFY(isPinned(Managed::yes));
        input().click({620, 470}, Button::right); // for the keyboard, wherever it is by now
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(activate(*window));
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        QVERIFY(isOnlyPin(kDragged));
        QVERIFY(liesAbove(Qt::red));
    }

    // Not the other way round: Qt closes a menu when another program gets the keyboard.
    void openMenuOutlivesTheSwitch()
    {
        usePins();
        QVERIFY(pinArea());
        const auto window = desktop().open(beneath());
        QVERIFY(setFullScreen(*window, true));
        QVERIFY(activate(*window));
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        QVERIFY(openMenuForGood({500, 400}));
        QVERIFY(setFullScreen(*window, false));
        QTest::qWait(kAllLooked);
        QVERIFY(isPinned(Managed::no));
        QVERIFY(followsThePointer());
        QVERIFY(clickInMenu("Copiar"));
        QVERIFY(isPasted(captured()));
        QVERIFY(menus().empty());
        QVERIFY(waitUntil([this] { return isPinned(Managed::yes); }));
        QVERIFY(isOnlyPin(kDragged));
        QVERIFY(liesAbove(Qt::red));
    }

    void dragOutlivesTheSwitch()
    {
        usePins();
        QVERIFY(pinArea());
        const auto window = desktop().open(beneath());
        input().moveTo({500, 400});
        input().press(Button::left);
        input().glideTo({540, 415});
        QVERIFY(isOnlyPin(kDragged.translated(40, 15))); // it has the focus by then
        QVERIFY(setFullScreen(*window, true));
        QVERIFY(activate(*window));
        input().glideTo({600, 430});
        input().release(Button::left);
        const QRect moved = kDragged.translated(100, 30);
        QVERIFY(isOnlyPin(moved));
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        input().moveTo(kAside);
        QVERIFY(liesAbove(Qt::red, moved));
        QVERIFY(isOnlyPin(moved)); // nobody holds it any more
    }

    void savePanelOpensAboveThePin_data() { addCompositors(); }
    void savePanelOpensAboveThePin()
    {
        QFETCH(Compositor, compositor);
        usePins({.compositor = compositor});
        QVERIFY(pinArea());
        const auto window = desktop().open(beneath());
        QVERIFY(setFullScreen(*window, true));
        QVERIFY(activate(*window));
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        QVERIFY(openSavePanel({500, 400}));
        QVERIFY(dialogHasKeyboard());
        QVERIFY(waitUntil([this] { return dialogLiesAboveThePin(); }));
        QVERIFY(isOnlyPin(kDragged));
        input().tap(Qt::Key_Return);
        QVERIFY(dialogsAreGone());
        QVERIFY(isOnlyCapture(captured()));
        QVERIFY(activate(*window));
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        input().moveTo(kAside);
        QVERIFY(liesAbove(Qt::red));
    }

    void savePanelOnAnotherScreenLiesAboveThePin()
    {
        const QRect left(0, 0, 800, 600);
        const QRect right(800, 0, 1000, 600);
        usePins({.screen = {.pixels = {1800, 600},
                            .monitors = {{QStringLiteral("LEFT"), left},
                                         {QStringLiteral("RIGHT"), right}}}});
        input().moveTo({20, 580});
        QVERIFY(pinOnTheRight());
        const auto window =
            desktop().open({.pixels = QRect(100, 100, 400, 300), .colour = Qt::red});
        QVERIFY(setFullScreenOn(*window, left));
        QVERIFY(activate(*window));
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        QVERIFY(openSavePanel(right.center()));
        QVERIFY(dialogHasKeyboard());
        QVERIFY(right.intersects(dialogs().front().pixels));
        QVERIFY(waitUntil([this] { return dialogLiesAboveThePin(); }));
        QVERIFY(isPinned(Managed::no)); // over the other screen it would be needed
        input().tap(Qt::Key_Escape);
        QVERIFY(dialogsAreGone());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPinsFullScreen)

#include "tst_pins_fullscreen.moc"
