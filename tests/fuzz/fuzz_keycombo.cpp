#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Promise.h"
#include "base/KeyCodes.h"
#include "base/KeyCombo.h"

#include <algorithm>
#include <limits>

namespace brindlecam {

namespace {

constexpr int kCommanding = commandModifier | optionModifier | controlModifier;
constexpr int kAllModifiers = kCommanding | shiftModifier;
constexpr int kMostCharacters = 40; // bytes
constexpr int kMostKeyCodes = 300;  // more than there are on any keyboard

/// What is stored is read again as it was, and shown where there is something to show.
void checkKept(const KeyCombo& combo)
{
    BRINDLECAM_PROMISE(KeyCombo::fromJson(combo.toJson()) == combo);
    BRINDLECAM_PROMISE(combo.shown(KeyNaming::symbols) == combo.display);
    BRINDLECAM_PROMISE(combo.shown(KeyNaming::words).isEmpty() == combo.display.isEmpty());
}

void pressKey(fuzz::FuzzInput& input)
{
    const int keyCode = input.integer(0, input.flag() ? std::numeric_limits<int>::max() : 255);
    const auto modifiers = static_cast<int>(input.number(0, UINT32_MAX));
    const QString characters = QString::fromUtf8(input.bytes(kMostCharacters));
    const auto combo = KeyCombo::fromKeyPress(keyCode, modifiers, characters);
    const bool named = KeyCombo::functionKeyName(keyCode) || KeyCombo::namedKeyName(keyCode);
    const bool enough = (modifiers & kCommanding) != 0 || KeyCombo::functionKeyName(keyCode);
    const bool hasName = named || characters.isEmpty() || !characters.trimmed().isEmpty();
    BRINDLECAM_PROMISE(combo.has_value() == (enough && hasName));
    if (!combo)
        return;
    BRINDLECAM_PROMISE(combo->keyCode == keyCode);
    BRINDLECAM_PROMISE(combo->modifiers == (modifiers & kAllModifiers));
    BRINDLECAM_PROMISE(!combo->display.isEmpty());
    checkKept(*combo);
}

void readStored(const QByteArray& json)
{
    const auto combo = KeyCombo::fromJson(json);
    if (!combo)
        return;
    BRINDLECAM_PROMISE(combo->keyCode >= 0 && combo->modifiers >= 0);
    checkKept(*combo);
}

/// There and back between the system's codes and ours.
void lookUpCodes(fuzz::FuzzInput& input)
{
    const int code = input.integer(-1, kMostKeyCodes);
    for (const int evdev : KeyCodes::toEvdev(code))
        BRINDLECAM_PROMISE(KeyCodes::fromEvdev(evdev) == code);
    if (const auto ours = KeyCodes::fromEvdev(code)) {
        const std::vector<int> back = KeyCodes::toEvdev(*ours);
        BRINDLECAM_PROMISE(std::find(back.begin(), back.end(), code) != back.end());
    }
}

} // namespace

} // namespace brindlecam

/// Shortcuts: of any key press, and of anything that may stand in the settings.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace brindlecam;
    fuzz::FuzzInput input(data, size);
    enum class Kind { press, stored, codes };
    switch (static_cast<Kind>(input.integer(0, 2))) {
    case Kind::press:
        pressKey(input);
        break;
    case Kind::stored:
        readStored(input.rest());
        break;
    case Kind::codes:
        lookUpCodes(input);
        break;
    }
    return 0;
}
