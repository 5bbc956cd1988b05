#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Promise.h"
#include "pictures/PngWriter.h"
#include "pictures/TiffWriter.h"
#include "unit/pictures/ForeignReaders.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <set>

namespace brindlecam {

namespace {

constexpr int kMostColours = 256;
constexpr int kMostDotsPerMetre = 20000;
constexpr int kMostQuestions = 6;
constexpr qsizetype kColourTypeAt = 25; // the byte of a PNG file that says how pixels are stored
constexpr char kGrey = 0;
constexpr char kRgb = 2;
constexpr char kPalette = 3;

constexpr std::array kFormats{QImage::Format_RGB32,
                              QImage::Format_ARGB32,
                              QImage::Format_ARGB32_Premultiplied,
                              QImage::Format_RGB888,
                              QImage::Format_RGB16,
                              QImage::Format_Grayscale8,
                              QImage::Format_Indexed8,
                              QImage::Format_Mono,
                              QImage::Format_MonoLSB,
                              QImage::Format_RGBA8888,
                              QImage::Format_RGBX8888,
                              QImage::Format_RGB30,
                              QImage::Format_RGBA64,
                              QImage::Format_Alpha8,
                              QImage::Format_RGBA64_Premultiplied,
                              QImage::Format_ARGB4444_Premultiplied};

/// What a picture is filled with.
enum class Fill { noise, gradient, fewColours, given, boldColours };

class Pattern final {
public:
    explicit Pattern(fuzz::FuzzInput& input)
        : m_fill(static_cast<Fill>(input.integer(0, 4)))
        , m_random(static_cast<std::uint32_t>(input.number(0, UINT32_MAX)))
        , m_colours(input.integer(1, kMostColours + 40))
        , m_opaque(input.flag())
        , m_given(input.rest())
    {
    }

    QRgb pixel(int x, int y, int index)
    {
        const QRgb colour = anyPixel(x, y, index);
        return m_opaque ? colour | 0xff000000U : colour;
    }

private:
    QRgb anyPixel(int x, int y, int index)
    {
        m_random = m_random * 1664525U + 1013904223U;
        switch (m_fill) {
        case Fill::noise:
            return m_random ^ m_random >> 16;
        case Fill::gradient:
            return qRgba(x * 3, y * 5, x + y, 255 - y);
        case Fill::fewColours:
            return static_cast<QRgb>(index % m_colours) * 2654435761U;
        case Fill::given:
            return given(index);
        case Fill::boldColours:
            break;
        }
        return (m_random >> 29) * 0x24242424U;
    }

    [[nodiscard]] QRgb given(int index) const
    {
        QRgb colour = 0;
        for (int i = 0; i < 4 && !m_given.isEmpty(); ++i)
            colour = colour << 8 | static_cast<uchar>(m_given[(index * 4 + i) % m_given.size()]);
        return colour;
    }

    Fill m_fill;
    std::uint32_t m_random;
    int m_colours;
    bool m_opaque;
    QByteArray m_given;
};

QImage picture(fuzz::FuzzInput& input)
{
    const int width = input.integer(1, input.flag() ? 9 : 300);
    const int height = input.integer(1, input.flag() ? 5 : 80);
    const QImage::Format format = input.oneOf(kFormats);
    const bool cut = input.flag();
    Pattern pattern(input);
    QImage drawn(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        auto* row = reinterpret_cast<QRgb*>(drawn.scanLine(y));
        for (int x = 0; x < width; ++x)
            row[x] = pattern.pixel(x, y, y * width + x);
    }
    const QImage converted = drawn.convertToFormat(format);
    // Rows that do not begin where the one before ends.
    return cut && width > 2 ? converted.copy(1, 0, width - 2, height) : converted;
}

std::set<QRgb> coloursOf(const QImage& argb)
{
    std::set<QRgb> colours;
    for (int y = 0; y < argb.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(argb.constScanLine(y));
        colours.insert(row, row + argb.width());
    }
    return colours;
}

/// Opaque pictures have no alpha, few colours are a palette or greys.
void checkStored(const QByteArray& png, const QImage& argb)
{
    const std::set<QRgb> colours = coloursOf(argb);
    const bool opaque = std::all_of(colours.begin(), colours.end(),
                                    [](QRgb colour) { return qAlpha(colour) == 255; });
    const char colourType = png.at(kColourTypeAt);
    const bool reduced = colourType == kPalette || colourType == kGrey;
    BRINDLECAM_PROMISE(reduced == (colours.size() <= kMostColours));
    if (!reduced)
        BRINDLECAM_PROMISE((colourType == kRgb) == opaque);
}

/// Whether two premultiplied pixels are alike but for what rounding makes of translucent ones.
bool isAlike(QRgb a, QRgb b)
{
    const int most = qAlpha(a) == 255 ? 0 : 1;
    return qAlpha(a) == qAlpha(b) && std::abs(qRed(a) - qRed(b)) <= most &&
           std::abs(qGreen(a) - qGreen(b)) <= most && std::abs(qBlue(a) - qBlue(b)) <= most;
}

/// The format keeps premultiplied pixels, which the image plug-in makes and reads in its own way.
void checkTiff(const QImage& image, const QImage& argb, int dotsPerMetre)
{
    const auto premultiplied = [](const QImage& picture) {
        return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    };
    const QByteArray tiff = TiffWriter::encode(image, dotsPerMetre);
    const QImage read = premultiplied(QImage::fromData(tiff, "TIFF"));
    const QImage expected = premultiplied(argb);
    BRINDLECAM_PROMISE(read.size() == expected.size());
    for (int y = 0; y < read.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(read.constScanLine(y));
        const auto* wanted = reinterpret_cast<const QRgb*>(expected.constScanLine(y));
        BRINDLECAM_PROMISE(std::equal(row, row + read.width(), wanted, isAlike));
    }
}

void checkPng(const QImage& image, const QImage& argb, const PngWriter::Options& options)
{
    const QByteArray png = PngWriter::encode(image, options);
    BRINDLECAM_PROMISE(!png.isEmpty());
    BRINDLECAM_PROMISE(test::ForeignReaders::decodedByLibpng(png) == argb);
    BRINDLECAM_PROMISE(QImage::fromData(png, "PNG").dotsPerMeterX() == options.dotsPerMetre);
    checkStored(png, argb);
}

/// Who changes their mind gets nothing; who does so too late gets the whole picture.
void checkCancelled(const QImage& image, PngWriter::Options options, int patience)
{
    const QByteArray whole = PngWriter::encode(image, options);
    int asked = 0;
    options.cancelled = [&asked, patience] { return ++asked > patience; };
    const QByteArray png = PngWriter::encode(image, options);
    BRINDLECAM_PROMISE(asked > patience ? png.isEmpty() : png == whole);
}

} // namespace

} // namespace brindlecam

/// Small pictures of any format: other people's decoders read the very pixels that were encoded.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace brindlecam;
    fuzz::FuzzInput input(data, size);
    const bool tiff = input.oneIn(8);
    const bool cancels = input.oneIn(8);
    const int patience = input.integer(0, kMostQuestions);
    PngWriter::Options options;
    options.effort = input.flag() ? PngWriter::Effort::quick : PngWriter::Effort::small;
    options.dotsPerMetre = input.integer(1, kMostDotsPerMetre);
    const QImage image = picture(input);
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    if (tiff)
        checkTiff(image, argb, options.dotsPerMetre);
    else if (cancels)
        checkCancelled(image, options, patience);
    else
        checkPng(image, argb, options);
    return 0;
}
