#include "pictures/BoxScaler.h"
#include "support/TestCase.h"

#include <cmath>

namespace brindlecam {

namespace {

QImage boxScaled(const QImage& picture, QSize to)
{
    BoxScaler scaler(picture.size(), to);
    for (int y = 0; y < picture.height(); ++y)
        scaler.add(reinterpret_cast<const QRgb*>(picture.constScanLine(y)));
    return scaler.result();
}

QImage filledPicture(QSize size, QRgb colour)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return image;
}

} // namespace

class TestBoxScaler final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPictureAsLargeAsItselfStaysAsItIs()
    {
        QImage picture(7, 5, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 7; ++x)
                picture.setPixel(x, y, qRgb(x * 30, y * 40, 255 - x * y));
        }
        QCOMPARE(boxScaled(picture, picture.size()), picture);
    }

    void eachPixelIsTheMeanOfItsOwn()
    {
        QImage picture(4, 4, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 4; ++x)
                picture.setPixel(x, y, qRgb(x * 16, y * 16, (x + y) * 8));
        }
        const QImage half = boxScaled(picture, {2, 2});
        QCOMPARE(half.pixel(0, 0), qRgb(8, 8, 8));
        QCOMPARE(half.pixel(1, 0), qRgb(40, 8, 24));
        QCOMPARE(half.pixel(0, 1), qRgb(8, 40, 24));
        QCOMPARE(half.pixel(1, 1), qRgb(40, 40, 40));
    }

    void pixelsOnABorderCountForBothSides()
    {
        QImage row(3, 1, QImage::Format_ARGB32_Premultiplied);
        row.setPixel(0, 0, qRgb(0, 0, 0));
        row.setPixel(1, 0, qRgb(90, 90, 90));
        row.setPixel(2, 0, qRgb(180, 180, 180));
        const QImage two = boxScaled(row, {2, 1});
        QCOMPARE(two.pixel(0, 0), qRgb(30, 30, 30)); // 0 and half of 90, of one and a half
        QCOMPARE(two.pixel(1, 0), qRgb(150, 150, 150));
        const QImage column = row.transformed(QTransform().rotate(90));
        QCOMPARE(boxScaled(column.convertToFormat(QImage::Format_ARGB32_Premultiplied), {1, 2}),
                 two.transformed(QTransform().rotate(90)));
    }

    void oneColourStaysThatColourAtAnySize_data()
    {
        QTest::addColumn<QSize>("from");
        QTest::addColumn<QSize>("to");
        QTest::newRow("odd") << QSize(1919, 1079) << QSize(640, 360);
        QTest::newRow("a pixel") << QSize(500, 300) << QSize(1, 1);
        QTest::newRow("very tall") << QSize(3, 30000) << QSize(1, 640);
        QTest::newRow("one narrow") << QSize(641, 1) << QSize(640, 1);
    }
    void oneColourStaysThatColourAtAnySize()
    {
        QFETCH(QSize, from);
        QFETCH(QSize, to);
        for (const QRgb colour : {qRgb(255, 255, 255), qRgb(3, 128, 250), qRgba(40, 0, 10, 60)}) {
            const QImage result = boxScaled(filledPicture(from, colour), to);
            QCOMPARE(result.size(), to);
            QCOMPARE(result, filledPicture(to, colour));
        }
    }

    void rowsThatNeverComeAreTransparent()
    {
        BoxScaler scaler({2, 4}, {1, 2});
        const QImage row = filledPicture({2, 1}, qRgb(200, 100, 50));
        for (int i = 0; i < 2; ++i)
            scaler.add(reinterpret_cast<const QRgb*>(row.constScanLine(0)));
        QCOMPARE(scaler.result().pixel(0, 0), qRgb(200, 100, 50));
        QCOMPARE(qAlpha(scaler.result().pixel(0, 1)), 0);
    }

    void rowsBeyondTheLastAreIgnored()
    {
        BoxScaler scaler({2, 2}, {1, 1});
        const QImage white = filledPicture({2, 1}, qRgb(255, 255, 255));
        const QImage black = filledPicture({2, 1}, qRgb(0, 0, 0));
        for (const QImage* row : {&white, &white, &black})
            scaler.add(reinterpret_cast<const QRgb*>(row->constScanLine(0)));
        QCOMPARE(scaler.result().pixel(0, 0), qRgb(255, 255, 255));
    }

    void nothingIsLostOnTheWay()
    {
        QImage picture(97, 61, QImage::Format_ARGB32_Premultiplied);
        double before = 0;
        for (int y = 0; y < 61; ++y) {
            for (int x = 0; x < 97; ++x) {
                const int grey = (x * 37 + y * 91) % 256;
                picture.setPixel(x, y, qRgb(grey, grey, grey));
                before += grey;
            }
        }
        const QImage small = boxScaled(picture, {31, 23});
        double after = 0;
        for (int y = 0; y < 23; ++y) {
            for (int x = 0; x < 31; ++x)
                after += qRed(small.pixel(x, y));
        }
        QVERIFY(std::abs(before / (97 * 61) - after / (31 * 23)) < 0.5);
    }
};

BRINDLECAM_TEST(TestBoxScaler);

} // namespace brindlecam

#include "tst_boxscaler.moc"
