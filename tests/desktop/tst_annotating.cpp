#include "desktop/AnnotatingTest.h"

namespace brindlecam::desktop {

/// Whole sessions with marks: what is drawn, taken back, moved and copied.
class TestAnnotating final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr QPointF kTail{140, 80};
    static constexpr QPointF kTip{230, 150};
    static constexpr QPointF kMoved{10, 20};

    [[nodiscard]] Annotation arrow() const { return mark(Tool::arrow, kTail, kTip); }
    [[nodiscard]] Annotation hidden() const { return mark(Tool::pixelate, {250, 70}, {340, 130}); }

private Q_SLOTS:
    void storyFromSelectionToCopy_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::newRow("at 1") << 1.0;
        QTest::newRow("at 1.5") << 1.5;
    }
    void storyFromSelectionToCopy()
    {
        QFETCH(qreal, scale);
        QVERIFY(annotates({}, scale));
        QVERIFY(choose(Tool::arrow));
        drag(kTail, kTip);
        Marks marks{arrow()};
        QVERIFY(isPastedWith(marks));

        QVERIFY(choose(Tool::text));
        click({140, 170});
        input().type("paso a paso");
        input().tap(Qt::Key_Return);
        marks.push_back(typed({140, 170}, QStringLiteral("paso a paso")));
        QVERIFY(isPastedWith(marks));

        QVERIFY(pick(1));
        QVERIFY(choose(Tool::number));
        click({150, 210});
        click({200, 210});
        marks.push_back(badge({150, 210}, 1, Config::palette.at(1)));
        marks.push_back(badge({200, 210}, 2, Config::palette.at(1)));
        QVERIFY(isPastedWith(marks));

        QVERIFY(choose(Tool::pixelate));
        drag({250, 70}, {340, 130});
        marks.push_back(hidden());
        QVERIFY(isPastedWith(marks));

        input().chord({Qt::Key_Control, Qt::Key_Z});
        input().chord({Qt::Key_Control, Qt::Key_Z});
        QVERIFY(isPastedWith(Marks(marks.begin(), marks.end() - 2)));
        input().chord({Qt::Key_Control, Qt::Key_Shift, Qt::Key_Z});
        input().chord({Qt::Key_Control, Qt::Key_Shift, Qt::Key_Z});
        QVERIFY(isPastedWith(marks));

        QVERIFY(choosePointer());
        const QPointF onTheShaft = (kTail + kTip) / 2;
        drag(onTheShaft, onTheShaft + kMoved);
        marks.front().translate(kMoved);
        QVERIFY(isPastedWith(marks));
        QVERIFY(history().isEmpty());
        QVERIFY(captures().isEmpty());
        QVERIFY(returnTakes(marks));
        QVERIFY(toastComes());
    }

    void screenShowsWhatIsCopied()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::rect));
        drag(kTail, kTip);
        QVERIFY(choose(Tool::pixelate));
        drag({250, 70}, {340, 130});
        // Without the selection's border.
        QVERIFY(shows({mark(Tool::rect, kTail, kTip), hidden()}, kSelected.adjusted(8, 8, -8, -8)));
    }

    void draggedMarkIsOneStepBack()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::arrow));
        drag(kTail, kTip);
        QVERIFY(isPastedWith({arrow()}));
        QVERIFY(choosePointer());
        drag((kTail + kTip) / 2, (kTail + kTip) / 2 + QPointF(60, 40));
        Annotation moved = arrow();
        moved.translate({60, 40});
        QVERIFY(isPastedWith({moved}));
        input().chord({Qt::Key_Control, Qt::Key_Z});
        QVERIFY(isPastedWith({arrow()}));
        input().chord({Qt::Key_Control, Qt::Key_Z});
        QVERIFY(isPastedWith({}));
        input().chord({Qt::Key_Control, Qt::Key_Shift, Qt::Key_Z});
        QVERIFY(isPastedWith({arrow()}));
        QVERIFY(returnTakes({arrow()}));
    }

    void movedPixelationHidesWhatIsUnderItNow()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::pixelate));
        drag({250, 70}, {340, 130});
        QVERIFY(choosePointer());
        drag({300, 100}, {260, 180});
        QVERIFY(returnTakes({mark(Tool::pixelate, {210, 150}, {300, 210})}));
    }

    void buttonsTakeBackAndCopy()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::rect));
        drag(kTail, kTip);
        drag({250, 70}, {340, 130});
        const Marks both{mark(Tool::rect, kTail, kTip), mark(Tool::rect, {250, 70}, {340, 130})};
        QVERIFY(isPastedWith(both));
        QVERIFY(press("Deshacer"));
        QVERIFY(press("Deshacer"));
        QVERIFY(isPastedWith({}));
        QVERIFY(press("Rehacer"));
        QVERIFY(isPastedWith({both.front()}));
        QVERIFY(press("Copiar"));
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyCapture(picture({both.front()})));
        QVERIFY(isPastedWith({both.front()}));
        QVERIFY(isOnlyInHistory(picture({both.front()})));
    }

    void clipboardHoldsEveryFinishedMarkAndCancelKeepsTheLast()
    {
        QVERIFY(annotates());
        QVERIFY(isPastedWith({}));
        Marks marks;
        QVERIFY(choose(Tool::line));
        for (const qreal y : {100, 140, 180}) {
            drag({140, y}, {340, y + 20});
            marks.push_back(mark(Tool::line, {140, y}, {340, y + 20}));
            QVERIFY(isPastedWith(marks));
        }
        QVERIFY(history().isEmpty());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(isOnlyInHistory(picture(marks)));
        QVERIFY(isPastedWith(marks));
        QCOMPARE(program().quit(), 0);
        QVERIFY(captures().isEmpty());
    }

    void withoutAutomaticCopyNothingIsOfferedBeforeTheEnd()
    {
        QVERIFY(annotates({{QStringLiteral("autoCopy"), false}}));
        QVERIFY(choose(Tool::rect));
        drag(kTail, kTip);
        QVERIFY(shows({mark(Tool::rect, kTail, kTip)}, kSelected.adjusted(8, 8, -8, -8)));
        QVERIFY(!clipboardIsTaken());
        QVERIFY(press("Cerrar"));
        QVERIFY(sessionIsOver());
        QCOMPARE(program().quit(), 0);
        QVERIFY(!clipboardIsTaken());
        QVERIFY(history().isEmpty());
    }

    void nextSessionBeginsWithoutMarks()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::rect));
        drag(kTail, kTip);
        QVERIFY(returnTakes({mark(Tool::rect, kTail, kTip)}));
        QVERIFY(selects());
        QVERIFY(isPastedWith({}));
        input().chord({Qt::Key_Control, Qt::Key_Z});
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsOver());
        QVERIFY(isPastedWith({}));
        QVERIFY(waitUntil([this] { return history().size() == 2; }));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestAnnotating>(argc, argv);
}

#include "tst_annotating.moc"
