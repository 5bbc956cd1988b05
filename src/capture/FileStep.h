#pragma once

namespace brindlecam {

/// What the file lane does with a picture when something happens, and which state the picture is in
/// from then on. All of its changes stand in one table. Values only; any thread.
struct FileStep {
    enum class State {
        entered, ///< has its place behind those that came before
        encoding,
        encoded, ///< waits for those that came before and go to the same path
        writing,
        left,
    };
    enum class Event {
        start, ///< nothing else comes first any more
        encoded,
        wayFree, ///< nobody who came before goes to the same path
        written, ///< or not: it has been tried
    };
    enum class Act {
        nothing,
        encode,
        letPass, ///< whose way is free
        write,
        leave, ///< and tell
    };

    State next = State::entered;
    Act act = Act::nothing;

    /// What the table does not name changes nothing.
    [[nodiscard]] static FileStep of(State state, Event event);

    bool operator==(const FileStep&) const = default;
};

} // namespace brindlecam
