#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace brindlecam {

/// How shortcuts are written for the user: "⇧⌘9", or "Mayús+Super+9".
enum class KeyNaming { symbols, words };

/// Bits of KeyCombo::modifiers.
enum KeyModifier : int {
    commandModifier = 0x100, ///< Super on Linux
    shiftModifier = 0x200,
    optionModifier = 0x800, ///< Alt on Linux
    controlModifier = 0x1000,
};

/// A shortcut as it is stored and shown. Key codes are virtual key codes by physical position
/// (KeyCodes maps them to the system's); an empty `display` means: no shortcut.
struct KeyCombo {
    int keyCode = 0;
    int modifiers = 0; ///< KeyModifier bits
    QString display;   ///< modifier symbols, then the key's name: "⇧⌘9"

    /// The combination a key press stands for, or none: it needs ⌘, ⌥ or ⌃ unless the key is a
    /// function key, and a name to show. `characters` is what the key types without modifiers.
    [[nodiscard]] static std::optional<KeyCombo> fromKeyPress(int keyCode, int modifiers,
                                                              const QString& characters);

    /// JSON object with the keys "keyCode", "modifiers" and "display".
    [[nodiscard]] QByteArray toJson() const;
    /// None when the bytes are not such an object.
    [[nodiscard]] static std::optional<KeyCombo> fromJson(const QByteArray& json);

    /// What the user reads in menus and settings; empty when there is no shortcut.
    [[nodiscard]] QString shown(KeyNaming naming) const;

    /// "F1" … "F20", or nothing when the key is no function key.
    [[nodiscard]] static std::optional<QString> functionKeyName(int keyCode);
    /// "Espacio", "↩", "⇥" …, or nothing when the key types a character.
    [[nodiscard]] static std::optional<QString> namedKeyName(int keyCode);

    bool operator==(const KeyCombo&) const = default;
};

} // namespace brindlecam
