#include "PaintedScale.h"
#include "canvas/SizeLabel.h"
#include "look/InterfaceFont.h"
#include "look/Pill.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestSizeLabel final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void standsAboveTheSelectionUntilThereIsNoRoom_data()
    {
        QTest::addColumn<QRectF>("selection");
        QTest::addColumn<QRectF>("expected");
        const QSizeF label(60, 20);
        QTest::newRow("six points above")
            << QRectF(100, 100, 50, 50) << QRectF(QPointF(100, 74), label);
        QTest::newRow("just enough room")
            << QRectF(100, 28.5, 50, 50) << QRectF(QPointF(100, 2.5), label);
        QTest::newRow("two points from the top go inside")
            << QRectF(100, 28, 50, 50) << QRectF(QPointF(106, 34), label);
        QTest::newRow("a full screen has it inside")
            << QRectF(0, 0, 800, 600) << QRectF(QPointF(6, 6), label);
    }
    void standsAboveTheSelectionUntilThereIsNoRoom()
    {
        QFETCH(QRectF, selection);
        QTEST(SizeLabel::place(selection, QSizeF(60, 20)), "expected");
    }

    void saysThePixelsOnASmallDarkPanel_data() { test::addCanvasScales(); }
    void saysThePixelsOnASmallDarkPanel()
    {
        QFETCH(const qreal, scale);
        constexpr QSize kCanvas(200, 150);
        const Pill expected{.text = QStringLiteral("1234 × 56"),
                            .font = InterfaceFont::medium(11),
                            .paddingX = 6,
                            .paddingY = 3,
                            .alpha = 0.85,
                            .radius = 4,
                            .evenDigits = true};
        const QRectF selection(41, 62, 90, 70);
        const QPointF corner(41, 62 - 6 - expected.size().height());
        const QSize pixels(1234, 56);
        QCOMPARE(SizeLabel::rect(selection, pixels), QRectF(corner, expected.size()));
        QCOMPARE(
            test::paintedCanvas(kCanvas, scale,
                                [&](QPainter& p) { SizeLabel::paint(p, selection, pixels); }),
            test::paintedCanvas(kCanvas, scale, [&](QPainter& p) { expected.paint(p, corner); }));
    }
};

BRINDLECAM_TEST(TestSizeLabel);

} // namespace brindlecam

#include "tst_sizelabel.moc"
