#pragma once

#include "platform/Grabber.h"

#include <QObject>
#include <QPointer>

#include <utility>

namespace brindlecam::test {

/// Grabs pictures of one colour per call, at once or when the test says so.
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
    void openRegion(const QRect&, const RegionOptions&, QObject*, Opened opened) override
    {
        opened(Error{});
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
