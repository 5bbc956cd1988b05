#pragma once

#include "platform/RegionFrames.h"

#include <QImage>

#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace brindlecam::test {

/// What a region shows, as the test says.
struct Shown {
    std::mutex mutex;
    QImage now;    ///< null: the grab fails
    int looks = 0; ///< how often somebody has looked
    bool stopped = false;
    bool seesBeneathPanels = true;
    bool showsPanels = false; ///< the next frame says so

    void show(const QImage& image)
    {
        const std::lock_guard lock(mutex);
        now = image;
        looks = 0;
    }
    /// Since the last change.
    [[nodiscard]] int looksTaken()
    {
        const std::lock_guard lock(mutex);
        return looks;
    }
};

/// Frames of what is shown.
class ScriptedFrames final : public RegionFrames {
public:
    explicit ScriptedFrames(std::shared_ptr<Shown> shown)
        : m_shown(std::move(shown))
    {
    }

    [[nodiscard]] Result<std::optional<RegionFrame>> next() override
    {
        const std::lock_guard lock(m_shown->mutex);
        ++m_shown->looks;
        if (m_shown->stopped)
            return std::optional<RegionFrame>();
        if (m_shown->now.isNull())
            return Error{};
        return std::optional(
            RegionFrame{m_shown->now, std::chrono::steady_clock::now(), m_shown->showsPanels});
    }
    [[nodiscard]] bool seesBeneathPanels() const override { return m_shown->seesBeneathPanels; }
    void stop() override
    {
        const std::lock_guard lock(m_shown->mutex);
        m_shown->stopped = true;
    }

private:
    const std::shared_ptr<Shown> m_shown;
};

} // namespace brindlecam::test
