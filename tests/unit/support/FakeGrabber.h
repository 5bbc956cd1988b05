#pragma once

#include "platform/Grabber.h"

#include <QObject>
#include <QPointer>

#include <utility>

namespace brindlecam::test {

/// Grabs pictures of one colour per call, at once or when the test says so; opens the regions that
/// the test has put there.
class FakeGrabber final : public Grabber {
public:
    bool waits = false;         ///< hold answers back until answer()
    std::optional<Error> fails; ///< what the next grabs answer instead of pictures
    QRgb colour = 0xff204060;   ///< of every pixel
    int calls = 0;
    std::function<void()> onGrab; ///< runs inside every grab

    void grabScreens(const std::vector<ScreenInfo>& screens, QObject* context, Done done) override
    {
        ++calls;
        if (onGrab)
            onGrab();
        auto answer = [this, screens, done = std::move(done)] {
            if (fails) {
                done(*fails);
                return;
            }
            std::vector<GrabbedScreen> shots;
            for (const ScreenInfo& screen : screens) {
                QImage image(screen.native.size(), QImage::Format_RGB32);
                image.fill(colour);
                shots.push_back({screen, image});
            }
            done(shots);
        };
        m_context = context;
        if (waits)
            m_pending = std::move(answer);
        else
            answer();
    }
    std::unique_ptr<RegionFrames> region; ///< the next one; null: an error
    std::vector<QRect> regions;           ///< that were asked for
    RegionOptions options;                ///< of the last one
    void openRegion(const QRect& native, const RegionOptions& wanted, QObject* context,
                    Opened opened) override
    {
        regions.push_back(native);
        options = wanted;
        auto answer = [this, opened = std::move(opened)] {
            if (region)
                opened(std::move(region));
            else
                opened(Error{});
        };
        m_context = context;
        if (waits)
            m_pending = std::move(answer);
        else
            answer();
    }

    void answer()
    {
        if (const auto pending = std::exchange(m_pending, {}); pending && m_context)
            pending();
    }
    /// Whether somebody still waits for an answer.
    [[nodiscard]] bool isAwaited() const { return m_pending && m_context; }

private:
    std::function<void()> m_pending;
    QPointer<QObject> m_context; ///< of what is pending
};

} // namespace brindlecam::test
