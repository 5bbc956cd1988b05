#include "FrameCopy.h"

#include "Eyes.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>

namespace brindlecam::bench {

FrameCopy::FrameCopy(const QString& display, QSize pixels, desktop::WindowId window)
    : m_connection(display)
    , m_pixels(pixels)
    , m_window(static_cast<xcb_window_t>(window))
    , m_bytes(std::size_t(pixels.width()) * std::size_t(pixels.height()) * 4)
{
    const int file = memfd_create("frame", MFD_CLOEXEC);
    if (file < 0 || ftruncate(file, static_cast<off_t>(m_bytes)) != 0)
        qFatal("no shared memory for a frame");
    void* const memory = mmap(nullptr, m_bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED)
        qFatal("no shared memory for a frame");
    m_memory = static_cast<std::uint8_t*>(memory);
    m_segment = xcb_generate_id(m_connection.raw());
    xcb_shm_attach_fd(m_connection.raw(), m_segment, file, 0);
    m_context = xcb_generate_id(m_connection.raw());
    xcb_create_gc(m_connection.raw(), m_context, m_window, 0, nullptr);
    m_connection.sync();
}

FrameCopy::~FrameCopy()
{
    munmap(m_memory, m_bytes);
}

std::vector<double> FrameCopy::grabAndPut(int rounds) const
{
    const auto width = static_cast<std::uint16_t>(m_pixels.width());
    const auto height = static_cast<std::uint16_t>(m_pixels.height());
    std::vector<double> times;
    for (int round = -1; round < rounds; ++round) {
        const auto from = Clock::now();
        const desktop::Owned<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(
            m_connection.raw(),
            xcb_shm_get_image(m_connection.raw(), m_connection.root(), 0, 0, width, height, ~0U,
                              XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment, 0),
            nullptr));
        if (!reply)
            qFatal("the bare grab fails");
        xcb_shm_put_image(m_connection.raw(), m_window, m_context, width, height, 0, 0, width,
                          height, 0, 0, m_connection.screen().root_depth, XCB_IMAGE_FORMAT_Z_PIXMAP,
                          0, m_segment, 0);
        m_connection.sync();
        // The first round only touches the memory.
        if (round >= 0)
            times.push_back(millisecondsBetween(from, Clock::now()));
    }
    return times;
}

std::vector<double> FrameCopy::memoryCopy(int rounds) const
{
    std::vector<std::uint8_t> target(m_bytes);
    std::vector<double> times;
    for (int round = -1; round < rounds; ++round) {
        const auto from = Clock::now();
        std::memcpy(target.data(), m_memory, m_bytes);
        // The copy counts as seen, or the compiler might leave it out.
        asm volatile("" : : "r"(target.data()) : "memory");
        if (round >= 0)
            times.push_back(millisecondsBetween(from, Clock::now()));
    }
    return times;
}

} // namespace brindlecam::bench
