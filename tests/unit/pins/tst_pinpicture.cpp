#include "pins/PinPicture.h"
#include "support/TestCase.h"

#include <QPainter>

namespace brindlecam {

namespace {

/// Stripes of one pixel in black and white.
QImage pinStripes(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, x % 2 == 0 ? 0xff000000 : 0xffffffff);
    }
    return image;
}

QImage painted(const QImage& picture, QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    PinPicture(picture).paint(painter, image.rect());
    return image;
}

} // namespace

class TestPinPicture final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void itsOwnSizeIsPixelForPixel()
    {
        const QImage stripes = pinStripes({64, 8});
        QCOMPARE(painted(stripes, stripes.size()).convertToFormat(QImage::Format_RGB32), stripes);
    }

    void densityOfThePictureDoesNotMatter()
    {
        QImage stripes = pinStripes({64, 8});
        const QImage plain = stripes;
        stripes.setDevicePixelRatio(2);
        QCOMPARE(painted(stripes, {64, 8}).convertToFormat(QImage::Format_RGB32), plain);
    }

    void smallPicturesAreEvenlyGrey_data()
    {
        QTest::addColumn<int>("width");
        QTest::newRow("half") << 512;
        QTest::newRow("40 percent") << 410;
        QTest::newRow("30 percent") << 307;
        QTest::newRow("20 percent") << 205;
    }
    void smallPicturesAreEvenlyGrey()
    {
        QFETCH(int, width);
        const QImage small = painted(pinStripes({1024, 64}), {width, width / 16});
        for (int x = 2; x < small.width() - 2; ++x) {
            const int grey = qGray(small.pixel(x, small.height() / 2));
            QVERIFY2(std::abs(grey - 127) <= 3,
                     qPrintable(QStringLiteral("%1 at %2").arg(grey).arg(x)));
        }
    }

    void everySizeIsFilledToTheEdges_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("a fifth") << QSize(8, 6);
        QTest::newRow("three times") << QSize(120, 90);
        QTest::newRow("a little more") << QSize(42, 32);
        QTest::newRow("a pixel") << QSize(1, 1);
    }
    void everySizeIsFilledToTheEdges()
    {
        QFETCH(QSize, size);
        QImage red(40, 30, QImage::Format_RGB32);
        red.fill(Qt::red);
        const QImage image = painted(red, size);
        QImage expected(size, QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::red);
        QCOMPARE(image, expected);
    }

    void pictureOfOnePixelMayBeAnySize()
    {
        QImage dot(1, 1, QImage::Format_RGB32);
        dot.fill(Qt::blue);
        QCOMPARE(painted(dot, {3, 3}).pixelColor(1, 1), QColor(Qt::blue));
    }
};

BRINDLECAM_TEST(TestPinPicture);

} // namespace brindlecam

#include "tst_pinpicture.moc"
