#include "platform/linux/x11/PixelBuffer.h"

#include "platform/linux/x11/X11.h"

#include <sys/mman.h>
#include <unistd.h>

namespace brindlecam {

namespace {

uchar* mapped(std::size_t bytes, int flags, int file)
{
    void* const memory = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, flags, file, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<uchar*>(memory);
}

} // namespace

std::unique_ptr<PixelBuffer> PixelBuffer::make(Kind kind, std::size_t bytes,
                                               xcb_connection_t* connection)
{
    if (bytes == 0)
        return nullptr;
    if (kind == Kind::plain) {
        uchar* const data = mapped(bytes, MAP_PRIVATE | MAP_ANONYMOUS, -1);
        if (!data)
            return nullptr;
        // Whole-screen pictures are touched all at once: large pages spare thousands of faults.
        ::madvise(data, bytes, MADV_HUGEPAGE);
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
    ::munmap(m_data, m_size);
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
