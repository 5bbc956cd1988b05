#include "PaintedScale.h"
#include "canvas/Loupe.h"
#include "look/InterfaceFont.h"
#include "look/Pill.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <QPainter>
#include <QtMath>

namespace brindlecam {

namespace {

constexpr QSizeF kLoupeCanvas(800, 600);

QImage painted(const QImage& picture, QPointF pointer)
{
    QImage canvas(kLoupeCanvas.toSize(), QImage::Format_RGB32);
    canvas.fill(Qt::magenta);
    QPainter painter(&canvas);
    Loupe::paint(painter, pointer, picture, kLoupeCanvas);
    return canvas;
}

// The middle of a cell, counted from the centre cell of the loupe.
QPoint cell(QPointF pointer, int dx, int dy)
{
    const QPointF centre = Loupe::rect(pointer, kLoupeCanvas).center();
    return (centre + QPointF(dx, dy) * 5).toPoint();
}

/// A loupe at 420, 320 over a picture that is blue everywhere, at so many pixels per point, and
/// nothing around it.
QImage blueLoupe(qreal scale)
{
    QImage picture((kLoupeCanvas * scale).toSize(), QImage::Format_RGB32);
    picture.fill(Qt::blue);
    const QImage canvas = test::paintedCanvas(kLoupeCanvas.toSize(), scale, [&](QPainter& p) {
        Loupe::paint(p, {400, 300}, picture, kLoupeCanvas);
    });
    return canvas.copy(QRectF(420 * scale, 320 * scale, 125 * scale, 125 * scale).toRect());
}

/// The colours along a row or a column and how many pixels each of them lasts: "b3 w1".
QString runs(const QImage& image, QPoint from, QPoint step)
{
    const auto letter = [](QRgb pixel) {
        if (pixel == qRgb(255, 255, 255))
            return QLatin1Char('w');
        if (pixel == Config::leafGreen.rgb())
            return QLatin1Char('g');
        // White at alpha 0.35 over blue.
        return pixel == qRgb(89, 89, 255) ? QLatin1Char('f')
               : pixel == qRgb(0, 0, 255) ? QLatin1Char('b')
                                          : QLatin1Char('?');
    };
    QStringList found;
    int length = 0;
    for (QPoint at = from; image.rect().contains(at); at += step) {
        ++length;
        const QPoint next = at + step;
        if (image.rect().contains(next) && letter(image.pixel(next)) == letter(image.pixel(at)))
            continue;
        found << letter(image.pixel(at)) + QString::number(length);
        length = 0;
    }
    return found.join(QLatin1Char(' '));
}

} // namespace

class TestLoupe final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void standsBelowAndToTheRightUntilThereIsNoRoom_data()
    {
        QTest::addColumn<QPointF>("pointer");
        QTest::addColumn<QRectF>("expected");
        QTest::newRow("in the middle") << QPointF(400, 300) << QRectF(420, 320, 125, 125);
        QTest::newRow("right edge just fits") << QPointF(651, 300) << QRectF(671, 320, 125, 125);
        QTest::newRow("right edge flips it left")
            << QPointF(652, 300) << QRectF(507, 320, 125, 125);
        QTest::newRow("lower edge just fits") << QPointF(400, 431) << QRectF(420, 451, 125, 125);
        QTest::newRow("lower edge flips it above")
            << QPointF(400, 432) << QRectF(420, 287, 125, 125);
        QTest::newRow("bottom right corner flips both")
            << QPointF(799, 599) << QRectF(654, 454, 125, 125);
    }
    void standsBelowAndToTheRightUntilThereIsNoRoom()
    {
        QFETCH(QPointF, pointer);
        QTEST(Loupe::rect(pointer, kLoupeCanvas), "expected");
    }

    void magnifiesTwelvePixelsToEachSideOfThePointers()
    {
        QCOMPARE(Loupe::source({100, 50}), QRect(88, 38, 25, 25));
    }

    void eachPixelBecomesACellAndThePointersStaysInTheCentre()
    {
        QImage picture(kLoupeCanvas.toSize(), QImage::Format_RGB32);
        picture.fill(Qt::blue);
        picture.setPixelColor(400, 300, Qt::red);
        picture.setPixelColor(403, 298, Qt::yellow);
        const QPointF pointer(400, 300);
        const QImage canvas = painted(picture, pointer);
        QCOMPARE(canvas.pixelColor(cell(pointer, 0, 0)), QColor(Qt::red));
        QCOMPARE(canvas.pixelColor(cell(pointer, 3, -2)), QColor(Qt::yellow));
        QCOMPARE(canvas.pixelColor(cell(pointer, 3, -2) + QPoint(1, 1)), QColor(Qt::yellow));
        QCOMPARE(canvas.pixelColor(cell(pointer, -4, 5)), QColor(Qt::blue));
    }

    void itsLinesLieOnWholePixels_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("beside");
        QTest::addColumn<int>("through");
        QTest::addColumn<QString>("besideTheCentre");
        QTest::addColumn<QString>("throughTheCentre");
        QTest::newRow("1.00") << 1.0 << 30 << 62 << QStringLiteral("w2 b60 f1 b60 w2")
                              << QStringLiteral("w2 f57 g2 b3 g2 f57 w2");
        QTest::newRow("2.00") << 2.0 << 60 << 124 << QStringLiteral("w3 b121 f2 b121 w3")
                              << QStringLiteral("w3 f115 g3 b8 g3 f115 w3");
    }
    void itsLinesLieOnWholePixels()
    {
        QFETCH(const qreal, scale);
        QFETCH(const int, beside);
        QFETCH(const int, through);
        const QImage loupe = blueLoupe(scale);
        const QPoint right(1, 0);
        const QPoint down(0, 1);
        QTEST(runs(loupe, {0, beside}, right), "besideTheCentre");
        QTEST(runs(loupe, {beside, 0}, down), "besideTheCentre");
        QTEST(runs(loupe, {0, through}, right), "throughTheCentre");
        QTEST(runs(loupe, {through, 0}, down), "throughTheCentre");
    }

    void itsCornersAreRoundedByTenPoints()
    {
        const QImage loupe = blueLoupe(1);
        for (const auto& [x, y] : {std::pair(0, 0), {124, 0}, {0, 124}, {124, 124}}) {
            const int inX = x == 0 ? 1 : -1;
            const int inY = y == 0 ? 1 : -1;
            QVERIFY(loupe.pixelColor(x + 2 * inX, y + 2 * inY).lightness() < 8);
            QCOMPARE(loupe.pixel(x + 3 * inX, y + 3 * inY), qRgb(255, 255, 255));
        }
    }

    void theLabelUnderItSaysThePixel_data() { test::addCanvasScales(); }
    void theLabelUnderItSaysThePixel()
    {
        QFETCH(const qreal, scale);
        QImage picture((kLoupeCanvas * scale).toSize(), QImage::Format_RGB32);
        picture.fill(Qt::blue);
        const Pill expected{.text = QStringLiteral("%1, %2").arg(400 * scale).arg(300 * scale),
                            .font = InterfaceFont::medium(10.5),
                            .paddingX = 6,
                            .paddingY = 2,
                            .alpha = 0.85,
                            .radius = 4,
                            .evenDigits = true};
        const QPointF corner(420 + 62.5 - expected.size().width() / 2, 320 + 125 + 8);
        const QSize canvas = kLoupeCanvas.toSize();
        const QRect below(0, qCeil(447 * scale), qFloor(800 * scale), qFloor(150 * scale));
        QCOMPARE(test::paintedCanvas(canvas, scale,
                                     [&](QPainter& p) {
                                         Loupe::paint(p, {400, 300}, picture, kLoupeCanvas);
                                     })
                     .copy(below),
                 test::paintedCanvas(canvas, scale, [&](QPainter& p) {
                     expected.paint(p, corner);
                 }).copy(below));
    }

    void whatIsRepaintedHoldsBorderAndLabel()
    {
        QCOMPARE(Loupe::covered({420, 320, 125, 125}), QRectF(414, 294, 137, 177));
    }

    void cellsBeyondThePictureAreBlack()
    {
        QImage picture(kLoupeCanvas.toSize(), QImage::Format_RGB32);
        picture.fill(Qt::blue);
        picture.setPixelColor(0, 0, Qt::red);
        const QPointF pointer(0, 0);
        const QImage canvas = painted(picture, pointer);
        QCOMPARE(canvas.pixelColor(cell(pointer, 0, 0)), QColor(Qt::red));
        QCOMPARE(canvas.pixelColor(cell(pointer, -5, -5)), QColor(Qt::black));
        QCOMPARE(canvas.pixelColor(cell(pointer, 5, 5)), QColor(Qt::blue));
    }
};

BRINDLECAM_TEST(TestLoupe);

} // namespace brindlecam

#include "tst_loupe.moc"
