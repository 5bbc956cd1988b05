#pragma once

#include "base/Executor.h"
#include "capture/Fate.h"
#include "pictures/Rendered.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace brindlecam {

class History;
class Pasteboard;
class Prefs;

/// Turns finished pictures into their results: clipboard first, then the file, then the history,
/// the completion last. Encoding and writing happen on the executor; the clipboard is only touched
/// while nothing newer is on its way to it, and a newer picture makes an older encode stop early.
/// While pictures that are soon stale overtake each other, none is encoded until they pause.
/// Main thread; destroying it waits for what was delivered.
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
    /// Receives what became of a text.
    using TextDone = std::function<void(ClipboardFate fate)>;

    Output(Pasteboard& pasteboard, History& history, const Prefs& prefs, Executor executor);
    ~Output() override;

    void deliver(const Rendered& picture, const Wishes& wishes, Done done = {});

    /// Puts text on the clipboard in place of any picture that is on its way there.
    void copyText(const QString& text, TextDone done = {});

    /// Writes the picture to a file of the user's choice.
    void writeFile(const Rendered& picture, const QString& path, Done done = {});

    /// The last clipboard picture is what stays: clipboard managers may keep it, and its bytes,
    /// which are kept so that the same picture is not encoded twice in a session, are forgotten;
    /// not before they have reached the clipboard.
    void sessionEnded();

    /// Encodes for the clipboard that ended early because something newer was on its way.
    [[nodiscard]] int stoppedEncodes() const { return m_stoppedEncodes; }

    /// Calls `then` on the main thread, after this call, when everything that was delivered has
    /// reached its place.
    void finishAll(std::function<void()> then);
    /// Waits for that.
    void finishAll();

private:
    struct CopyEncode;
    struct Delivery;

    void startCopy(const std::shared_ptr<Delivery>& delivery);
    void startEncode(const std::shared_ptr<CopyEncode>& encode);
    /// Encodes what waits for a pause, if anything does.
    void startWaiting();
    void startFileEncode(const std::shared_ptr<Delivery>& delivery);
    void copyEncoded(const std::shared_ptr<CopyEncode>& encode);
    void publish(const std::shared_ptr<Delivery>& delivery, const CopyEncode& encode);
    void clipboardAnswered(const std::shared_ptr<Delivery>& delivery, ClipboardFate fate);
    void advance(const std::shared_ptr<Delivery>& delivery);
    void startWriting(const std::shared_ptr<Delivery>& delivery);
    void finish(const std::shared_ptr<Delivery>& delivery);
    [[nodiscard]] bool waitsForEarlier(const Delivery& delivery) const;
    void overtakeCopies();
    void tellWhenFinished();
    void onMainThread(std::function<void()> then);

    Pasteboard& m_pasteboard;
    History& m_history;
    const Prefs& m_prefs;
    const Executor m_executor;
    qint64 m_generation = 0; ///< counts what was put on its way to the clipboard
    int m_stoppedEncodes = 0;
    std::shared_ptr<CopyEncode> m_lastCopy;
    int m_runningEncodes = 0; ///< for the clipboard
    QTimer m_calm;            ///< runs while m_lastCopy waits for the changes to stop
    std::vector<std::shared_ptr<Delivery>> m_running; ///< in the order they were handed in
    int m_textsOnTheirWay = 0;
    std::vector<std::function<void()>> m_afterAll; ///< who waits for everything
};

} // namespace brindlecam
