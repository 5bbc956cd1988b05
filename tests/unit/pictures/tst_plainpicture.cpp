#include "pictures/PlainPicture.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestPlainPicture final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void opaquePixelsOf32BitsAreBorrowed_data()
    {
        QTest::addColumn<QImage::Format>("format");
        QTest::newRow("RGB32") << QImage::Format_RGB32;
        QTest::newRow("ARGB32") << QImage::Format_ARGB32;
        QTest::newRow("premultiplied") << QImage::Format_ARGB32_Premultiplied;
    }
    void opaquePixelsOf32BitsAreBorrowed()
    {
        QFETCH(QImage::Format, format);
        QImage image(30, 20, format);
        image.fill(qRgb(10, 20, 30));
        const QImage plain = plainPicture(image);
        QCOMPARE(plain.format(), QImage::Format_RGB32);
        QCOMPARE(plain.constBits(), std::as_const(image).constBits());
        QCOMPARE(plain.bytesPerLine(), image.bytesPerLine());
    }

    void oneTranslucentPixelKeepsTheAlpha()
    {
        QImage image(30, 20, QImage::Format_ARGB32);
        image.fill(qRgb(10, 20, 30));
        QVERIFY(isOpaque(image));
        image.setPixel(29, 19, qRgba(10, 20, 30, 254));
        QVERIFY(!isOpaque(image));
        const QImage plain = plainPicture(image);
        QCOMPARE(plain.format(), QImage::Format_ARGB32);
        QCOMPARE(plain.constBits(), std::as_const(image).constBits());
    }

    void premultipliedColoursAreRestored()
    {
        QImage image(2, 1, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        image.setPixel(0, 0, qRgba(64, 0, 0, 128));
        QCOMPARE(plainPicture(image).pixel(0, 0),
                 image.convertToFormat(QImage::Format_ARGB32).pixel(0, 0));
    }

    void otherFormatsAreConvertedAndLoseAnAlphaNobodyUses()
    {
        QImage deep(4, 4, QImage::Format_RGBA64);
        deep.fill(QColor(1, 2, 3));
        QCOMPARE(plainPicture(deep).format(), QImage::Format_RGB32);
        deep.setPixelColor(1, 1, QColor(1, 2, 3, 4));
        QCOMPARE(plainPicture(deep).format(), QImage::Format_ARGB32);
        QImage grey(4, 4, QImage::Format_Grayscale8);
        grey.fill(77);
        QCOMPARE(plainPicture(grey).pixel(2, 2), qRgb(77, 77, 77));
    }

    void nullPictureStaysNull() { QVERIFY(plainPicture(QImage()).isNull()); }
};

BRINDLECAM_TEST(TestPlainPicture);

} // namespace brindlecam

#include "tst_plainpicture.moc"
