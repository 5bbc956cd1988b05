#pragma once

#include "base/Background.h"

#include <QtGlobal>

#include <functional>

namespace brindlecam {

class Alerts;
class History;

/// Empties the history when the user says so. Main thread; the folder is listed and emptied on the
/// executor.
class ConfirmedClearing final {
public:
    /// History and alerts outlive it.
    ConfirmedClearing(const History& history, Alerts& alerts, Executor executor);

    /// Asks, unless there is nothing to empty. `done` runs later: true when the history has been
    /// emptied, false when the user keeps it or it was empty.
    void confirmAndClear(std::function<void(bool cleared)> done);

private:
    void ask(qsizetype count, const std::function<void(bool)>& done);

    const History& m_history;
    Alerts& m_alerts;
    const Background m_background;
};

} // namespace brindlecam
