// Covers RowPacking.
#include "PagePainter.h"
#include "pictures/RowFilter.h"
#include "pictures/RowPacking.h"
#include "support/TestCase.h"

#include <cstring>

namespace brindlecam {

namespace {

constexpr std::size_t kBytesPerPixel = 3;

/// How many rows of the picture are left as they are, in percent.
int unfilteredPercent(const QImage& image)
{
    const auto rowBytes = static_cast<std::size_t>(image.width()) * kBytesPerPixel;
    RowFilter filter(rowBytes, kBytesPerPixel);
    std::vector<std::uint8_t> target(rowBytes + 1);
    int unfiltered = 0;
    for (int y = 0; y < image.height(); ++y) {
        RowPacking::packRgb(reinterpret_cast<const std::uint32_t*>(image.constScanLine(y)),
                            image.width(), filter.nextRow());
        filter.write(target.data());
        unfiltered += target[0] == 0;
    }
    return unfiltered * 100 / image.height();
}

} // namespace

class TestRowFilter final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void interfacesAreLeftAsTheyAre()
    {
        QVERIFY(unfilteredPercent(test::PagePainter::interfacePage({1280, 720})) > 90);
    }

    void photographsArePredicted()
    {
        QVERIFY(unfilteredPercent(test::PagePainter::photoPage({640, 360})) < 10);
    }

    void choiceHoldsForFourRows()
    {
        const QImage image = test::PagePainter::photoPage({200, 120});
        RowFilter filter(600, kBytesPerPixel);
        std::vector<std::uint8_t> target(601);
        std::uint8_t kind = 0;
        for (int y = 0; y < image.height(); ++y) {
            RowPacking::packRgb(reinterpret_cast<const std::uint32_t*>(image.constScanLine(y)), 200,
                                filter.nextRow());
            filter.write(target.data());
            if (y % 4 == 0)
                kind = target[0];
            QCOMPARE(target[0], kind);
        }
    }

    void sameRowAgainFromASlopeLeavesOnlyZeros()
    {
        // The first four rows go by their own look, the fifth finds its like above it.
        RowFilter filter(600, kBytesPerPixel);
        std::vector<std::uint8_t> target(601);
        for (int y = 0; y < 5; ++y) {
            std::uint8_t* row = filter.nextRow();
            for (int i = 0; i < 600; ++i)
                row[i] = static_cast<std::uint8_t>(i * i / 1500);
            filter.write(target.data());
        }
        QCOMPARE(target[0], static_cast<std::uint8_t>(RowFilter::Kind::up));
        QVERIFY(std::all_of(target.begin() + 1, target.end(), [](int byte) { return byte == 0; }));
    }
};

BRINDLECAM_TEST(TestRowFilter);

} // namespace brindlecam

#include "tst_rowfilter.moc"
