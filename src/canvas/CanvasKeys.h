#pragma once

#include "canvas/CanvasCommand.h"

#include <optional>

class QKeyEvent;

namespace brindlecam {

/// Reads the keys that reach a canvas: what they ask of it, a held key once unless its command
/// repeats. The repeats may be those of a press that somebody else took.
class CanvasKeys final {
public:
    /// None: the key means nothing here, or only repeats itself.
    [[nodiscard]] std::optional<CanvasCommand> pressed(const QKeyEvent& event) const;
    void released(const QKeyEvent& event);

private:
    [[nodiscard]] bool isRepeat(const QKeyEvent& event) const;

    struct Release {
        int key = 0;
        quint64 time = 0; ///< 0: not known
    };
    Release m_lastRelease;
};

} // namespace brindlecam
