#pragma once

#include <QObject>

class QKeyEvent;

namespace brindlecam {

/// Marks the repeats of a held key that Qt takes for presses. X sends a repeat as release and press
/// of one moment, and Qt (QXcbKeyboard::handleKeyEvent, 6.4 and 6.11) knows it as one only if it
/// reads both in one go, which a busy machine does not grant. Drop this when Qt asks the server for
/// detectable repeats. Main thread; works as long as it lives, on all windows of ours.
class KeyRepeats final : public QObject {
    Q_OBJECT

public:
    /// The application object must exist.
    KeyRepeats();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool isUnmarkedRepeat(const QKeyEvent& event) const;

    struct Release {
        quint32 code = 0;
        quint64 time = 0; ///< 0: not known
    };
    Release m_lastRelease;
};

} // namespace brindlecam
