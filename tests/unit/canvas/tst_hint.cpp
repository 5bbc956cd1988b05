#include "PaintedScale.h"
#include "canvas/Hint.h"
#include "look/InterfaceFont.h"
#include "look/Pill.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

constexpr QSize kHintCanvas(900, 200);

} // namespace

class TestHint final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isACapsuleInTheMiddleThatEndsNinetyPointsBelowTheTop_data() { test::addCanvasScales(); }
    void isACapsuleInTheMiddleThatEndsNinetyPointsBelowTheTop()
    {
        QFETCH(const qreal, scale);
        const Pill expected{.text = QStringLiteral("Arrastra para seleccionar un área · Clic en "
                                                   "una ventana para capturarla · Esc para "
                                                   "cancelar"),
                            .font = InterfaceFont::medium(14),
                            .paddingX = 18,
                            .paddingY = 9,
                            .alpha = 0.8,
                            .radius = -1};
        const QSizeF size = expected.size();
        const QPointF corner(450 - size.width() / 2, 90 - size.height());
        QCOMPARE(Hint::rect(kHintCanvas), QRectF(corner, size));
        QVERIFY(size.width() < kHintCanvas.width()); // all of it is compared
        QCOMPARE(test::paintedCanvas(kHintCanvas, scale,
                                     [](QPainter& p) { Hint::paint(p, kHintCanvas); }),
                 test::paintedCanvas(kHintCanvas, scale,
                                     [&](QPainter& p) { expected.paint(p, corner); }));
    }
};

BRINDLECAM_TEST(TestHint);

} // namespace brindlecam

#include "tst_hint.moc"
