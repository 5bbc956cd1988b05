#pragma once

#include <QByteArray>
#include <QSize>

#include <cstdint>
#include <span>

namespace brindlecam {

/// How the pixels of a PNG file are stored.
struct PngLayout {
    enum class Colour : std::uint8_t { grey = 0, rgb = 2, palette = 3, rgba = 6 };
    Colour colour = Colour::rgb;
    int depth = 8; ///< bits per sample: 1, 2, 4 or 8

    [[nodiscard]] int bitsPerPixel() const;
    /// Bytes of one row of `width` pixels, without the filter byte.
    [[nodiscard]] std::size_t rowBytes(int width) const;
};

/// Builds a PNG file chunk by chunk, in the order of the calls.
class PngChunks final {
public:
    /// Signature, IHDR and pHYs.
    PngChunks(QSize pixelSize, PngLayout layout, int dotsPerMetre);

    /// PLTE, and tRNS up to the last translucent colour.
    void addPalette(std::span<const std::uint32_t> argbColours);

    /// IDAT with the rows (filter bytes included) compressed at this libdeflate level; false when
    /// memory runs out or the data is too large for one chunk.
    [[nodiscard]] bool addRows(std::span<const std::uint8_t> rows, int level);

    /// Adds IEND and gives the file away.
    [[nodiscard]] QByteArray finish() &&;

private:
    void add(const char* type, const QByteArray& content);
    void addNumber(std::uint32_t number);
    void closeChunk(qsizetype typeOffset);

    QByteArray m_bytes;
};

} // namespace brindlecam
