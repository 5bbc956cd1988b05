#pragma once

#include "PaintedPage.h"
#include "base/KeyCodes.h"
#include "capture/CaptureFixture.h"
#include "long/ScrollCapture.h"
#include "support/ScriptedFrames.h"

#include <QTest>

namespace brindlecam::test {

/// Scroll captures of a painted page in a world of fakes.
struct ScrollFixture : CaptureFixture {
    static constexpr int kHeight = 200; ///< of the rectangle, in pixels
    QImage page = paintedPage({160, 2000});
    QRect rect{20, 10, 160, kHeight};
    std::shared_ptr<Shown> shown = std::make_shared<Shown>();
    ScrollCapture scroll{{platform, results, toast, alerts, activity}};

    void start(const ScreenInfo& screen = kLeft)
    {
        if (shown->now.isNull())
            shown->now = scrolledTo(page, 0, kHeight);
        grabber.region = std::make_unique<ScriptedFrames>(shown);
        scroll.start(rect, screen);
    }
    /// Shows the page scrolled so far, and waits until that has been seen.
    void scrollTo(int top) { see(scrolledTo(page, top, kHeight)); }
    /// A look that began before the change may end after it.
    void see(const QImage& image)
    {
        shown->show(image);
        QTRY_VERIFY(shown->looksTaken() >= 2 || !scroll.isRunning());
        QTest::qWait(0);
    }
    /// What the panel says.
    [[nodiscard]] QString status() const { return scroll.chrome().status(); }
    [[nodiscard]] QString told() const
    {
        return toast.visible() ? panels.shown.back().widget->accessibleName() : QString();
    }
    [[nodiscard]] QImage copied() const
    {
        return pasteboard.png ? QImage::fromData(*pasteboard.png, "PNG") : QImage();
    }
};

} // namespace brindlecam::test
