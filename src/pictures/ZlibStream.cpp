#include "pictures/ZlibStream.h"

#include "pictures/DeflateJoint.h"

#include <libdeflate.h>

#ifdef BRINDLECAM_ISAL
#include <isa-l/igzip_lib.h>
#endif

#include <algorithm>
#include <array>
#include <span>
#include <utility>
#include <vector>

namespace brindlecam {

namespace {

/// What grows at the end of some bytes. What it leaves unused is memory that was never touched.
class Tail final {
public:
    explicit Tail(QByteArray& bytes)
        : m_bytes(bytes)
        , m_before(bytes.size())
    {
    }

    [[nodiscard]] std::span<std::uint8_t> room(std::size_t most)
    {
        m_bytes.resize(m_before + static_cast<qsizetype>(most));
        return {reinterpret_cast<std::uint8_t*>(m_bytes.data()) + m_before, most};
    }

    /// Cuts off what was not needed; false when nothing was.
    bool keep(std::size_t written)
    {
        m_bytes.resize(m_before + static_cast<qsizetype>(written));
        return written > 0;
    }

private:
    QByteArray& m_bytes;
    const qsizetype m_before;
};

/// libdeflate takes data at once, whole where that is no more than a screen has. Of a long page a
/// second picture would be kept for it: that is taken in parts, of which one stream is made.
class PartedStream final : public ZlibStream {
public:
    PartedStream(QByteArray& bytes, std::size_t size, Effort effort)
        : m_tail(bytes)
        , m_room(m_tail.room(bound(size)))
        , m_effort(effort)
        , m_capacity(size <= kAtOnce ? size : kPart)
        , m_data(std::make_unique_for_overwrite<std::uint8_t[]>(m_capacity))
    {
        std::ranges::copy(kHeader, m_room.begin());
    }

    std::uint8_t* room(std::size_t count) override
    {
        if (m_size + count > m_capacity) {
            m_whole = m_whole && (m_size == 0 || (compress(m_guess) && joinNext()));
            m_size = 0;
            if (count > m_capacity) {
                m_data = std::make_unique_for_overwrite<std::uint8_t[]>(count);
                m_capacity = count;
            }
        }
        return m_data.get() + std::exchange(m_size, m_size + count);
    }

    static std::size_t bound(std::size_t size)
    {
        constexpr std::size_t kEnds = 64; // of a part: more than enough
        // A part may end early, where the next piece does not fit, but two of them are more than
        // one.
        const std::size_t parts = 1 + 2 * size / kPart;
        return libdeflate_deflate_compress_bound(nullptr, size) + parts * kEnds + kHeader.size() +
               kSumBytes;
    }

    bool finish(Content content) override
    {
        if (!m_whole || !compress(content))
            return m_tail.keep(0);
        for (std::size_t i = kSumBytes; i > 0; --i)
            m_room[m_written++] = static_cast<std::uint8_t>(m_sum >> (i - 1) * 8);
        return m_tail.keep(m_written);
    }

private:
    struct CompressorDeleter {
        void operator()(libdeflate_compressor* compressor) const
        {
            libdeflate_free_compressor(compressor);
        }
    };
    using Compressor = std::unique_ptr<libdeflate_compressor, CompressorDeleter>;

    static constexpr std::size_t kAtOnce = std::size_t{32} << 20; // the rows of 3840 × 2160 pixels
    static constexpr std::size_t kPart = std::size_t{8} << 20;
    static constexpr std::array<std::uint8_t, 2> kHeader{0x78, 0x9c};
    static constexpr std::size_t kSumBytes = 4;

    // Level 2 gives most of what can be had for the least time; level 6 is where drawn pictures
    // stop getting much smaller. Photographs gain 2 % from level 5 to 6 and pay twice the time.
    [[nodiscard]] int level(Content content) const
    {
        if (m_effort == Effort::quick)
            return 2;
        return content == Content::drawn ? 6 : 5;
    }

    /// Appends what is there as a stream of its own.
    [[nodiscard]] bool compress(Content content)
    {
        const Compressor compressor(libdeflate_alloc_compressor(level(content)));
        if (!compressor)
            return false;
        const auto free = m_room.subspan(m_written);
        m_last = libdeflate_deflate_compress(compressor.get(), m_data.get(), m_size, free.data(),
                                             free.size());
        m_sum = libdeflate_adler32(m_sum, m_data.get(), m_size);
        m_guess = m_last * 2 > m_size ? Content::photographed : Content::drawn;
        m_written += m_last;
        return m_last > 0;
    }

    [[nodiscard]] bool joinNext()
    {
        const auto joined = DeflateJoint::letGoOn(m_room.subspan(m_written - m_last), m_last);
        m_written += joined.value_or(m_last) - m_last;
        return joined.has_value();
    }

    Tail m_tail;
    const std::span<std::uint8_t> m_room;
    const Effort m_effort;
    std::size_t m_capacity;
    std::unique_ptr<std::uint8_t[]> m_data;
    std::size_t m_size = 0;                 ///< of what is there
    std::size_t m_written = kHeader.size(); ///< bytes of the stream
    std::size_t m_last = 0;                 ///< bytes of the last part's
    Content m_guess = Content::drawn;       ///< what the next part is like: as the last one shrank
    std::uint32_t m_sum = 1;
    bool m_whole = true;
};

#ifdef BRINDLECAM_ISAL

/// ISA-L takes the data block by block: it stays in the processor's cache, and no memory for all of
/// it is touched for the first time.
class BlockStream final : public ZlibStream {
public:
    BlockStream(QByteArray& bytes, std::size_t size)
        : m_tail(bytes)
        , m_tables(std::make_unique_for_overwrite<std::uint8_t[]>(ISAL_DEF_LVL2_DEFAULT))
        , m_block(kBlock)
    {
        const auto room = m_tail.room(bound(size));
        isal_deflate_init(&m_stream);
        m_stream.level = 2; // a tenth larger than libdeflate's, a fifth where much is drawn
        m_stream.level_buf = m_tables.get();
        m_stream.level_buf_size = ISAL_DEF_LVL2_DEFAULT;
        m_stream.gzip_flag = IGZIP_ZLIB;
        m_stream.next_out = room.data();
        m_stream.avail_out = static_cast<std::uint32_t>(room.size());
    }

    /// What cannot be compressed is stored, in blocks with a few bytes each: more than enough.
    static std::size_t bound(std::size_t size)
    {
        constexpr std::size_t kSmallestStored = 4096;
        constexpr std::size_t kHeaders = 64;
        return size + size / kSmallestStored * kHeaders + kSmallestStored;
    }

    std::uint8_t* room(std::size_t count) override
    {
        if (m_filled + count > m_block.size()) {
            compress();
            m_block.resize(std::max(count, kBlock));
        }
        return m_block.data() + std::exchange(m_filled, m_filled + count);
    }

    bool finish(Content) override
    {
        m_stream.end_of_stream = 1;
        compress();
        m_whole = m_whole && m_stream.internal_state.state == ZSTATE_END;
        return m_tail.keep(m_whole ? m_stream.total_out : 0);
    }

private:
    static constexpr std::size_t kBlock = 256 * 1024;

    void compress()
    {
        m_stream.next_in = m_block.data();
        m_stream.avail_in = static_cast<std::uint32_t>(m_filled);
        m_whole = m_whole && isal_deflate(&m_stream) == COMP_OK && m_stream.avail_in == 0;
        m_filled = 0;
    }

    Tail m_tail;
    isal_zstream m_stream;
    const std::unique_ptr<std::uint8_t[]> m_tables;
    std::vector<std::uint8_t> m_block;
    std::size_t m_filled = 0;
    bool m_whole = true;
};

#endif

} // namespace

std::unique_ptr<ZlibStream> ZlibStream::onto(QByteArray& bytes, std::size_t size, Effort effort,
                                             std::size_t most)
{
#ifdef BRINDLECAM_ISAL
    if (effort == Effort::quick && BlockStream::bound(size) <= most)
        return std::make_unique<BlockStream>(bytes, size);
#endif
    if (PartedStream::bound(size) <= most)
        return std::make_unique<PartedStream>(bytes, size, effort);
    return nullptr;
}

} // namespace brindlecam
