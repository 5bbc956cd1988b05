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

    void partIsThatPartOfTheWhole_data()
    {
        QTest::addColumn<QRect>("part");
        QTest::newRow("everything") << QRect(0, 0, 333, 101);
        QTest::newRow("a band") << QRect(0, 30, 333, 32);
        QTest::newRow("in the middle") << QRect(17, 5, 101, 77);
        QTest::newRow("the last pixel") << QRect(332, 100, 1, 1);
    }
    void partIsThatPartOfTheWhole()
    {
        QFETCH(QRect, part);
        const QImage page = test::PagePainter::interfacePage({333, 101});
        QCOMPARE(Dimming::dimmedCopy(page, part), Dimming::dimmedCopy(page).copy(part));
    }

    void dimmingTouchesNothingBesideThePart()
    {
        QImage white(40, 10, QImage::Format_RGB32);
        white.fill(Qt::white);
        QImage target(40, 10, QImage::Format_RGB32);
        target.fill(Qt::magenta);
        const QRect part(3, 4, 36, 2);
        Dimming::dim(white, part, target.scanLine(4) + 3 * 4, target.bytesPerLine());
        for (int y = 0; y < target.height(); ++y) {
            for (int x = 0; x < target.width(); ++x)
                QCOMPARE(target.pixelColor(x, y) != QColor(Qt::magenta), part.contains(x, y));
        }
    }

    void nullPictureStaysNull() { QVERIFY(Dimming::dimmedCopy(QImage()).isNull()); }
};

BRINDLECAM_TEST(TestDimming);

} // namespace brindlecam

#include "tst_dimming.moc"
