#include "canvas/Loupe.h"
#include "support/TestCase.h"

#include <QPainter>

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
