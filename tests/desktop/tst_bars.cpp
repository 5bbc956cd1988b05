#include "desktop/AnnotatingTest.h"

namespace brindlecam::desktop {

/// The bars under the pointer: popups, sliders, and presses that are not the canvas's.
class TestBars final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr QPointF kFrom{150, 90};
    static constexpr QPointF kTo{300, 200};

    /// A line of this width.
    [[nodiscard]] Annotation line(qreal width) const
    {
        Annotation made = mark(Tool::line, kFrom, kTo);
        made.setLineWidth(width);
        return made;
    }

    [[nodiscard]] QRect sizePopup(Tool tool) const
    {
        return popup(1 + static_cast<int>(tool), {198, 38});
    }

    [[nodiscard]] bool looksLike(const QRect& area, const QImage& picture)
    {
        return waitUntil([&] { return samePixels(seen(area), picture); });
    }

private Q_SLOTS:
    void sizePopupSetsTheWidth_data()
    {
        QTest::addColumn<int>("x"); // in the popup
        QTest::addColumn<int>("to");
        QTest::addColumn<qreal>("width");
        QTest::newRow("minus") << 19 << 19 << 2.0;
        QTest::newRow("plus") << 179 << 179 << 4.0;
        QTest::newRow("slider pressed at its right end") << 156 << 156 << 20.0;
        QTest::newRow("slider dragged past its left end") << 120 << -60 << 1.0;
    }
    void sizePopupSetsTheWidth()
    {
        QFETCH(int, x);
        QFETCH(int, to);
        QFETCH(qreal, width);
        QVERIFY(annotates());
        QVERIFY(choose(Tool::line));
        const QPointF row = sizePopup(Tool::line).topLeft() + QPointF(0, 19);
        drag(row + QPointF(x, 0), row + QPointF(to, 0));
        drag(kFrom, kTo);
        QVERIFY(returnTakes({line(width)}));
    }

    void paletteSetsTheOpacityOfTheMarker()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::marker));
        QVERIFY(openPalette());
        click(paletteRect().topLeft() + QPointF(179, 51)); // plus
        moveTo(kFrom);
        input().press(Button::left);
        QVERIFY(strokeReaches(kTo));
        input().release(Button::left);
        Annotation stroke(Tool::marker, Config::palette.front(), kFrom);
        stroke.append(kTo);
        stroke.setLineWidth(sizes(Tool::marker)->standard);
        stroke.setOpacity(0.45);
        QVERIFY(returnTakes({stroke}));
    }

    void everyColorIsDrawnWith()
    {
        QVERIFY(annotates());
        Marks marks;
        for (int i = 0; i < static_cast<int>(Config::palette.size()); ++i) {
            QVERIFY(pick(i));
            QVERIFY(choose(Tool::number));
            const QPointF at(150 + 30 * i, 160);
            click(at);
            marks.push_back(badge(at, 1, Config::palette.at(static_cast<std::size_t>(i))));
            QVERIFY(isPastedWith(marks));
            QVERIFY(choosePointer());
        }
        QVERIFY(returnTakes(marks));
    }

    void secondPressOfAToolGoesBackToThePointer()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::rect));
        pressTool(Tool::rect);
        QVERIFY(isChosen(std::nullopt));
        drag(kFrom, kFrom + QPointF(20, 10)); // moves the selection
        QVERIFY(returnTakes({}, kSelected.translated(20, 10)));
    }

    void pressBesideTheButtonsIsSwallowed()
    {
        QVERIFY(annotates());
        // The padding of both bars; dragged on the canvas these would begin another selection.
        drag(toolsBar().topLeft() + QPointF(2, 20), {600, 350});
        drag(actionsBar().topLeft() + QPointF(20, 2), {600, 350});
        QVERIFY(returnTakes({}));
    }

    void pressOnTheCanvasClosesThePopup()
    {
        QVERIFY(annotates());
        const QImage closed = seen(paletteRect());
        QVERIFY(openPalette());
        click({200, 160});
        input().moveTo({1200, 700});
        QVERIFY(looksLike(paletteRect(), closed));
        QVERIFY(returnTakes({}));
    }

    void selectionOfTheWholeScreenHasItsBarsInside()
    {
        useProgram();
        QVERIFY(openArea());
        const QRectF whole(QPointF(), canvas());
        input().drag({0, 0}, {1279, 799});
        const QPointF bar = toolsBar(whole).topLeft();
        click(bar + QPointF(19, 4 + 32 * 4 + 15)); // rectangle
        const QPointF from = bar - QPointF(60, 0);
        const QPointF to = bar + QPointF(-10, 90);
        drag(from, to);
        QVERIFY(returnTakes({mark(Tool::rect, from, to)}, whole));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestBars>(argc, argv);
}

#include "tst_bars.moc"
