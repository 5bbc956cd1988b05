#include "PagePainter.h"
#include "pictures/Dimming.h"
#include "support/TestCase.h"

#include <cmath>

namespace brindlecam {

class TestDimming final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everySampleKeeps55PercentWithinOneStep()
    {
        QImage ramp(256, 3, QImage::Format_RGB32);
        for (int x = 0; x < 256; ++x) {
            ramp.setPixel(x, 0, qRgb(x, 0, 255));
            ramp.setPixel(x, 1, qRgb(255, x, 0));
            ramp.setPixel(x, 2, qRgb(0, 255, x));
        }
        const QImage dimmed = Dimming::dimmedCopy(ramp);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 256; ++x) {
                const QRgb before = ramp.pixel(x, y);
                const QRgb after = dimmed.pixel(x, y);
                QVERIFY(std::abs(qRed(after) - qRed(before) * 0.55) <= 1);
                QVERIFY(std::abs(qGreen(after) - qGreen(before) * 0.55) <= 1);
                QVERIFY(std::abs(qBlue(after) - qBlue(before) * 0.55) <= 1);
            }
        }
    }

    void alphaBecomesOpaqueWhateverTheUnusedByteHeld()
    {
        QImage image(17, 2, QImage::Format_RGB32);
        image.fill(Qt::white);
        reinterpret_cast<quint32*>(image.scanLine(1))[16] = 0x00ffffff;
        const QImage dimmed = Dimming::dimmedCopy(image);
        const auto* row = reinterpret_cast<const quint32*>(dimmed.constScanLine(1));
        QCOMPARE(row[16], row[0]);
        QCOMPARE(row[16] >> 24, 0xffU);
    }

    void bandsMakeTheSamePictureAsTheWhole()
    {
        const QImage page = test::PagePainter::interfacePage({333, 101});
        QImage banded(page.size(), QImage::Format_RGB32);
        banded.fill(Qt::magenta);
        for (int y = 0; y < page.height(); y += 30)
            Dimming::dimRows(page, banded.bits(), banded.bytesPerLine(), y,
                             std::min(30, page.height() - y));
        QCOMPARE(banded, Dimming::dimmedCopy(page));
    }

    void bandTouchesOnlyItsRows()
    {
        QImage white(40, 10, QImage::Format_RGB32);
        white.fill(Qt::white);
        QImage target(40, 10, QImage::Format_RGB32);
        target.fill(Qt::magenta);
        Dimming::dimRows(white, target.bits(), target.bytesPerLine(), 4, 2);
        for (int y = 0; y < 10; ++y)
            QCOMPARE(target.pixelColor(39, y) == QColor(Qt::magenta), y < 4 || y > 5);
    }

    void nullPictureStaysNull() { QVERIFY(Dimming::dimmedCopy(QImage()).isNull()); }
};

BRINDLECAM_TEST(TestDimming);

} // namespace brindlecam

#include "tst_dimming.moc"
