#pragma once

#include "base/Background.h"
#include "history/ConfirmedClearing.h"

#include <QWidget>

class QCheckBox;
class QLabel;

namespace brindlecam {

class Alerts;
class History;
class Prefs;
class SmallButton;

/// Whether recent captures are kept, how many are, and a way to be rid of them. Main thread; the
/// history is counted and emptied on the executor.
class PrivacySettings final : public QWidget {
    Q_OBJECT

public:
    /// All of it outlives the widget.
    PrivacySettings(const Prefs& prefs, const History& history, Alerts& alerts,
                    const Executor& executor);

    /// Shows what is stored; the count follows when the folder has been listed.
    void showHistory();

    [[nodiscard]] QCheckBox& historyBox() { return *m_historyBox; }
    [[nodiscard]] QLabel& historyLabel() { return *m_historyLabel; }
    [[nodiscard]] SmallButton& clearButton() { return *m_clear; }

private:
    void toggleHistory();
    void clearHistory();

    const Prefs& m_prefs;
    const History& m_history;
    const Background m_background;
    ConfirmedClearing m_clearing;
    int m_count = 0;     ///< the last one that was asked for
    bool m_asks = false; ///< whether to empty the history
    QCheckBox* m_historyBox;
    QLabel* m_historyLabel;
    SmallButton* m_clear;
};

} // namespace brindlecam
