#pragma once

#include <QtGlobal>

#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <cstddef>
#include <memory>

namespace brindlecam {

/// Page-aligned memory for pixels: plain memory of ours, or memory that the X server reads and
/// writes, too (MIT-SHM). Owns both the mapping and the server's side of it. Any thread, one
/// at a time.
class PixelBuffer final {
public:
    enum class Kind { plain, shared };

    /// Whether the server takes memory by its descriptor. Round trips.
    [[nodiscard]] static bool canShare(xcb_connection_t* connection);

    /// Null when there is no memory, or when the server can't share memory with us (it runs on
    /// another machine). Shared memory takes a round trip.
    [[nodiscard]] static std::unique_ptr<PixelBuffer> make(Kind kind, std::size_t bytes,
                                                           xcb_connection_t* connection);
    ~PixelBuffer();
    PixelBuffer(const PixelBuffer&) = delete;
    PixelBuffer& operator=(const PixelBuffer&) = delete;

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] uchar* data() const { return m_data; }
    [[nodiscard]] std::size_t size() const { return m_size; }
    /// The server's name for it; only for shared memory.
    [[nodiscard]] xcb_shm_seg_t segment() const { return m_segment; }

    /// The connection is gone or about to go, and the server's side with it: the destructor only
    /// unmaps.
    void forgetServer() { m_connection = nullptr; }

private:
    PixelBuffer(Kind kind, uchar* data, std::size_t size);

    /// Offers the memory behind the file to the server, which takes the descriptor over.
    bool attach(xcb_connection_t* connection, int file);

    const Kind m_kind;
    uchar* const m_data;
    const std::size_t m_size;
    xcb_connection_t* m_connection = nullptr;
    xcb_shm_seg_t m_segment = XCB_NONE;
};

} // namespace brindlecam
