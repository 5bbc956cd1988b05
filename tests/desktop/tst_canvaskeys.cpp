#include "desktop/AnnotatingTest.h"

namespace brindlecam::desktop {

/// Keys, wheel and disturbances while marks are drawn and the selection is placed.
class TestCanvasKeys final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr QPointF kFrom{150, 90};
    static constexpr QPointF kTo{300, 200};
    static constexpr QRectF kInside = QRectF(128, 68, 224, 184); ///< without the border

    [[nodiscard]] Annotation rect() const { return mark(Tool::rect, kFrom, kTo); }

    /// A session with a rectangle on it, which is the selected mark.
    [[nodiscard]] bool selectsAMark()
    {
        if (!annotates() || !choose(Tool::rect))
            return false;
        drag(kFrom, kTo);
        if (!isPastedWith({rect()}) || !choosePointer())
            return false;
        click({kFrom.x(), 140});
        // The outline of a selected mark lies around it.
        return waitUntil([this] { return !samePixels(seen(kInside), picture({rect()}, kInside)); });
    }

    /// A session in the middle of a line.
    [[nodiscard]] bool draws()
    {
        if (!annotates() || !choose(Tool::line))
            return false;
        moveTo(kFrom);
        input().press(Button::left);
        return strokeReaches({200, 180});
    }

    /// Ends that line and tells whether it is the only mark.
    [[nodiscard]] bool isOneLine()
    {
        if (!strokeReaches(kTo - QPointF(2, 2)))
            return false;
        moveTo(kTo);
        input().release(Button::left);
        return isPastedWith({mark(Tool::line, kFrom, kTo)});
    }

    void turnWheel(Button direction, int notches)
    {
        for (int notch = 0; notch < notches; ++notch) {
            input().press(direction);
            input().release(direction);
        }
    }

private Q_SLOTS:
    void arrowsPlaceTheSelection()
    {
        QVERIFY(annotates());
        QRectF at = kSelected;
        const auto pressed = [&](std::initializer_list<Qt::Key> keys, const QRectF& now) {
            at = now;
            input().chord(keys);
            return isPastedWith({}, at);
        };
        QVERIFY(pressed({Qt::Key_Right}, at.translated(1, 0)));
        QVERIFY(pressed({Qt::Key_Up}, at.translated(0, -1)));
        QVERIFY(pressed({Qt::Key_Shift, Qt::Key_Left}, at.translated(-10, 0)));
        QVERIFY(pressed({Qt::Key_Shift, Qt::Key_Down}, at.translated(0, 10)));
        QVERIFY(pressed({Qt::Key_Control, Qt::Key_Right}, at.adjusted(0, 0, 1, 0)));
        QVERIFY(pressed({Qt::Key_Control, Qt::Key_Up}, at.adjusted(0, 0, 0, -1)));
        QVERIFY(pressed({Qt::Key_Control, Qt::Key_Shift, Qt::Key_Left}, at.adjusted(0, 0, -10, 0)));
        QVERIFY(pressed({Qt::Key_Control, Qt::Key_Shift, Qt::Key_Down}, at.adjusted(0, 0, 0, 10)));
        QVERIFY(returnTakes({}, at));
    }

    void selectionStaysOnTheScreenAndIsNeverBelowThreePoints()
    {
        QVERIFY(annotates());
        input().press(Qt::Key_Shift);
        for (int press = 0; press < 15; ++press)
            input().tap(Qt::Key_Left);
        input().press(Qt::Key_Control);
        for (int press = 0; press < 30; ++press)
            input().tap(Qt::Key_Left);
        input().release(Qt::Key_Control);
        input().release(Qt::Key_Shift);
        const QRectF narrow(0, kSelected.y(), 3, kSelected.height());
        QVERIFY(isPastedWith({}, narrow));
        QVERIFY(returnTakes({}, narrow));
    }

    void selectedMarkMovesByArrowsAndOneStepTakesTheRunBack()
    {
        QVERIFY(selectsAMark());
        tap({Qt::Key_Right, Qt::Key_Right, Qt::Key_Right});
        input().chord({Qt::Key_Shift, Qt::Key_Down});
        Annotation moved = rect();
        moved.translate({3, 10});
        QVERIFY(isPastedWith({moved}));
        input().chord({Qt::Key_Control, Qt::Key_Z});
        QVERIFY(isPastedWith({rect()}));
        QVERIFY(returnTakes({rect()}));
    }

    void selectedMarkIsDeleted_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Delete") << Qt::Key_Delete;
        QTest::newRow("Backspace") << Qt::Key_Backspace;
    }
    void selectedMarkIsDeleted()
    {
        QFETCH(Qt::Key, key);
        QVERIFY(selectsAMark());
        input().tap(key);
        QVERIFY(isPastedWith({}));
        input().chord({Qt::Key_Control, Qt::Key_Z});
        QVERIFY(isPastedWith({rect()}));
        input().tap(key); // nothing is selected any more
        QVERIFY(returnTakes({rect()}));
    }

    void standardKeysCountByTheirPlaceOnARussianKeyboard()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::rect));
        drag(kFrom, kTo);
        QVERIFY(isPastedWith({rect()}));
        desktop().setKeyboard(QStringLiteral("ru"));
        input().chord({Qt::Key_Control, Qt::Key(u'Я')}); // where Z is
        QVERIFY(isPastedWith({}));
        input().chord({Qt::Key_Control, Qt::Key_Shift, Qt::Key(u'Я')});
        QVERIFY(isPastedWith({rect()}));
        input().chord({Qt::Key_Control, Qt::Key(u'С')}); // where C is
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyCapture(picture({rect()})));
    }

    void tabWalksIntoTheBarsAndSpacePresses()
    {
        QVERIFY(annotates());
        tap({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}); // pointer, pen, line
        QVERIFY(isChosen(Tool::line));
        input().chord({Qt::Key_Shift, Qt::Key_Tab});
        input().tap(Qt::Key_Space);
        QVERIFY(isChosen(Tool::pen));
        input().tap(Qt::Key_Escape);
        input().tap(Qt::Key_Space); // the canvas has no use for it
        input().tap(Qt::Key_Right);
        QVERIFY(isPastedWith({}, kSelected.translated(1, 0)));
        QCOMPARE(overlays().size(), std::size_t(1));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
    }

    void returnCopiesWhileAButtonHasTheFocus()
    {
        QVERIFY(annotates());
        tap({Qt::Key_Tab, Qt::Key_Tab});
        QVERIFY(returnTakes({}));
    }

    void closeButtonIsReachedByKeysAlone()
    {
        QVERIFY(annotates());
        input().chord({Qt::Key_Shift, Qt::Key_Tab}); // the last one
        input().tap(Qt::Key_Space);
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyInHistory(picture({})));
        QVERIFY(captures().isEmpty());
    }

    void wheelChangesTheSizeAndSaysSo()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::line));
        moveTo({140, 240});
        turnWheel(Button::wheelUp, 2);
        QVERIFY(waitUntil([this] { return !samePixels(seen(kInside), picture({}, kInside)); }));
        QVERIFY(shows({}, kInside)); // the message goes by itself
        drag(kFrom, kTo);
        Annotation thick = mark(Tool::line, kFrom, kTo);
        thick.setLineWidth(sizes(Tool::line)->standard + 2);
        QVERIFY(isPastedWith({thick}));
        turnWheel(Button::wheelDown, 30);
        drag({150, 220}, {300, 230});
        Annotation thin = mark(Tool::line, {150, 220}, {300, 230});
        thin.setLineWidth(sizes(Tool::line)->minimum);
        QVERIFY(returnTakes({thick, thin}));
    }

    void wheelChangesTheOpacityOfTheMarker()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::marker));
        moveTo(kFrom);
        turnWheel(Button::wheelUp, 3);
        input().press(Button::left);
        QVERIFY(strokeReaches(kTo));
        input().release(Button::left);
        Annotation stroke(Tool::marker, Config::palette.front(), kFrom);
        stroke.append(kTo);
        stroke.setLineWidth(sizes(Tool::marker)->standard);
        stroke.setOpacity(0.55);
        QVERIFY(returnTakes({stroke}));
    }

    void wheelDoesNothingWithoutASizedTool_data()
    {
        QTest::addColumn<std::optional<Tool>>("tool");
        QTest::newRow("pointer") << std::optional<Tool>();
        QTest::newRow("text") << std::optional(Tool::text);
        QTest::newRow("pixelate") << std::optional(Tool::pixelate);
    }
    void wheelDoesNothingWithoutASizedTool()
    {
        QFETCH(std::optional<Tool>, tool);
        QVERIFY(annotates());
        if (tool)
            QVERIFY(choose(*tool));
        moveTo({140, 240});
        turnWheel(Button::wheelUp, 3);
        QVERIFY(choose(Tool::line)); // seen after the wheel
        QVERIFY(samePixels(seen(kInside), picture({}, kInside)));
        drag(kFrom, kTo);
        QVERIFY(returnTakes({mark(Tool::line, kFrom, kTo)}));
    }

    void areaHotKeyMidStrokeChangesNothing()
    {
        QVERIFY(draws());
        pressHotKey(kAreaKey);
        QVERIFY(isOneLine());
        QCOMPARE(overlays().size(), std::size_t(1));
        QVERIFY(returnTakes({mark(Tool::line, kFrom, kTo)}));
        QVERIFY(openArea()); // and not a second one was waiting
    }

    void areaCommandMidStrokeChangesNothing()
    {
        QVERIFY(draws());
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 4);
        QVERIFY(isOneLine());
        QCOMPARE(overlays().size(), std::size_t(1));
        QVERIFY(returnTakes({mark(Tool::line, kFrom, kTo)}));
    }

    void otherButtonsMidStrokeChangeNothing_data()
    {
        QTest::addColumn<int>("button");
        QTest::newRow("right") << static_cast<int>(Button::right);
        QTest::newRow("middle") << static_cast<int>(Button::middle);
    }
    void otherButtonsMidStrokeChangeNothing()
    {
        QFETCH(int, button);
        QVERIFY(draws());
        input().press(static_cast<Button>(button));
        input().release(static_cast<Button>(button));
        QVERIFY(isOneLine());
        QVERIFY(returnTakes({mark(Tool::line, kFrom, kTo)}));
    }

    void focusLostMidStrokeKeepsTheStroke()
    {
        useProgram();
        const auto other = desktop().open({.pixels = QRect(900, 500, 100, 100)});
        QVERIFY(selects());
        QVERIFY(choose(Tool::line));
        moveTo(kFrom);
        input().press(Button::left);
        QVERIFY(strokeReaches({200, 180}));
        other->takeFocus();
        QVERIFY(isOneLine());
        QVERIFY(press("Copiar"));
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyCapture(picture({mark(Tool::line, kFrom, kTo)})));
    }

    void undoMidStrokeLosesNothing()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::line));
        drag({150, 220}, {300, 230});
        const Annotation first = mark(Tool::line, {150, 220}, {300, 230});
        QVERIFY(isPastedWith({first}));
        moveTo(kFrom);
        input().press(Button::left);
        QVERIFY(strokeReaches({200, 180}));
        input().chord({Qt::Key_Control, Qt::Key_Z});
        QVERIFY(isOneLine());
        QVERIFY(returnTakes({mark(Tool::line, kFrom, kTo)}));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestCanvasKeys>(argc, argv);
}

#include "tst_canvaskeys.moc"
