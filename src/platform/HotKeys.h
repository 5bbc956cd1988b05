#pragma once

#include "base/KeyCodes.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QKeyEvent;
class QObject;

namespace brindlecam {

/// A hot key that the program asks for.
struct HotKeyWish {
    QString name;      ///< the action's id, which is also its command
    QString title;     ///< what a system's own settings may call it
    int keyCode = 0;   ///< virtual key code
    int modifiers = 0; ///< KeyModifier bits
};

/// A key with its modifiers, as a wish could name them.
struct PressedKey {
    int keyCode = 0;    ///< virtual key code
    int modifiers = 0;  ///< KeyModifier bits
    QString characters; ///< what the key types without modifiers; empty: nothing
};

/// Keys that are taken by themselves, without modifiers, for as long as they mean something. The
/// values are virtual key codes.
enum class PlainKey {
    escape = KeyCodes::kEscape,
    returnKey = KeyCodes::kReturn,
    keypadEnter = KeyCodes::kKeypadEnter,
};

/// A key that nobody else gets; destroying it gives the key back.
class TakenKey {
public:
    virtual ~TakenKey() = default;
};

/// System-wide keys. Main thread.
class HotKeys {
public:
    virtual ~HotKeys() = default;

    using Pressed = std::function<void(const QString& name)>;
    using Done = std::function<void(const QStringList& refused)>;

    /// Binds these hot keys and no others: the set replaces the one bound before, an empty set
    /// unbinds all. `pressed` gets the name of the wish, once per physical press, however long the
    /// key is held; among wishes for the same key, the last one's. A system that can only run a
    /// command for a key runs the program's of that name, and `pressed` hears nothing.
    ///
    /// `done` gets the names that the system refuses, usually because another program holds the
    /// key; where several keys have the same code (F13 is also Print Screen), only when it refuses
    /// them all. It is called at most once: before this returns where nobody has to be asked,
    /// perhaps much later, or never, where the user is. Keys may be pressed before that.
    ///
    /// Both are called on the main thread, and not once `context` is gone: with a context for each
    /// set, nobody hears of one that is replaced. The keys do not go with it, as the system would
    /// have to be told twice whenever a set is replaced.
    virtual void bind(const std::vector<HotKeyWish>& wishes, QObject* context, Pressed pressed,
                      Done done) = 0;

    /// Takes a key without modifiers, also from a hot key bound to it, for a capture whose windows
    /// may be without the keyboard or not there yet. `pressed` runs on the main thread once per
    /// physical press, and may give the key back: its repeats and its release still reach nobody
    /// else. Null when the system refuses, usually because another program holds the key; also
    /// where it hands out no such key, and whatever has the keyboard hears it by itself.
    [[nodiscard]] virtual std::unique_ptr<TakenKey> takeKey(PlainKey key,
                                                            std::function<void()> pressed) = 0;

    /// What a press that has come to one of our windows would be as a hot key; none for modifiers
    /// by themselves, and for keys without a code.
    [[nodiscard]] virtual std::optional<PressedKey> read(const QKeyEvent& event) const = 0;
};

} // namespace brindlecam
