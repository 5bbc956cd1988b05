#pragma once

#include "settings/Release.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

class QDialog;

namespace brindlecam {

class Activity;
class Alerts;
class FileOpener;
class Prefs;
class ReleaseFeed;

/// Finds out once a day, and when the user asks, whether a newer version is announced, and offers
/// it when nothing is being captured. The download is the browser's business. Main thread.
class Updater final : public QObject {
    Q_OBJECT

public:
    /// What it works with; all of it outlives the updater.
    struct Rooms {
        const Prefs& prefs;
        Alerts& alerts;
        FileOpener& opener;
        const Activity& activity;
        ReleaseFeed& feed;
    };
    struct Timing {
        std::chrono::milliseconds first = std::chrono::seconds(8); ///< after start()
        std::chrono::milliseconds again = std::chrono::hours(6);
        std::chrono::milliseconds idleAgain = std::chrono::minutes(1); ///< for an offer that waits
        std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc;
    };

    explicit Updater(const Rooms& rooms);
    Updater(const Rooms& rooms, Timing timing);

    /// Called after every check that found anything out. Filled by whoever makes it.
    std::function<void()> onChange = [] {};

    /// Whether this program has a place to ask. Without one it never asks.
    [[nodiscard]] bool canAsk() const;
    /// Checks by itself from now on, as long as the settings say so.
    void start();
    enum class Asker { user, clock };
    /// Asks now, unless it is asking. Users are told what came of it, whatever it is.
    void check(Asker asker);
    /// Opens the page of what is available.
    void openDownload();

    /// The newer version that is known of.
    [[nodiscard]] const std::optional<Release>& available() const { return m_available; }

    /// Of this program; "0" where that is not known.
    [[nodiscard]] static QString installedVersion();

private:
    void checkIfDue();
    void finish(const std::optional<Release>& release, Asker asker);
    void tell(const QString& message, const QString& informative);
    void offerWhenIdle();
    void offer(const Release& release);

    const Rooms m_rooms;
    const Timing m_timing;
    std::optional<Release> m_available;
    bool m_checking = false;
    QString m_told;            ///< what a message says that is still open
    QPointer<QDialog> m_offer; ///< while it is open
    QTimer m_timer;
    QTimer m_idleTimer; ///< runs while an offer waits
};

} // namespace brindlecam
