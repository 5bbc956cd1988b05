#include "base/LatinLetter.h"

#include <QChar>

#include <array>
#include <string_view>

namespace brindlecam {

namespace {

constexpr std::uint32_t kFirstXkbCode = 8; ///< of XKB against evdev

/// Letters of the US keyboard side by side, from this evdev code on.
struct LetterRow {
    std::uint32_t first;
    std::string_view letters;
};
constexpr std::array kLetterRows{LetterRow{16, "QWERTYUIOP"}, LetterRow{30, "ASDFGHJKL"},
                                 LetterRow{44, "ZXCVBNM"}};

// Dead keys, digits and signs are of no script in particular: Latin maps have them, too.
bool isOfAnotherScript(int key)
{
    if (key <= 0 || key > int(QChar::LastValidCodePoint))
        return false;
    const auto script = QChar::script(static_cast<char32_t>(key));
    return script != QChar::Script_Latin && script != QChar::Script_Common &&
           script != QChar::Script_Inherited && script != QChar::Script_Unknown;
}

} // namespace

int latinLetter(int key, std::uint32_t scanCode)
{
    if (!isOfAnotherScript(key))
        return key;
    for (const LetterRow& row : kLetterRows) {
        const std::uint32_t index =
            scanCode - kFirstXkbCode - row.first; // huge when before the row
        if (index < row.letters.size())
            return row.letters[index]; // Qt's letters are those of ASCII
    }
    return key;
}

} // namespace brindlecam
