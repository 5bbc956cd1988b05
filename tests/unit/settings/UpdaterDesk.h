#pragma once

#include "SettingsFixture.h"
#include "notices/Activity.h"
#include "settings/Updater.h"
#include "support/FakeFileOpener.h"
#include "support/FakeReleaseFeed.h"

#include <QCoreApplication>

namespace brindlecam::test {

inline constexpr std::chrono::milliseconds kFirst{20};
inline constexpr std::chrono::milliseconds kAgain{60};
inline constexpr std::chrono::milliseconds kIdleAgain{30};

/// An updater in version 1.2, at a time of the test's own.
struct UpdaterDesk : SettingsFixture {
    FakeFileOpener& opener = install<FakeFileOpener>(platform.fileOpener);
    Activity activity;
    FakeReleaseFeed feed;
    QDateTime now{QDate(2026, 3, 14), QTime(9, 26, 53), Qt::UTC};
    int changes = 0;
    std::optional<Updater> updater;

    explicit UpdaterDesk(FakeReleaseFeed::Place place = FakeReleaseFeed::Place::known)
        : feed(place)
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("1.2"));
        begin();
    }
    ~UpdaterDesk() { QCoreApplication::setApplicationVersion({}); }
    Q_DISABLE_COPY_MOVE(UpdaterDesk)

    /// A new start of the program, with the settings of the one before.
    void begin()
    {
        updater.emplace(Updater::Rooms{prefs, alerts, opener, activity, feed},
                        Updater::Timing{kFirst, kAgain, kIdleAgain, [this] { return now; }});
        updater->onChange = [this] { ++changes; };
    }
    [[nodiscard]] QString said() const { return question() ? question()->text() : QString(); }
    [[nodiscard]] QString details() const { return question()->informativeText(); }
    /// Lets all timers run that are due soon.
    static void wait() { QTest::qWait(int((kFirst + 2 * kAgain).count())); }
};

} // namespace brindlecam::test
