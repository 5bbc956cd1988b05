#include "pictures/ZlibStream.h"

#include <libdeflate.h>

#ifdef BRINDLECAM_ISAL
#include <isa-l/igzip_lib.h>
#endif

#include <algorithm>
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

/// libdeflate takes all the data at once.
class WholeStream final : public ZlibStream {
public:
    WholeStream(QByteArray& bytes, std::size_t size, Effort effort)
        : m_tail(bytes)
        , m_effort(effort)
        , m_data(std::make_unique_for_overwrite<std::uint8_t[]>(size))
    {
    }

    std::uint8_t* room(std::size_t count) override
    {
        return m_data.get() + std::exchange(m_size, m_size + count);
    }

    static std::size_t bound(std::size_t size)
    {
        return libdeflate_zlib_compress_bound(nullptr, size);
    }

    bool finish(Content content) override
    {
        const Compressor compressor(libdeflate_alloc_compressor(level(content)));
        if (!compressor)
            return false;
        const auto room = m_tail.room(bound(m_size));
        return m_tail.keep(libdeflate_zlib_compress(compressor.get(), m_data.get(), m_size,
                                                    room.data(), room.size()));
    }

private:
    struct CompressorDeleter {
        void operator()(libdeflate_compressor* compressor) const
        {
            libdeflate_free_compressor(compressor);
        }
    };
    using Compressor = std::unique_ptr<libdeflate_compressor, CompressorDeleter>;

    // Level 2 gives most of what can be had for the least time; level 6 is where drawn pictures
    // stop getting much smaller. Photographs gain 2 % from level 5 to 6 and pay twice the time.
    [[nodiscard]] int level(Content content) const
    {
        if (m_effort == Effort::quick)
            return 2;
        return content == Content::drawn ? 6 : 5;
    }

    Tail m_tail;
    const Effort m_effort;
    const std::unique_ptr<std::uint8_t[]> m_data;
    std::size_t m_size = 0;
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
    if (WholeStream::bound(size) <= most)
        return std::make_unique<WholeStream>(bytes, size, effort);
    return nullptr;
}

} // namespace brindlecam
