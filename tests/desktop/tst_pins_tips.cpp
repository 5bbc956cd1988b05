#include "desktop/support/PinTest.h"

namespace brindlecam::desktop {

/// The tool tip of a pin under the pointer: a message of ours, and no other window.
class TestPinsTips final : public PinTest {
    Q_OBJECT

private:
    static constexpr QPoint kRest{500, 400};

    /// Rests the pointer on the pin and waits for the tip alone; empty if none comes.
    [[nodiscard]] QRect tipAt(QPoint place)
    {
        std::vector<SeenWindow> seen;
        const bool came = restUntil(place, [&] {
            seen = windows().shown(program().pid());
            return seen.size() > 1;
        });
        if (came && seen.size() == 2 && seen.back().role == Role::toast)
            return seen.back().pixels;
        for (const SeenWindow& window : seen)
            qWarning() << window.title << window.pixels << static_cast<int>(window.role);
        return {};
    }

private Q_SLOTS:
    void isADarkPillUnderThePointer_data() { addCompositors(); }
    void isADarkPillUnderThePointer()
    {
        QFETCH(Compositor, compositor);
        usePins({.compositor = compositor});
        QVERIFY(pinArea());
        const QRect tip = tipAt(kRest);
        QVERIFY(screen().pixels().contains(tip));
        QVERIFY(tip.top() > kRest.y() && tip.top() < kRest.y() + 40);
        QVERIFY(qAbs(tip.center().x() - kRest.x()) <= 1);
        const SeenWindow window = toasts().front();
        QVERIFY(!window.managed);
        QCOMPARE(window.shaped, compositor == Compositor::none);
        QVERIFY(waitUntil([&] {
            return screen().pixel({tip.left() + 4, tip.center().y()}).lightness() < 60;
        }));
        // Its corners are those of the pin beneath.
        const QImage seen = screen().grab(tip);
        const QImage beneath = captured().copy(tip.translated(-kDragged.topLeft()));
        for (const QPoint corner : {seen.rect().topLeft(), seen.rect().topRight(),
                                    seen.rect().bottomLeft(), seen.rect().bottomRight()})
            QCOMPARE(seen.pixelColor(corner), beneath.pixelColor(corner));

        input().moveTo(kAside);
        QVERIFY(toastIsGone());
        QVERIFY(shows(kDragged, captured()));
    }

    void staysOnTheScreen()
    {
        usePins();
        QVERIFY(pinArea());
        input().drag(kRest, {1260, 780});
        QVERIFY(isOnlyPin(kDragged.translated(760, 380)));
        const QRect tip = tipAt({1262, 778});
        QVERIFY(!tip.isEmpty());
        QVERIFY(screen().pixels().contains(tip));
        QVERIFY(tip.bottom() < 778);
    }

    void goesWithPressWheelAndMenu()
    {
        usePins();
        QVERIFY(pinArea());
        QVERIFY(!tipAt(kRest).isEmpty());
        input().click(kRest, Button::wheelDown);
        QVERIFY(toastIsGone());
        input().click(kRest, Button::wheelUp);
        QVERIFY(!tipAt(kRest + QPoint(5, 5)).isEmpty());
        input().press(Button::left);
        QVERIFY(toastIsGone());
        input().release(Button::left);
        QVERIFY(!tipAt(kRest).isEmpty());
        QVERIFY(openMenu(kRest));
        QVERIFY(toastIsGone());
        input().tap(Qt::Key_Escape);
    }

    void isInNoPicture_data() { addCompositors(); }
    void isInNoPicture()
    {
        QFETCH(Compositor, compositor);
        usePins({.compositor = compositor});
        QVERIFY(pinArea());
        const QRect tip = tipAt(kRest);
        QVERIFY(kDragged.contains(tip));
        pressHotKey(kFullScreenKey);
        QVERIFY(waitUntil([this] { return pasted().size() == screen().pixels().size(); }));
        QVERIFY(
            samePixels(pasted().copy(tip), captured().copy(tip.translated(-kDragged.topLeft()))));
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPinsTips)

#include "tst_pins_tips.moc"
