#pragma once

#include "base/Executor.h"
#include "capture/ClipboardLane.h"
#include "capture/Fate.h"
#include "capture/FileLane.h"
#include "pictures/Rendered.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam {

class History;
class Pasteboard;
class Prefs;

/// Turns finished pictures into their results: clipboard first, then the file, then the history,
/// the completion last. How each part goes is the business of its lane. Main thread; destroying it
/// waits for what was delivered.
class Output final : public QObject {
    Q_OBJECT

public:
    /// What becomes of one picture.
    struct Wishes {
        bool copy = false;    ///< onto the clipboard
        QString saveTo = {};  ///< full path of a PNG file to write, or empty
        bool history = false; ///< into the history, if the user keeps one
        /// May wait while others of its kind follow in quick succession. Clipboard managers are to
        /// leave it alone until sessionEnded(): it may show what the next one hides.
        bool soonStale = false;
    };
    /// Receives what became of each part.
    using Done = std::function<void(const Fate& fate)>;
    /// Receives what became of something that was to be copied only.
    using CopyDone = std::function<void(ClipboardFate fate)>;

    Output(Pasteboard& pasteboard, History& history, const Prefs& prefs, Executor executor);
    ~Output() override;

    void deliver(const Rendered& picture, const Wishes& wishes, Done done = {});

    /// Puts a text, files or whatever else needs no encoding on the clipboard, in place of any
    /// picture that is on its way there.
    void copy(ClipboardContent content, CopyDone done = {});

    /// Writes the picture to a file of the user's choice.
    void writeFile(const Rendered& picture, const QString& path, Done done = {});

    /// The last clipboard picture is what stays: see ClipboardLane::sessionEnded().
    void sessionEnded();

    /// Encodes for the clipboard that ended early because something newer was on its way.
    [[nodiscard]] int stoppedEncodes() const { return m_clipboard.stoppedEncodes(); }

    /// Calls `then` on the main thread, after this call, when everything that was delivered has
    /// reached its place.
    void finishAll(std::function<void()> then);
    /// Waits for that.
    void finishAll();

private:
    /// One thing on its way through the lanes.
    struct Delivery {
        FileLane::Ticket file; ///< null: no file, and not into the history
        Fate fate;
        Done done;
    };
    using SharedDelivery = std::shared_ptr<Delivery>;

    [[nodiscard]] SharedDelivery begin(FileLane::Ticket file, Done done);
    void copied(const SharedDelivery& delivery, ClipboardFate fate);
    void startFile(const SharedDelivery& delivery);
    void finish(const SharedDelivery& delivery);
    void tellWhenFinished();
    void onMainThread(std::function<void()> then);

    ClipboardLane m_clipboard;
    FileLane m_files;
    std::vector<SharedDelivery> m_running;
    std::vector<std::function<void()>> m_afterAll; ///< who waits for everything
};

} // namespace brindlecam
