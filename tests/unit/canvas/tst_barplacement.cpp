#include "canvas/BarPlacement.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

constexpr QSizeF kScreen(1000, 700);
constexpr QSize kToolsBar(38, 390);
constexpr QSize kActionsBar(230, 38);
constexpr QSize kSizePopup(198, 38);
constexpr QSize kPalettePopup(198, 70);

} // namespace

class TestBarPlacement final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void toolsStandBesideTheSelection_data()
    {
        QTest::addColumn<QRectF>("selection");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("in the middle: right of it, tops aligned")
            << QRectF(300, 100, 400, 450) << QPoint(708, 100);
        QTest::newRow("just room on the right") << QRectF(300, 100, 650, 450) << QPoint(958, 100);
        QTest::newRow("half a point too little on the right: left of it")
            << QRectF(300, 100, 650.5, 450) << QPoint(254, 100);
        QTest::newRow("touches the right edge: left of it")
            << QRectF(600, 100, 400, 450) << QPoint(554, 100);
        QTest::newRow("just room on the left") << QRectF(50, 100, 950, 450) << QPoint(4, 100);
        QTest::newRow("too little on both sides: inside the right edge")
            << QRectF(49.5, 100, 950.5, 450) << QPoint(954, 100);
        QTest::newRow("full width: inside the right edge")
            << QRectF(0, 100, 1000, 450) << QPoint(954, 100);
        QTest::newRow("full screen: inside the right edge, below the margin")
            << QRectF(0, 0, 1000, 700) << QPoint(954, 4);
        QTest::newRow("at the top: margin kept") << QRectF(300, 0, 100, 100) << QPoint(408, 4);
        QTest::newRow("at the bottom: margin kept")
            << QRectF(300, 600, 100, 100) << QPoint(408, 306);
        QTest::newRow("top left corner") << QRectF(0, 0, 50, 50) << QPoint(58, 4);
        QTest::newRow("top right corner") << QRectF(950, 0, 50, 50) << QPoint(904, 4);
        QTest::newRow("bottom left corner") << QRectF(0, 650, 50, 50) << QPoint(58, 306);
        QTest::newRow("bottom right corner") << QRectF(950, 650, 50, 50) << QPoint(904, 306);
        QTest::newRow("edges between points: a whole place")
            << QRectF(300.4, 100.6, 400.2, 450) << QPoint(709, 101);
    }
    void toolsStandBesideTheSelection()
    {
        QFETCH(QRectF, selection);
        QFETCH(QPoint, expected);
        QCOMPARE(BarPlacement::toolsBar(selection, kScreen, kToolsBar), QRect(expected, kToolsBar));
    }

    void actionsStandUnderTheSelection_data()
    {
        QTest::addColumn<QRectF>("selection");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("in the middle: below it, right edges aligned")
            << QRectF(300, 100, 400, 450) << QPoint(470, 558);
        QTest::newRow("just room below") << QRectF(300, 100, 400, 550) << QPoint(470, 658);
        QTest::newRow("half a point too little below: above it")
            << QRectF(300, 100, 400, 550.5) << QPoint(470, 54);
        QTest::newRow("touches the bottom edge: above it")
            << QRectF(300, 100, 400, 600) << QPoint(470, 54);
        QTest::newRow("just room above") << QRectF(300, 50, 400, 650) << QPoint(470, 4);
        QTest::newRow("too little below and above: inside the lower edge")
            << QRectF(300, 49.5, 400, 650.5) << QPoint(470, 654);
        QTest::newRow("full screen: inside the lower edge, margin kept")
            << QRectF(0, 0, 1000, 700) << QPoint(766, 654);
        QTest::newRow("narrow, at the left edge: margin kept")
            << QRectF(0, 100, 50, 100) << QPoint(4, 208);
        QTest::newRow("at the right edge: margin kept")
            << QRectF(700, 100, 300, 100) << QPoint(766, 208);
        QTest::newRow("top left corner") << QRectF(0, 0, 50, 50) << QPoint(4, 58);
        QTest::newRow("top right corner") << QRectF(950, 0, 50, 50) << QPoint(766, 58);
        QTest::newRow("bottom left corner") << QRectF(0, 650, 50, 50) << QPoint(4, 604);
        QTest::newRow("bottom right corner") << QRectF(950, 650, 50, 50) << QPoint(766, 604);
        QTest::newRow("edges between points: a whole place")
            << QRectF(300.4, 100, 400.2, 449.6) << QPoint(471, 558);
    }
    void actionsStandUnderTheSelection()
    {
        QFETCH(QRectF, selection);
        QFETCH(QPoint, expected);
        QCOMPARE(BarPlacement::actionsBar(selection, kScreen, kActionsBar),
                 QRect(expected, kActionsBar));
    }

    void popupsStandBesideTheToolsBar_data()
    {
        QTest::addColumn<QRect>("toolsBar");
        QTest::addColumn<int>("buttonCentreY");
        QTest::addColumn<QSize>("popup");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("right of it, top 4 above the button's")
            << QRect(500, 100, 38, 390) << 151 << kSizePopup << QPoint(544, 132);
        QTest::newRow("palette likewise")
            << QRect(500, 100, 38, 390) << 407 << kPalettePopup << QPoint(544, 388);
        QTest::newRow("just room on the right")
            << QRect(754, 100, 38, 390) << 151 << kSizePopup << QPoint(798, 132);
        QTest::newRow("a point too little: left of it")
            << QRect(755, 100, 38, 390) << 151 << kSizePopup << QPoint(551, 132);
        QTest::newRow("bar inside a full-screen selection: left of it")
            << QRect(954, 4, 38, 390) << 311 << kPalettePopup << QPoint(750, 292);
    }
    void popupsStandBesideTheToolsBar()
    {
        QFETCH(QRect, toolsBar);
        QFETCH(int, buttonCentreY);
        QFETCH(QSize, popup);
        QFETCH(QPoint, expected);
        QCOMPARE(BarPlacement::popup(toolsBar, buttonCentreY, popup, kScreen),
                 QRect(expected, popup));
    }

    void aScreenOfFractionalSizeKeepsItsMargins()
    {
        // 1366 × 768 pixels at scale 1.5.
        const QSizeF canvas(910 + 2.0 / 3, 512);
        const QRectF full(QPointF(), canvas);
        QCOMPARE(BarPlacement::toolsBar(full, canvas, kToolsBar).topLeft(), QPoint(865, 4));
        QCOMPARE(BarPlacement::actionsBar(full, canvas, kActionsBar).topLeft(), QPoint(676, 466));
    }

    void aCanvasTooSmallCutsTheFarEndOff()
    {
        const QSizeF tiny(40, 30);
        const QRectF selection(5, 5, 20, 20);
        const QPoint nearCorner(4, 4);
        QCOMPARE(BarPlacement::toolsBar(selection, tiny, kToolsBar).topLeft(), nearCorner);
        QCOMPARE(BarPlacement::actionsBar(selection, tiny, kActionsBar).topLeft(), nearCorner);
        QCOMPARE(BarPlacement::popup(QRect(nearCorner, kToolsBar), 300, kPalettePopup, tiny),
                 QRect(nearCorner, kPalettePopup));
    }
};

BRINDLECAM_TEST(TestBarPlacement);

} // namespace brindlecam

#include "tst_barplacement.moc"
