#pragma once

#include "pictures/ZlibStream.h"

#include <QByteArray>
#include <QSize>

#include <cstddef>
#include <cstdint>
#include <memory>
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
    PngChunks(const PngChunks&) = delete; // rows on their way know where the file is
    PngChunks& operator=(const PngChunks&) = delete;

    /// PLTE, and tRNS up to the last translucent colour.
    void addPalette(std::span<const std::uint32_t> argbColours);

    /// Begins IDAT for rows of so many bytes in all, filter bytes included. Null when that is too
    /// much for one chunk; else ours, to be filled before endRows().
    [[nodiscard]] ZlibStream* beginRows(std::size_t size, ZlibStream::Effort effort);
    /// False when memory runs out.
    [[nodiscard]] bool endRows(ZlibStream::Content content);

    /// Adds IEND and gives the file away.
    [[nodiscard]] QByteArray finish() &&;

private:
    void add(const char* type, const QByteArray& content);
    void addNumber(std::uint32_t number);
    void closeChunk(qsizetype typeOffset);

    QByteArray m_bytes;
    qsizetype m_rowsType = 0;
    std::unique_ptr<ZlibStream> m_rows; ///< while IDAT is open
};

} // namespace brindlecam
