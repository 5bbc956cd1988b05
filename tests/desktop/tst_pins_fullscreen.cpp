#include "desktop/support/PinTest.h"

namespace brindlecam::desktop {

/// Pins over full-screen programs, which window managers keep above everything they manage.
class TestPinsFullScreen final : public PinTest {
    Q_OBJECT

private:
    void setFullScreen(const ClientWindow& window, bool fullScreen)
    {
        const xcb_atom_t state = desktop().connection().atom("_NET_WM_STATE_FULLSCREEN");
        ask(window.id(), "_NET_WM_STATE", {fullScreen ? 1U : 0U, state, 0, 2});
        QVERIFY(waitUntil([&] { return (window.pixels() == screen().pixels()) == fullScreen; }));
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
        const ClientWindow window(display(),
                                  {.pixels = QRect(200, 150, 700, 500), .colour = Qt::red});
        activate(window);
        setFullScreen(window, true);
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        QVERIFY(liesAbove(Qt::red));
        QVERIFY(window.hasFocus());
        // It can be used there like anywhere.
        input().drag({500, 400}, {600, 430});
        const QRect moved = kDragged.translated(100, 30);
        QVERIFY(isOnlyPin(moved));
        QVERIFY(liesAbove(Qt::red, moved));
        setFullScreen(window, false);
        activate(window);
        QVERIFY(waitUntil([this] { return isPinned(Managed::yes); }));
        QVERIFY(isOnlyPin(moved));
        QVERIFY(shows(moved, captured()));
        doubleClickPin({600, 430});
        QVERIFY(pinsAreGone());
    }

    void pinMadeOverAFullScreenProgramLiesAboveIt()
    {
        usePins();
        const ClientWindow window(display(),
                                  {.pixels = QRect(200, 150, 700, 500), .colour = Qt::red});
        activate(window);
        setFullScreen(window, true);
        QVERIFY(pinArea());
        QVERIFY(becomesActive(window));
        QVERIFY(waitUntil([this] { return isPinned(Managed::no); }));
        input().drag({500, 400}, {600, 430});
        QVERIFY(isOnlyPin(kDragged.translated(100, 30)));
        QVERIFY(waitUntil([this] { return screen().pixel({600, 280}) != QColor(Qt::red); }));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPinsFullScreen)

#include "tst_pins_fullscreen.moc"
