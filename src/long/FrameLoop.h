#pragma once

#include "base/Result.h"
#include "platform/RegionFrames.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace brindlecam {

/// Takes the frames of a region on a thread of its own, one after the other, until it is stopped.
class FrameLoop final {
public:
    /// How long until the next frame is wanted; none: never again.
    using Pause = std::optional<std::chrono::steady_clock::duration>;
    /// What comes of a frame, on the loop's thread. After an error the loop ends, whatever it says.
    using OnFrame = std::function<Pause(Result<RegionFrame>)>;

    FrameLoop(std::unique_ptr<RegionFrames> frames, OnFrame onFrame);
    /// Stops it, and waits until `onFrame` has returned.
    ~FrameLoop();
    FrameLoop(const FrameLoop&) = delete;
    FrameLoop& operator=(const FrameLoop&) = delete;

private:
    void run();
    [[nodiscard]] bool sleep(std::chrono::steady_clock::duration pause);

    const std::unique_ptr<RegionFrames> m_frames;
    const OnFrame m_onFrame;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_stopped = false;
    std::thread m_thread; ///< last: it uses the rest
};

} // namespace brindlecam
