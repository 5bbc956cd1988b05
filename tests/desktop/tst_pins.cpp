#include "desktop/support/PinTest.h"

#include <QDir>

namespace brindlecam::desktop {

/// Pins by real drags: where they appear, how they move, what their menu does.
class TestPins final : public PinTest {
    Q_OBJECT

private:
    /// The border of a pin under the pointer.
    static QColor hovered() { return {46, 179, 77}; }

private Q_SLOTS:
    void pinCoversExactlyWhatWasCaptured_data() { addSurroundings(); }
    void pinCoversExactlyWhatWasCaptured()
    {
        useSurroundings();
        QVERIFY(isOnlyPin(kDragged));
        // Its border is drawn over the picture, so it can be told from what lies below. Until it is
        // painted a compositor shows there what the overlay had: the selection with its handles.
        QVERIFY(waitUntil([this] {
            const QPoint corner = kDragged.topLeft();
            return screen().pixel({500, 250}) != before().pixelColor(500, 250) &&
                   screen().pixel(corner) == before().pixelColor(corner);
        }));
        QVERIFY(shows(kDragged, captured()));
        QVERIFY(isPasted(captured()));
        QVERIFY(isOnlyInHistory(captured()));
        QVERIFY(captures().empty());
        QVERIFY(toasts().empty());
    }

    void dragMovesItByTheSameWay_data() { addSurroundings(); }
    void dragMovesItByTheSameWay()
    {
        useSurroundings();
        input().drag({500, 400}, {637, 309});
        const QRect moved = kDragged.translated(137, -91);
        QVERIFY(isOnlyPin(moved));
        QVERIFY(shows(moved, captured()));
        input().drag({637, 309}, {500, 400}, 3);
        QVERIFY(isOnlyPin(kDragged));
        QVERIFY(shows(kDragged, captured()));
    }

    void pinMovesPartlyOffTheScreen_data() { addSurroundings(); }
    void pinMovesPartlyOffTheScreen()
    {
        useSurroundings();
        input().drag({310, 400}, {5, 790});
        QVERIFY(isOnlyPin(kDragged.translated(-305, 390)));
        input().drag({50, 700}, {900, 5});
        QVERIFY(isOnlyPin(kDragged.translated(545, -305)));
    }

    void wheelResizesItAroundItsCentre_data() { addSurroundings(); }
    void wheelResizesItAroundItsCentre()
    {
        useSurroundings();
        input().click({500, 400}, Button::wheelUp);
        QVERIFY(isOnlyPin(QRect(290, 243, 420, 315).translated(0, 0)) ||
                isOnlyPin(QRect(290, 242, 420, 315)));
        for (int turn = 0; turn < 60; ++turn)
            input().click({500, 400}, Button::wheelDown);
        QVERIFY(isOnlyPin(QRect(460, 370, 80, 60)));
        for (int turn = 0; turn < 80; ++turn)
            input().click({500, 400}, Button::wheelUp);
        QVERIFY(isOnlyPin(QRect(-100, -50, 1200, 900)));
    }

    void sizeChangedDuringADragStays()
    {
        usePins();
        QVERIFY(pinArea());
        input().moveTo({500, 400});
        input().press(Button::left);
        input().glideTo({560, 400});
        QVERIFY(isOnlyPin(kDragged.translated(60, 0)));
        input().click({560, 400}, Button::wheelDown);
        input().click({560, 400}, Button::wheelDown);
        const QRect smaller(380, 265, 361, 271); // 95 % twice, around the same centre
        QVERIFY(isOnlyPin(smaller));
        input().glideTo({660, 500});
        QVERIFY(isOnlyPin(smaller.translated(100, 100)));
        input().release(Button::left);
        QVERIFY(isOnlyPin(smaller.translated(100, 100)));
    }

    void pinKeepsTheSizeItHadAfterMovingIt()
    {
        usePins();
        QVERIFY(pinArea());
        for (int turn = 0; turn < 60; ++turn)
            input().click({500, 400}, Button::wheelDown);
        QVERIFY(isOnlyPin(QRect(460, 370, 80, 60)));
        input().drag({500, 400}, {600, 500});
        QVERIFY(isOnlyPin(QRect(560, 470, 80, 60)));
        input().click({600, 500}, Button::wheelUp);
        QVERIFY(isOnlyPin(QRect(558, 469, 84, 63)) || isOnlyPin(QRect(558, 468, 84, 63)));
    }

    void borderIsGreenUnderThePointer()
    {
        usePins();
        QVERIFY(pinArea());
        QVERIFY(screen().pixel({500, 250}) != hovered());
        input().moveTo({500, 400});
        QVERIFY(waitUntil([&] { return screen().pixel({500, 250}) == hovered(); }));
        QVERIFY(shows(kDragged, captured()));
        input().moveTo(kAside);
        QVERIFY(waitUntil([&] { return screen().pixel({500, 250}) != hovered(); }));
    }

    void singleClickDoesNothingAndDoubleClickCloses_data() { addSurroundings(); }
    void singleClickDoesNothingAndDoubleClickCloses()
    {
        useSurroundings();
        QVERIFY(isPasted(captured()));
        const Clipboard& reader = desktop().clipboard();
        const std::uint64_t owner = reader.owner();
        input().click({500, 400});
        QVERIFY(programHasKeyboard());
        QTest::qWait(600); // the time is the point: two slow clicks are no double click
        input().click({500, 400});
        QVERIFY(isOnlyPin(kDragged));
        QCOMPARE(reader.owner(), owner);
        QVERIFY(isPasted(captured()));
        QVERIFY(isOnlyInHistory(captured()));
        QVERIFY(isOnlyPin(kDragged));
        input().doubleClick({600, 450}); // not the third click in one place
        QVERIFY(pinsAreGone());
        QVERIFY(program().isRunning());
    }

    void focusedPinIgnoresEscapeAndDelete()
    {
        usePins();
        QVERIFY(pinArea());
        input().click({500, 400});
        QVERIFY(programHasKeyboard());
        input().tap(Qt::Key_Escape);
        input().tap(Qt::Key_Delete);
        input().tap(Qt::Key_Return);
        QVERIFY(isOnlyPin(kDragged));
        QVERIFY(openArea()); // all those keys have arrived
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyPin(kDragged));
    }

    void closingOneOfTwoPinsLeavesTheOther()
    {
        usePins();
        const QRect other(800, 100, 300, 200);
        QVERIFY(pinArea());
        QVERIFY(pinArea(other));
        input().doubleClick({500, 400});
        QVERIFY(isOnlyPin(other));
        QVERIFY(shows(other, before().copy(other)));
        input().doubleClick({900, 200});
        QVERIFY(pinsAreGone());
    }

    void newCaptureShowsThePinsOnTheScreen()
    {
        usePins();
        QVERIFY(pinArea());
        input().drag({500, 400}, {600, 430});
        const QRect moved = kDragged.translated(100, 30);
        QVERIFY(isOnlyPin(moved));
        input().moveTo(kAside);
        QVERIFY(waitUntil([&] {
            return screen().pixel({moved.center().x(), moved.top()}) != hovered();
        }));
        const QImage now = screen().grabAtRest();
        QVERIFY(!samePixels(now, before()));
        QVERIFY(openArea());
        const QRect area(250, 200, 950, 500);
        select(area);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isPasted(now.copy(area)));
        QVERIFY(isOnlyPin(moved));
    }

    void pinsEndWithTheProgram()
    {
        usePins();
        QVERIFY(pinArea());
        QCOMPARE(program().quit(), 0);
        program().start();
        QVERIFY(pins().empty());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestPins)

#include "tst_pins.moc"
