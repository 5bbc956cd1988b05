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
        PngChunks file(m_picture.size(), m_layout, m_options.dotsPerMetre);
        if (m_layout.colour == PngLayout::Colour::palette)
            file.addPalette(m_reduction->colours());
        ZlibStream* const rows = file.beginRows(
            (m_rowBytes + 1) * static_cast<std::size_t>(m_picture.height()), m_options.effort);
        if (!rows || !filterRows(*rows) || !file.endRows(content()) || cancelled())
            return {};
        return std::move(file).finish();
    }

private:
    [[nodiscard]] bool cancelled() const { return m_options.cancelled && m_options.cancelled(); }

    [[nodiscard]] ZlibStream::Content content() const
    {
        return m_predictedRows * 2 > m_picture.height() ? ZlibStream::Content::photographed
                                                        : ZlibStream::Content::drawn;
    }

    bool filterRows(ZlibStream& rows)
    {
        // Neighbouring indices say nothing about each other, and packed samples do not line up.
        const bool predictable =
            m_layout.depth == 8 && m_layout.colour != PngLayout::Colour::palette;
        RowFilter filter(m_rowBytes, static_cast<std::size_t>(m_layout.bitsPerPixel() + 7) / 8);
        for (int y = 0; y < m_picture.height(); ++y) {
            if (y % kRowsBetweenQuestions == 0 && cancelled())
                return false;
            std::uint8_t* const target = rows.room(m_rowBytes + 1);
            if (predictable) {
                packRow(y, filter.nextRow());
                filter.write(target);
                m_predictedRows += *target != static_cast<std::uint8_t>(RowFilter::Kind::none);
            } else {
                *target = static_cast<std::uint8_t>(RowFilter::Kind::none);
                packRow(y, target + 1);
            }
        }
        return !cancelled();
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
