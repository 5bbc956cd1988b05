#pragma once

#include "capture/CaptureFixture.h"
#include "shell/AppDelegate.h"
#include "shell/SingleInstance.h"
#include "support/FakeFileOpener.h"

namespace brindlecam::test {

/// The delegate above rooms in a world of fakes, of which no other copy hears.
struct DelegateDesk : CaptureFixture {
    FakeFileOpener& opener = install<FakeFileOpener>(platform.fileOpener);
    SingleInstance instance{InstancePlace()};
    AppDelegate delegate{{platform, prefs, alerts, toast, activity, history, output, countdown,
                          controller, instance, [](const std::function<void()>& job) { job(); }}};

    /// The dialog that was shown last, if it is one of this kind.
    template <typename Dialog>
    [[nodiscard]] Dialog* lastShown() const
    {
        return panels.shown.empty() ? nullptr
                                    : qobject_cast<Dialog*>(panels.shown.back().widget.data());
    }
};

} // namespace brindlecam::test
