#include "long/RowSignature.h"
#include "support/TestCase.h"

#include <algorithm>
#include <random>
#include <vector>

namespace brindlecam {

namespace {

using Bytes = std::vector<std::uint8_t>;
using RowSignature::Kernel;

constexpr int kHeight = 5;
constexpr std::uint8_t kUntouched = 0xa5;

Bytes noise(std::size_t size, unsigned seed)
{
    std::mt19937 random(seed);
    Bytes bytes(size);
    std::ranges::generate(bytes, [&random] { return static_cast<std::uint8_t>(random() >> 8); });
    return bytes;
}

std::size_t frameBytes(int width)
{
    return static_cast<std::size_t>(width) * kHeight * 4;
}

/// The definition, pixel by pixel.
Bytes reference(const std::uint8_t* frame, int width)
{
    Bytes signatures;
    const int usual = width < 16 ? 1 : width / 16;
    for (int y = 0; y < kHeight; ++y) {
        for (int k = 0; k < 16; ++k) {
            const int end = k == 15 ? width : std::min((k + 1) * usual, width);
            std::uint64_t sum = 0;
            std::uint64_t pixels = 0;
            for (int x = k * usual; x < end; ++x) {
                const std::uint8_t* const pixel = frame + (y * width + x) * 4;
                sum += pixel[0] + 2U * pixel[1] + pixel[2];
                ++pixels;
            }
            signatures.push_back(pixels ? static_cast<std::uint8_t>(sum / (4 * pixels)) : 0);
        }
    }
    return signatures;
}

Bytes signatureOf(const std::uint8_t* frame, int width, Kernel kernel)
{
    Bytes signatures(kHeight * RowSignature::kBytes);
    RowSignature::sign(frame, width, kHeight, signatures.data(), kernel);
    return signatures;
}

void addKernelsAndWidths()
{
    QTest::addColumn<Kernel>("kernel");
    QTest::addColumn<int>("width");
    std::vector<int> widths{479, 800, 1599, 1920, 2703, 3840};
    for (int width = 1; width <= 80; ++width)
        widths.push_back(width);
    for (const Kernel kernel : {Kernel::plain, Kernel::ssse3}) {
        if (kernel != Kernel::plain && kernel != RowSignature::bestKernel())
            continue; // not this processor's
        for (const int width : widths)
            QTest::addRow("%s, %d", kernel == Kernel::plain ? "plain" : "ssse3", width)
                << kernel << width;
    }
}

} // namespace

class TestRowSignature final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isTheMeanOfEachStretch_data() { addKernelsAndWidths(); }
    void isTheMeanOfEachStretch()
    {
        QFETCH(const Kernel, kernel);
        QFETCH(const int, width);
        for (unsigned seed = 0; seed < 4; ++seed) {
            // At any address: frames need not be aligned.
            const Bytes frame = noise(frameBytes(width) + seed, seed);
            QCOMPARE(signatureOf(frame.data() + seed, width, kernel),
                     reference(frame.data() + seed, width));
        }
    }

    void sumsOfBrightRowsDoNotOverflow_data() { addKernelsAndWidths(); }
    void sumsOfBrightRowsDoNotOverflow()
    {
        QFETCH(const Kernel, kernel);
        QFETCH(const int, width);
        const Bytes white(frameBytes(width), 255);
        QCOMPARE(signatureOf(white.data(), width, kernel), reference(white.data(), width));
    }

    void copyIsTheFrameMadeOpaque_data() { addKernelsAndWidths(); }
    void copyIsTheFrameMadeOpaque()
    {
        QFETCH(const Kernel, kernel);
        QFETCH(const int, width);
        const Bytes frame = noise(frameBytes(width), 7);
        for (const std::size_t at : {0, 1, 4, 8, 12}) { // wherever the copy lies
            Bytes expected(frame.size() + 64, kUntouched);
            std::ranges::copy(frame, expected.begin() + static_cast<std::ptrdiff_t>(at));
            for (std::size_t i = 3; i < frame.size(); i += 4)
                expected[at + i] = 255;

            Bytes copy(frame.size() + 64, kUntouched);
            Bytes signatures(kHeight * RowSignature::kBytes);
            RowSignature::copyAndSign(frame.data(), width, kHeight, copy.data() + at,
                                      signatures.data(), kernel);
            QCOMPARE(copy, expected);
            QCOMPARE(signatures, reference(frame.data(), width));
        }
    }

    void redAndBlueMayBeInEitherOrder()
    {
        constexpr int kWidth = 150;
        Bytes frame = noise(frameBytes(kWidth), 3);
        const Bytes signatures = signatureOf(frame.data(), kWidth, RowSignature::bestKernel());
        for (std::size_t i = 0; i < frame.size(); i += 4)
            std::swap(frame[i], frame[i + 2]);
        QCOMPARE(signatureOf(frame.data(), kWidth, RowSignature::bestKernel()), signatures);
    }

    void fourthByteIsIgnored()
    {
        constexpr int kWidth = 150;
        Bytes frame = noise(frameBytes(kWidth), 3);
        const Bytes signatures = signatureOf(frame.data(), kWidth, RowSignature::bestKernel());
        for (std::size_t i = 3; i < frame.size(); i += 4)
            frame[i] = 0;
        QCOMPARE(signatureOf(frame.data(), kWidth, RowSignature::bestKernel()), signatures);
    }

    void narrowRowsLeaveStretchesEmpty()
    {
        const Bytes white(frameBytes(3), 255);
        const Bytes signatures = signatureOf(white.data(), 3, RowSignature::bestKernel());
        const Bytes row(signatures.begin(), signatures.begin() + 16);
        QCOMPARE(row, Bytes({255, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    }
};

BRINDLECAM_TEST(TestRowSignature);

} // namespace brindlecam

#include "tst_rowsignature.moc"
