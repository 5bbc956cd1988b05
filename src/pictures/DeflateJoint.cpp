#include "pictures/DeflateJoint.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <memory>

namespace brindlecam::DeflateJoint {

namespace {

constexpr int kBareDeflate = -15;       // neither header nor checksum, the largest window
constexpr int kAtBlockEnd = 128;        // of z_stream::data_type
constexpr int kUnusedBits = 7;          // of z_stream::data_type: bits of the last byte taken
constexpr std::size_t kByte = 8;        // bits
constexpr std::size_t kBlockHeader = 3; // bits: the mark of the last block, and its kind
constexpr std::size_t kScratch = std::size_t{64} << 10;

struct ReaderEnd {
    void operator()(z_stream* reader) const { inflateEnd(reader); }
};

/// Reads to the end of a block: where that is, in bits from the beginning.
std::optional<std::size_t> readBlock(z_stream& reader, std::span<const std::uint8_t> stream,
                                     std::span<std::uint8_t> scratch)
{
    do {
        reader.next_out = scratch.data();
        reader.avail_out = static_cast<uInt>(scratch.size());
        const int status = inflate(&reader, Z_BLOCK);
        // Who takes no byte and gives none may have come to the end all the same.
        if (status != Z_OK && !(status == Z_BUF_ERROR && (reader.data_type & kAtBlockEnd) != 0))
            return std::nullopt;
    } while ((reader.data_type & kAtBlockEnd) == 0);
    const auto taken = static_cast<std::size_t>(reader.next_in - stream.data());
    return taken * kByte - static_cast<std::size_t>(reader.data_type & kUnusedBits);
}

/// The reader, too, is told that the block which begins there is not the last one.
bool takeMark(z_stream& reader, std::span<std::uint8_t> stream, std::size_t bit)
{
    std::uint8_t& byte = stream[bit / kByte];
    const auto place = static_cast<int>(bit % kByte);
    byte &= static_cast<std::uint8_t>(~(1U << place));
    // It has taken that byte already unless the block begins with it.
    return place == 0 ||
           (inflatePrime(&reader, -1, 0) == Z_OK &&
            inflatePrime(&reader, static_cast<int>(kByte) - place, byte >> place) == Z_OK);
}

/// Where the last block ends, in bits from the beginning, which it is no longer marked to be.
std::optional<std::size_t> unmark(std::span<std::uint8_t> stream)
{
    z_stream reader{};
    reader.next_in = stream.data();
    reader.avail_in = static_cast<uInt>(stream.size());
    if (inflateInit2(&reader, kBareDeflate) != Z_OK)
        return std::nullopt;
    const std::unique_ptr<z_stream, ReaderEnd> end(&reader);
    const auto scratch = std::make_unique_for_overwrite<std::uint8_t[]>(kScratch);
    std::size_t bit = 0;
    for (;;) {
        if (bit / kByte >= stream.size())
            return std::nullopt;
        const bool isLast = ((stream[bit / kByte] >> bit % kByte) & 1U) != 0;
        if (isLast && !takeMark(reader, stream, bit))
            return std::nullopt;
        const auto next = readBlock(reader, stream, {scratch.get(), kScratch});
        if (!next || isLast)
            return next;
        bit = *next;
    }
}

} // namespace

std::optional<std::size_t> letGoOn(std::span<std::uint8_t> room, std::size_t size)
{
    if (size == 0 || size + kBytes > room.size())
        return std::nullopt;
    const auto bit = unmark(room.first(size));
    if (!bit)
        return std::nullopt;
    // An empty block of bytes as they are: its header, what is left of that byte, a length of zero
    // and the same inverted. What the stream leaves of its last byte is zeros, as the header is.
    constexpr std::array<std::uint8_t, 4> kNoLength{0x00, 0x00, 0xff, 0xff};
    const std::size_t header = (*bit + kBlockHeader + kByte - 1) / kByte;
    std::fill(room.begin() + static_cast<std::ptrdiff_t>(size),
              room.begin() + static_cast<std::ptrdiff_t>(header), std::uint8_t{0});
    std::ranges::copy(kNoLength, room.begin() + static_cast<std::ptrdiff_t>(header));
    return header + kNoLength.size();
}

} // namespace brindlecam::DeflateJoint
