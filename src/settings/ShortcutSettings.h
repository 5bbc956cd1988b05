#pragma once

#include "base/KeyCombo.h"
#include "preferences/CaptureAction.h"

#include <QWidget>

#include <map>
#include <optional>

namespace brindlecam {

class HotKeys;
class Prefs;
class SettingsHost;
class ShortcutRecorder;
class WrappedText;

/// The global shortcuts, and what is wrong with them. Main thread.
class ShortcutSettings final : public QWidget {
    Q_OBJECT

public:
    /// All of it outlives the widget.
    struct Rooms {
        Prefs& prefs;
        SettingsHost& host;
        const HotKeys& keys;
        KeyNaming naming;
    };

    explicit ShortcutSettings(const Rooms& rooms);

    /// Shows what is stored, and what the system has refused of it.
    void refresh();
    /// The system has answered about the hot keys: says so, unless there is something newer to say.
    void hotKeysAnswered();

    [[nodiscard]] ShortcutRecorder& recorder(CaptureAction action) const
    {
        return *m_recorders.at(action);
    }
    [[nodiscard]] WrappedText& warning() { return *m_warning; }

private:
    void changed(CaptureAction action, const std::optional<KeyCombo>& combo);
    [[nodiscard]] std::optional<CaptureAction> otherWith(const KeyCombo& combo,
                                                         CaptureAction action) const;
    void store(CaptureAction action, const std::optional<KeyCombo>& combo);
    void showFailures();
    void warn(const QString& words);

    Rooms m_rooms;
    std::map<CaptureAction, ShortcutRecorder*> m_recorders;
    WrappedText* m_warning;
    bool m_warnsOfDuplicate = false;
};

} // namespace brindlecam
