#pragma once

#include "capture/CaptureFixture.h"
#include "drawer/RecentDrawer.h"
#include "settings/Updater.h"
#include "shell/AppDelegate.h"
#include "shell/SingleInstance.h"
#include "support/FakeFileOpener.h"
#include "support/FakeForeignPresses.h"
#include "support/FakeReleaseFeed.h"

namespace brindlecam::test {

/// The delegate above rooms in a world of fakes, of which no other copy hears.
struct DelegateDesk : CaptureFixture {
    explicit DelegateDesk(FakeReleaseFeed::Place place = FakeReleaseFeed::Place::known)
        : feed(place)
    {
    }

    FakeFileOpener& opener = install<FakeFileOpener>(platform.fileOpener);
    FakeForeignPresses& presses = install<FakeForeignPresses>(platform.foreignPresses);
    SingleInstance instance{InstancePlace()};
    static void atOnce(const std::function<void()>& job) { job(); }
    RecentDrawer drawer{{platform, prefs, history, output, toast, alerts, activity, atOnce}};
    FakeReleaseFeed feed;
    Updater updater{{prefs, alerts, opener, activity, feed}};
    AppDelegate delegate{{platform, prefs, alerts, toast, activity, history, output, countdown,
                          longCaptures, controller, drawer, updater, instance, atOnce}};

    /// The dialog that was shown last, if it is one of this kind.
    template <typename Dialog>
    [[nodiscard]] Dialog* lastShown() const
    {
        return panels.shown.empty() ? nullptr
                                    : qobject_cast<Dialog*>(panels.shown.back().widget.data());
    }
};

} // namespace brindlecam::test
