#include "long/FrameLoop.h"

#include <utility>

namespace brindlecam {

FrameLoop::FrameLoop(std::unique_ptr<RegionFrames> frames, OnFrame onFrame)
    : m_frames(std::move(frames))
    , m_onFrame(std::move(onFrame))
    , m_thread([this] { run(); })
{
}

FrameLoop::~FrameLoop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
    }
    m_frames->stop();
    m_wake.notify_all();
    m_thread.join();
}

void FrameLoop::run()
{
    for (;;) {
        auto next = m_frames->next();
        if (!next) {
            (void)m_onFrame(next.error());
            return;
        }
        if (!next.value())
            return;
        const Pause pause = m_onFrame(*std::move(next).value());
        if (!pause || !sleep(*pause))
            return;
    }
}

// Whether it is to go on after that.
bool FrameLoop::sleep(std::chrono::steady_clock::duration pause)
{
    std::unique_lock lock(m_mutex);
    return !m_wake.wait_for(lock, pause, [this] { return m_stopped; });
}

} // namespace brindlecam
