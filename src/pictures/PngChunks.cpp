#include "pictures/PngChunks.h"

#include <QtEndian>

#include <libdeflate.h>

#include <limits>
#include <utility>

namespace brindlecam {

namespace {

constexpr char kSignature[] = "\x89PNG\r\n\x1a\n";
constexpr std::size_t kLongestChunk = std::numeric_limits<std::int32_t>::max();
constexpr qsizetype kChunkTypeBytes = 4;
constexpr char kPerMetre = 1;

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

ZlibStream* PngChunks::beginRows(std::size_t size, ZlibStream::Effort effort)
{
    addNumber(0);
    m_rowsType = m_bytes.size();
    m_bytes += "IDAT";
    m_rows = ZlibStream::onto(m_bytes, size, effort, kLongestChunk);
    return m_rows.get();
}

bool PngChunks::endRows(ZlibStream::Content content)
{
    if (!std::exchange(m_rows, nullptr)->finish(content))
        return false;
    closeChunk(m_rowsType);
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
