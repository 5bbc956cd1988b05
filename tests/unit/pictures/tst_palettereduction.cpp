#include "pictures/PaletteReduction.h"
#include "support/TestCase.h"

#include <vector>

namespace brindlecam {

class TestPaletteReduction final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void coloursKeepTheOrderOfTheirFirstPixel()
    {
        QImage image(3, 1, QImage::Format_RGB32);
        image.setPixel(0, 0, qRgb(9, 0, 0));
        image.setPixel(1, 0, qRgb(0, 9, 0));
        image.setPixel(2, 0, qRgb(9, 0, 0));
        const auto reduction = PaletteReduction::of(image);
        QVERIFY(reduction);
        const std::vector<quint32> colours(reduction->colours().begin(),
                                           reduction->colours().end());
        QCOMPARE(colours, (std::vector<quint32>{qRgb(9, 0, 0), qRgb(0, 9, 0)}));
    }

    void unusedByteOfOpaquePicturesMakesNoNewColours()
    {
        QImage image(2, 1, QImage::Format_RGB32);
        auto* row = reinterpret_cast<quint32*>(image.scanLine(0));
        row[0] = 0x00112233;
        row[1] = 0xff112233;
        const auto reduction = PaletteReduction::of(image);
        QVERIFY(reduction);
        QCOMPARE(reduction->colours().size(), std::size_t{1});
    }

    void samplesArePackedFromTheHighBitsOn()
    {
        QImage image(10, 1, QImage::Format_RGB32);
        for (int x = 0; x < 10; ++x)
            image.setPixel(x, 0, x == 1 || x == 9 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
        const auto reduction = PaletteReduction::of(image);
        QVERIFY(reduction);
        QCOMPARE(reduction->layout().depth, 1);
        std::array<std::uint8_t, 2> packed{};
        reduction->packRow(reinterpret_cast<const quint32*>(image.constScanLine(0)), 10,
                           packed.data());
        QCOMPARE(packed, (std::array<std::uint8_t, 2>{0b01000000, 0b01000000}));
    }

    void greysThatWouldNeedMoreBitsThanIndicesBecomeAPalette()
    {
        QImage image(2, 1, QImage::Format_RGB32);
        image.setPixel(0, 0, qRgb(10, 10, 10));
        image.setPixel(1, 0, qRgb(200, 200, 200));
        const auto reduction = PaletteReduction::of(image);
        QVERIFY(reduction);
        QCOMPARE(reduction->layout().colour, PngLayout::Colour::palette);
        QCOMPARE(reduction->layout().depth, 1);
    }
};

BRINDLECAM_TEST(TestPaletteReduction);

} // namespace brindlecam

#include "tst_palettereduction.moc"
