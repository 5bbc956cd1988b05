#include "pictures/PngChunks.h"

#include <QtEndian>

#include <libdeflate.h>

#include <limits>
#include <memory>

namespace brindlecam {

namespace {

constexpr char kSignature[] = "\x89PNG\r\n\x1a\n";
constexpr std::size_t kLongestChunk = std::numeric_limits<std::int32_t>::max();
constexpr qsizetype kChunkTypeBytes = 4;
constexpr char kPerMetre = 1;

struct CompressorDeleter {
    void operator()(libdeflate_compressor* compressor) const
    {
        libdeflate_free_compressor(compressor);
    }
};
using Compressor = std::unique_ptr<libdeflate_compressor, CompressorDeleter>;

QByteArray bigEndian(std::uint32_t number)
{
    QByteArray bytes(sizeof number, Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

} // namespace

int PngLayout::bitsPerPixel() const
{
    switch (colour) {
    case Colour::grey:
    case Colour::palette:
        return depth;
    case Colour::rgb:
        return 3 * depth;
    case Colour::rgba:
        return 4 * depth;
    }
    Q_UNREACHABLE();
}

std::size_t PngLayout::rowBytes(int width) const
{
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bitsPerPixel()) + 7) / 8;
}

PngChunks::PngChunks(QSize pixelSize, PngLayout layout, int dotsPerMetre)
    : m_bytes(kSignature, sizeof kSignature - 1)
{
    QByteArray header = bigEndian(static_cast<std::uint32_t>(pixelSize.width())) +
                        bigEndian(static_cast<std::uint32_t>(pixelSize.height()));
    header += static_cast<char>(layout.depth);
    header += static_cast<char>(layout.colour);
    header += QByteArray(3, '\0'); // compression, filtering, interlacing: the only or plain ones
    add("IHDR", header);

    const QByteArray density = bigEndian(static_cast<std::uint32_t>(dotsPerMetre));
    add("pHYs", density + density + kPerMetre);
}

void PngChunks::addPalette(std::span<const std::uint32_t> argbColours)
{
    QByteArray colours;
    QByteArray alphas;
    qsizetype translucent = 0;
    for (const std::uint32_t colour : argbColours) {
        colours += static_cast<char>(colour >> 16);
        colours += static_cast<char>(colour >> 8);
        colours += static_cast<char>(colour);
        alphas += static_cast<char>(colour >> 24);
        if (colour >> 24 != 0xff)
            translucent = alphas.size();
    }
    add("PLTE", colours);
    if (translucent > 0)
        add("tRNS", alphas.first(translucent));
}

bool PngChunks::addRows(std::span<const std::uint8_t> rows, int level)
{
    const Compressor compressor(libdeflate_alloc_compressor(level));
    if (!compressor)
        return false;
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), rows.size());
    if (bound > kLongestChunk)
        return false;

    // The compressor writes straight into the file; what it leaves unused is never touched memory.
    addNumber(0);
    const qsizetype type = m_bytes.size();
    m_bytes += "IDAT";
    const qsizetype content = m_bytes.size();
    m_bytes.resize(content + static_cast<qsizetype>(bound));
    const std::size_t size = libdeflate_zlib_compress(compressor.get(), rows.data(), rows.size(),
                                                      m_bytes.data() + content, bound);
    if (size == 0)
        return false;
    m_bytes.resize(content + static_cast<qsizetype>(size));
    closeChunk(type);
    return true;
}

QByteArray PngChunks::finish() &&
{
    add("IEND", {});
    m_bytes.squeeze();
    return std::move(m_bytes);
}

void PngChunks::add(const char* type, const QByteArray& content)
{
    addNumber(0);
    const qsizetype typeOffset = m_bytes.size();
    m_bytes += type;
    m_bytes += content;
    closeChunk(typeOffset);
}

void PngChunks::addNumber(std::uint32_t number)
{
    m_bytes += bigEndian(number);
}

void PngChunks::closeChunk(qsizetype typeOffset)
{
    const qsizetype covered = m_bytes.size() - typeOffset;
    const auto length = static_cast<std::uint32_t>(covered - kChunkTypeBytes);
    qToBigEndian(length, m_bytes.data() + typeOffset - static_cast<qsizetype>(sizeof length));
    addNumber(
        libdeflate_crc32(0, m_bytes.constData() + typeOffset, static_cast<std::size_t>(covered)));
}

} // namespace brindlecam
