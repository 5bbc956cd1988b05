#include "pictures/PngWriter.h"

#include "pictures/PaletteReduction.h"
#include "pictures/PlainPicture.h"
#include "pictures/PngChunks.h"
#include "pictures/RowFilter.h"
#include "pictures/RowPacking.h"

#include <memory>
#include <new>

namespace brindlecam::PngWriter {

namespace {

// Levels of libdeflate. Level 2 gives most of what can be had for the least time; level 6 is where
// drawn pictures stop getting much smaller. Photographs gain 2 % from level 5 to 6 and pay twice
// the time.
constexpr int kQuickLevel = 2;
constexpr int kSmallLevel = 6;
constexpr int kSmallPhotoLevel = 5;
constexpr int kRowsBetweenQuestions = 64;

const std::uint32_t* pixelsOf(const QImage& picture, int y)
{
    return reinterpret_cast<const std::uint32_t*>(picture.constScanLine(y));
}

/// One encoding from start to end.
class Encoding final {
public:
    Encoding(const QImage& picture, const Options& options)
        : m_picture(picture)
        , m_options(options)
        , m_reduction(PaletteReduction::of(picture))
    {
        if (m_reduction)
            m_layout = m_reduction->layout();
        else if (picture.format() != QImage::Format_RGB32)
            m_layout.colour = PngLayout::Colour::rgba;
        m_rowBytes = m_layout.rowBytes(picture.width());
    }

    QByteArray run()
    {
        const std::size_t size = (m_rowBytes + 1) * static_cast<std::size_t>(m_picture.height());
        const auto rows = std::make_unique_for_overwrite<std::uint8_t[]>(size);
        if (!filterRows(rows.get()) || cancelled())
            return {};

        PngChunks file(m_picture.size(), m_layout, m_options.dotsPerMetre);
        if (m_layout.colour == PngLayout::Colour::palette)
            file.addPalette(m_reduction->colours());
        if (!file.addRows({rows.get(), size}, level()) || cancelled())
            return {};
        return std::move(file).finish();
    }

private:
    [[nodiscard]] bool cancelled() const { return m_options.cancelled && m_options.cancelled(); }

    [[nodiscard]] int level() const
    {
        if (m_options.effort == Effort::quick)
            return kQuickLevel;
        return m_predictedRows * 2 > m_picture.height() ? kSmallPhotoLevel : kSmallLevel;
    }

    bool filterRows(std::uint8_t* target)
    {
        // Neighbouring indices say nothing about each other, and packed samples do not line up.
        const bool predictable =
            m_layout.depth == 8 && m_layout.colour != PngLayout::Colour::palette;
        RowFilter filter(m_rowBytes, static_cast<std::size_t>(m_layout.bitsPerPixel() + 7) / 8);
        for (int y = 0; y < m_picture.height(); ++y, target += m_rowBytes + 1) {
            if (y % kRowsBetweenQuestions == 0 && cancelled())
                return false;
            if (predictable) {
                packRow(y, filter.nextRow());
                filter.write(target);
                m_predictedRows += *target != static_cast<std::uint8_t>(RowFilter::Kind::none);
            } else {
                *target = static_cast<std::uint8_t>(RowFilter::Kind::none);
                packRow(y, target + 1);
            }
        }
        return true;
    }

    void packRow(int y, std::uint8_t* target) const
    {
        const std::uint32_t* pixels = pixelsOf(m_picture, y);
        if (m_reduction)
            m_reduction->packRow(pixels, m_picture.width(), target);
        else if (m_layout.colour == PngLayout::Colour::rgb)
            RowPacking::packRgb(pixels, m_picture.width(), target);
        else
            RowPacking::packRgba(pixels, m_picture.width(), target);
    }

    const QImage& m_picture;
    const Options& m_options;
    std::optional<PaletteReduction> m_reduction;
    PngLayout m_layout;
    std::size_t m_rowBytes = 0;
    int m_predictedRows = 0; ///< rows that were not best left as they are: a photograph has many
};

} // namespace

QByteArray encode(const QImage& image, const Options& options)
try {
    if (image.isNull() || (options.cancelled && options.cancelled()))
        return {};
    const QImage picture = plainPicture(image);
    if (picture.isNull())
        return {};
    return Encoding(picture, options).run();
} catch (const std::bad_alloc&) {
    return {};
}

} // namespace brindlecam::PngWriter
