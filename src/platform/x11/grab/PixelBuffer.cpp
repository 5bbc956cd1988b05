#include "platform/x11/grab/PixelBuffer.h"

#include "platform/x11/connection/X11.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <utility>

namespace brindlecam {

namespace {

constexpr std::size_t kLargePage = 2 << 20;

uchar* mapped(std::size_t bytes, int flags, int file)
{
    void* const memory = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, flags, file, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<uchar*>(memory);
}

/// What a picture of plain memory takes: whole large pages, unless it is smaller than one.
std::size_t plainBytes(std::size_t bytes)
{
    return bytes < kLargePage ? bytes : (bytes + kLargePage - 1) / kLargePage * kLargePage;
}

// Whole-screen pictures are touched all at once: large pages spare thousands of faults. They come
// only where all of one is ours; at the ends of a mapping that begins anywhere they are small.
uchar* mappedPlain(std::size_t bytes)
{
    constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS;
    if (bytes < kLargePage)
        return mapped(bytes, kFlags, -1);
    const std::size_t whole = plainBytes(bytes);
    uchar* const wide = mapped(whole + kLargePage, kFlags, -1);
    if (!wide)
        return nullptr;
    const std::size_t past = reinterpret_cast<std::uintptr_t>(wide) % kLargePage;
    const std::size_t before = past == 0 ? 0 : kLargePage - past;
    uchar* const data = wide + before;
    if (before > 0)
        ::munmap(wide, before);
    ::munmap(data + whole, kLargePage - before);
    ::madvise(data, whole, MADV_HUGEPAGE);
    return data;
}

} // namespace

bool PixelBuffer::canShare(xcb_connection_t* connection)
{
    const auto* const extension = xcb_get_extension_data(connection, &xcb_shm_id);
    if (!extension || !extension->present)
        return false;
    const x11::Owned<xcb_shm_query_version_reply_t> version(
        xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr));
    // Descriptors are accepted since 1.2.
    using Version = std::pair<int, int>;
    return version && Version(version->major_version, version->minor_version) >= Version(1, 2);
}

std::unique_ptr<PixelBuffer> PixelBuffer::make(Kind kind, std::size_t bytes,
                                               xcb_connection_t* connection)
{
    if (bytes == 0)
        return nullptr;
    if (kind == Kind::plain) {
        uchar* const data = mappedPlain(bytes);
        if (!data)
            return nullptr;
        return std::unique_ptr<PixelBuffer>(new PixelBuffer(kind, data, bytes));
    }

    // A descriptor instead of a SysV key: nothing is left behind by a crash, nobody else can attach
    // it, and it works across containers.
    const int file = ::memfd_create("brindlecam-pixels", MFD_CLOEXEC);
    if (file < 0)
        return nullptr;
    uchar* const data = ::ftruncate(file, static_cast<off_t>(bytes)) == 0
                            ? mapped(bytes, MAP_SHARED, file)
                            : nullptr;
    if (!data) {
        ::close(file);
        return nullptr;
    }
    std::unique_ptr<PixelBuffer> buffer(new PixelBuffer(kind, data, bytes));
    return buffer->attach(connection, file) ? std::move(buffer) : nullptr;
}

PixelBuffer::PixelBuffer(Kind kind, uchar* data, std::size_t size)
    : m_kind(kind)
    , m_data(data)
    , m_size(size)
{
}

PixelBuffer::~PixelBuffer()
{
    if (m_connection) {
        xcb_shm_detach(m_connection, m_segment);
        xcb_flush(m_connection);
    }
    ::munmap(m_data, m_kind == Kind::plain ? plainBytes(m_size) : m_size);
}

bool PixelBuffer::attach(xcb_connection_t* connection, int file)
{
    m_segment = xcb_generate_id(connection);
    const auto cookie = xcb_shm_attach_fd_checked(connection, m_segment, file, 0);
    const x11::Owned<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
    if (error)
        return false;
    m_connection = connection;
    return true;
}

} // namespace brindlecam
