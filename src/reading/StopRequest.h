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
    /// Counts in `looks`, too, how often the work looks for the wish.
    StopRequest(const std::atomic<bool>& flag, std::atomic<int>& looks)
        : m_flag(&flag)
        , m_looks(&looks)
    {
    }

    /// Whether the wish is there. Cheap enough for each row of a picture.
    [[nodiscard]] bool isThere() const
    {
        if (m_looks)
            m_looks->fetch_add(1, std::memory_order_relaxed);
        return m_flag && m_flag->load(std::memory_order_relaxed);
    }
    /// Throws Stopped when it is.
    void check() const
    {
        if (isThere())
            throw Stopped();
    }

private:
    const std::atomic<bool>* m_flag = nullptr;
    std::atomic<int>* m_looks = nullptr;
};

} // namespace brindlecam
