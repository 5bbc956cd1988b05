#pragma once

namespace brindlecam {

/// What the clipboard lane does when something happens, and which state it is in from then on. All
/// of its changes stand in one table. Values only; any thread.
struct ClipboardStep {
    /// Where the newest picture is.
    enum class State {
        idle,         ///< there is none, or it is forgotten
        waiting,      ///< waits for the changes to pause
        encoding,     ///< others of its session may follow
        encodingLast, ///< its session has ended
        kept,         ///< it has reached the clipboard, and its bytes are kept
    };
    enum class Event {
        content,       ///< something that needs no encoding is to be copied
        picture,       ///< another picture is
        pictureInARow, ///< another one is, while earlier ones wait or keep a thread busy
        samePicture,   ///< the newest one is, once more
        pause,         ///< the changes have paused, or somebody can't wait for that
        encoded,       ///< the newest picture is
        sessionEnd,
    };
    enum class Act {
        nothing,
        makeWay,     ///< what is on its way is overtaken
        encodeNew,   ///< so it is by a picture, which is encoded at once
        holdNew,     ///< so it is by a picture, which waits for a pause
        join,        ///< who asks waits with those who have asked for the same
        offerAgain,  ///< who asks gets the bytes that are kept
        encode,      ///< what has waited for a pause
        offer,       ///< a live picture is concealed
        offerOpenly, ///< nothing is
        reveal,      ///< what was concealed
    };

    State next = State::idle;
    Act act = Act::nothing;

    /// What the table does not name changes nothing.
    [[nodiscard]] static ClipboardStep of(State state, Event event);

    bool operator==(const ClipboardStep&) const = default;
};

} // namespace brindlecam
