#pragma once

#include <atomic>

namespace brindlecam {

/// Somebody's wish that long work be given up, which the work looks for now and then. Any thread.
class StopRequest final {
public:
    /// Thrown through the work that is given up.
    struct Stopped {};

    /// Nobody will want to stop.
    StopRequest() = default;

    /// The wish is there once `flag` is set; it outlives this.
    explicit StopRequest(const std::atomic<bool>& flag)
        : m_flag(&flag)
    {
    }

    /// Throws Stopped when the wish is there. Cheap enough for each row of a picture.
    void check() const
    {
        if (m_flag && m_flag->load(std::memory_order_relaxed))
            throw Stopped();
    }

private:
    const std::atomic<bool>* m_flag = nullptr;
};

} // namespace brindlecam
