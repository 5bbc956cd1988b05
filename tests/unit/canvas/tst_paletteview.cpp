#include "canvas/BarButton.h"
#include "canvas/PaletteView.h"
#include "canvas/SliderTrack.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

PaletteView::Controls paletteControls(int swatches)
{
    PaletteView::Controls controls;
    for (int i = 0; i < swatches; ++i)
        controls.swatches.push_back(std::make_unique<BarButton>(QString(), QString()));
    controls.minus = std::make_unique<BarButton>(QStringLiteral("minus"), QStringLiteral("menos"));
    controls.track = std::make_unique<SliderTrack>(
        SliderTrack::Shape::plain, SliderTrack::Range{.lower = 0, .upper = 1, .step = 0.1},
        QStringLiteral("valor"));
    controls.plus = std::make_unique<BarButton>(QStringLiteral("plus"), QStringLiteral("más"));
    return controls;
}

} // namespace

class TestPaletteView final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void withSwatchesItHasTwoRows()
    {
        const PaletteView view(paletteControls(6), nullptr);
        QCOMPARE(view.size(), QSize(198, 70));
        QCOMPARE(view.swatches().size(), 6U);
        for (int i = 0; i < 6; ++i)
            QCOMPARE(view.swatches().at(static_cast<std::size_t>(i))->geometry(),
                     QRect(4 + 32 * i, 4, 30, 30));
        QCOMPARE(view.minus().geometry(), QRect(4, 36, 30, 30));
        QCOMPARE(view.track().geometry(), QRect(34, 36, 130, 30));
        QCOMPARE(view.plus().geometry(), QRect(164, 36, 30, 30));
    }

    void withoutSwatchesItHasOne()
    {
        const PaletteView view(paletteControls(0), nullptr);
        QCOMPARE(view.size(), QSize(198, 38));
        QCOMPARE(view.minus().geometry(), QRect(4, 4, 30, 30));
        QCOMPARE(view.track().geometry(), QRect(34, 4, 130, 30));
        QCOMPARE(view.plus().geometry(), QRect(164, 4, 30, 30));
    }

    void tabGoesThroughSwatchesMinusSliderPlus()
    {
        const PaletteView view(paletteControls(2), nullptr);
        const std::vector<QWidget*> expected{view.swatches().at(0), view.swatches().at(1),
                                             &view.minus(), &view.track(), &view.plus()};
        QCOMPARE(view.controls(), expected);
    }

    void pressesOnTheBackgroundAndTheSlidersOtherButtonsAreSwallowed()
    {
        PaletteView view(paletteControls(1), nullptr);
        for (QWidget* over : {static_cast<QWidget*>(&view), static_cast<QWidget*>(&view.track())}) {
            QMouseEvent press(QEvent::MouseButtonPress, {1, 1}, {1, 1}, Qt::RightButton,
                              Qt::RightButton, {});
            press.ignore();
            QCoreApplication::sendEvent(over, &press);
            QVERIFY(press.isAccepted());
        }
    }

    void thePointerIsAnArrow()
    {
        QWidget canvas;
        canvas.setCursor(Qt::CrossCursor);
        const PaletteView view(paletteControls(1), &canvas);
        QCOMPARE(view.cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(view.track().cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(view.plus().cursor().shape(), Qt::ArrowCursor);
    }
};

BRINDLECAM_TEST(TestPaletteView);

} // namespace brindlecam

#include "tst_paletteview.moc"
