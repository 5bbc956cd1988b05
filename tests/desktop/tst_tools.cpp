#include "desktop/AnnotatingTest.h"

namespace brindlecam::desktop {

/// Every tool, chosen by its button and drawn with by real drags: the copied picture is exactly
/// what the model draws.
class TestTools final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr QPointF kFrom{150, 90};
    static constexpr QPointF kTo{300, 200};

private Q_SLOTS:
    void markBetweenTwoEnds_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<qreal>("scale");
        for (const Tool tool : {Tool::line, Tool::arrow, Tool::rect, Tool::pixelate}) {
            QTest::addRow("%s at 1", qPrintable(name(tool))) << tool << 1.0;
            if (tool == Tool::line || tool == Tool::rect)
                continue;
            QTest::addRow("%s at 1.5", qPrintable(name(tool))) << tool << 1.5;
            QTest::addRow("%s at 2", qPrintable(name(tool))) << tool << 2.0;
        }
    }
    void markBetweenTwoEnds()
    {
        QFETCH(Tool, tool);
        QFETCH(qreal, scale);
        QVERIFY(annotates({}, scale));
        QVERIFY(choose(tool));
        drag(kFrom, kTo);
        const Marks marks{mark(tool, kFrom, kTo)};
        QVERIFY(isPastedWith(marks));
        QVERIFY(returnTakes(marks));
    }

    void shiftHoldsLinesAndArrowsOnEighthTurns_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<QPointF>("end");
        QTest::newRow("line") << Tool::line << kFrom + QPointF(125, 0);
        QTest::newRow("arrow") << Tool::arrow << kFrom + QPointF(125, 0);
        QTest::newRow("rectangle, which is free") << Tool::rect << kFrom + QPointF(120, 35);
    }
    void shiftHoldsLinesAndArrowsOnEighthTurns()
    {
        QFETCH(Tool, tool);
        QFETCH(QPointF, end);
        QVERIFY(annotates());
        QVERIFY(choose(tool));
        input().press(Qt::Key_Shift);
        drag(kFrom, kFrom + QPointF(120, 35)); // 125 long
        input().release(Qt::Key_Shift);
        QVERIFY(returnTakes({mark(tool, kFrom, end)}));
    }

    void strokeGoesThroughEveryPoint_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<qreal>("scale");
        QTest::newRow("pen at 1") << Tool::pen << 1.0;
        QTest::newRow("pen at 1.5") << Tool::pen << 1.5;
        QTest::newRow("marker at 1") << Tool::marker << 1.0;
        QTest::newRow("marker at 2") << Tool::marker << 2.0;
    }
    void strokeGoesThroughEveryPoint()
    {
        QFETCH(Tool, tool);
        QFETCH(qreal, scale);
        QVERIFY(annotates({}, scale));
        QVERIFY(choose(tool));
        Annotation stroke(tool, Config::palette.front(), kFrom);
        stroke.setLineWidth(sizes(tool)->standard);
        moveTo(kFrom);
        input().press(Button::left);
        for (const QPointF point : {QPointF(300, 100), QPointF(200, 150), QPointF(330, 220)}) {
            QVERIFY(strokeReaches(point));
            stroke.append(point);
        }
        input().release(Button::left);
        QVERIFY(returnTakes({stroke}));
    }

    void textIsTypedOnTheCanvas_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::newRow("at 1") << 1.0;
        QTest::newRow("at 1.5") << 1.5;
        QTest::newRow("at 2") << 2.0;
    }
    void textIsTypedOnTheCanvas()
    {
        QFETCH(qreal, scale);
        QVERIFY(annotates({}, scale));
        QVERIFY(choose(Tool::text));
        click(kFrom);
        input().type("hola 12");
        input().tap(Qt::Key_Return);
        QVERIFY(returnTakes({typed(kFrom, QStringLiteral("hola 12"))}));
    }

    void badgeStandsWhereTheButtonIsLetGo()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::number));
        drag(kFrom, kTo);
        click({200, 160});
        QVERIFY(returnTakes({badge(kTo, 1), badge({200, 160}, 2)}));
    }

    void markDraggedOutOfTheSelectionEndsOnItsEdge()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::rect));
        drag(kFrom, {600, 600});
        QVERIFY(returnTakes({mark(Tool::rect, kFrom, kSelected.bottomRight())}));
    }

    void onlyAPressedLineLeavesNothing()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::line));
        click(kFrom);
        QVERIFY(returnTakes({}));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestTools>(argc, argv);
}

#include "tst_tools.moc"
