#pragma once

#include "base/Executor.h"
#include "capture/ClipboardStep.h"
#include "pictures/Rendered.h"
#include "platform/Pasteboard.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

namespace brindlecam {

/// The way to the clipboard. Only the newest thing gets there: whatever comes later overtakes what
/// is still on its way, and makes its encode stop early. While live pictures overtake each other,
/// none is encoded until they pause. ClipboardStep says what happens when.
/// Main thread; encodes on the executor, and outlives whoever waits for an answer.
class ClipboardLane final {
public:
    /// Beyond this many pixels no TIFF stands beside the PNG: nobody could paste it, and making it
    /// would take half a gigabyte.
    static constexpr qint64 kMostTiffPixels = 64'000'000;
    [[nodiscard]] static bool offersTiff(QSize pixels)
    {
        return qint64{pixels.width()} * pixels.height() <= kMostTiffPixels;
    }

    enum class Kind {
        result, ///< what a capture has yielded
        /// One of many while a session goes on: soon stale. Clipboard managers are to leave it
        /// alone until sessionEnded(): it may show what the next one hides.
        live,
    };
    using Answer = std::function<void(ClipboardFate)>;

    ClipboardLane(Pasteboard& pasteboard, Executor executor);

    /// Copies a picture. `answer` is called once, after this call.
    void put(const Rendered& picture, Kind kind, Answer answer);
    /// Copies what needs no encoding, in this call; `answer` as above.
    void put(ClipboardContent content, Answer answer);

    /// What waits for a pause waits no longer.
    void hurry();

    /// The last picture is what stays: clipboard managers may keep it, and its bytes, which are
    /// kept so that the same picture is not encoded twice in a session, are forgotten; not before
    /// they have reached the clipboard.
    void sessionEnded();

    /// Encodes that ended early because something newer was on its way.
    [[nodiscard]] int stoppedEncodes() const { return m_stoppedEncodes; }

private:
    using State = ClipboardStep::State;
    using Event = ClipboardStep::Event;
    /// Somebody who has asked for a picture to be copied.
    struct Order {
        Rendered picture;
        Kind kind = Kind::result;
        Answer answer;
    };
    struct Copy;
    using SharedCopy = std::shared_ptr<Copy>;
    enum class Showing { asOrdered, openly };

    [[nodiscard]] Event eventOf(const Rendered& picture) const;
    /// The only way from one state to another.
    void take(Event event, Order order);
    void take(Event event) { take(event, Order()); }
    void enter(State state);

    void overtake(const SharedCopy& copy, State itsState);
    void begin(Order order);
    void encode();
    void reported(const SharedCopy& copy);
    void offer(Copy& copy, Showing showing);
    void onMainThread(std::function<void()> then);

    Pasteboard& m_pasteboard;
    const Executor m_executor;
    State m_state = State::idle;
    SharedCopy m_newest;      ///< null: idle
    QTimer m_calm;            ///< runs while waiting
    int m_runningEncodes = 0; ///< overtaken ones, too
    int m_stoppedEncodes = 0;
    QObject m_mainThread; ///< receives what comes from others
};

} // namespace brindlecam
