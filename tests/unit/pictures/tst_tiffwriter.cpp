#include "ForeignReaders.h"
#include "PagePainter.h"
#include "pictures/TiffWriter.h"
#include "support/TestCase.h"

#include <QBuffer>
#include <QImageReader>

namespace brindlecam {

class TestTiffWriter final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void opaquePictureIsRgbWithLzwAndDensity_data()
    {
        QTest::addColumn<QImage>("image");
        const QImage page = test::PagePainter::interfacePage({320, 200});
        QTest::newRow("RGB32") << page;
        QTest::newRow("ARGB32, all opaque") << page.convertToFormat(QImage::Format_ARGB32);
        QTest::newRow("premultiplied, all opaque")
            << page.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QTest::newRow("one pixel") << page.copy(0, 0, 1, 1);
    }
    void opaquePictureIsRgbWithLzwAndDensity()
    {
        QFETCH(QImage, image);
        const QByteArray tiff = TiffWriter::encode(image, 5669);
        const QString info = test::ForeignReaders::report(QStringLiteral("tiffinfo"), tiff);
        QVERIFY2(info.contains(QLatin1String("Compression Scheme: LZW")), qPrintable(info));
        QVERIFY2(info.contains(QLatin1String("Samples/Pixel: 3")), qPrintable(info));
        QVERIFY2(info.contains(QLatin1String("Resolution: 144, 144 pixels/inch")),
                 qPrintable(info));
        QCOMPARE(read(tiff).convertToFormat(QImage::Format_RGB32),
                 image.convertToFormat(QImage::Format_RGB32));
    }

    void translucentPictureKeepsItsAlpha()
    {
        QImage image(20, 10, QImage::Format_ARGB32);
        image.fill(qRgba(200, 100, 50, 255));
        image.setPixel(3, 4, qRgba(200, 100, 50, 0));
        const QByteArray tiff = TiffWriter::encode(image, 2835);
        QCOMPARE(qAlpha(read(tiff).pixel(3, 4)), 0);
        QCOMPARE(read(tiff).pixel(0, 0), qRgba(200, 100, 50, 255));
    }

    void foreignMemoryIsLeftAlone()
    {
        const QImage whole = test::PagePainter::interfacePage({200, 100});
        const QImage before = whole.copy();
        const QImage part(whole.constScanLine(10) + 4 * 20, 50, 40, whole.bytesPerLine(),
                          QImage::Format_RGB32);
        QCOMPARE(read(TiffWriter::encode(part, 2835)).convertToFormat(QImage::Format_RGB32),
                 whole.copy(20, 10, 50, 40));
        QCOMPARE(whole, before);
    }

    void nullPictureGivesNothing() { QVERIFY(TiffWriter::encode(QImage(), 2835).isEmpty()); }

private:
    static QImage read(QByteArray tiff)
    {
        QBuffer buffer(&tiff);
        return QImageReader(&buffer, "tiff").read();
    }
};

BRINDLECAM_TEST(TestTiffWriter);

} // namespace brindlecam

#include "tst_tiffwriter.moc"
