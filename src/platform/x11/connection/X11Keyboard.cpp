#include "platform/x11/connection/X11Keyboard.h"

#include "base/KeyCombo.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/connection/Xkb.h"

#include <xcb/xcb_keysyms.h>

#include <cstddef>
#include <initializer_list>
#include <memory>

namespace brindlecam::x11 {

namespace {

constexpr int kModifierCount = 8;
constexpr std::uint16_t kModifierBits = 0xff;
constexpr xcb_keysym_t kAltLeft = 0xffe9;
constexpr xcb_keysym_t kSuperLeft = 0xffeb;
constexpr xcb_keysym_t kSuperRight = 0xffec;
constexpr xcb_keysym_t kNumLock = 0xff7f;
constexpr xcb_keysym_t kScrollLock = 0xff14;
constexpr xcb_keysym_t kEscape = 0xff1b;

/// A key that types nothing by itself, and what is printed on it.
struct DeadKey {
    xcb_keysym_t symbol;
    char16_t character;
};
constexpr DeadKey kDeadKeys[] = {{0xfe50, u'`'}, {0xfe51, u'´'}, {0xfe52, u'^'}, {0xfe53, u'~'},
                                 {0xfe57, u'¨'}, {0xfe58, u'°'}, {0xfe5a, u'ˇ'}, {0xfe5b, u'¸'}};

struct KeySymbolsDeleter {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};
using KeySymbols = std::unique_ptr<xcb_key_symbols_t, KeySymbolsDeleter>;

/// Which keys lie on which modifier.
class ModifierMap final {
public:
    ModifierMap()
        : m_reply(xcb_get_modifier_mapping_reply(connection(),
                                                 xcb_get_modifier_mapping(connection()), nullptr))
    {
    }

    /// Calls `visit(modifier index, key code)` for every assigned key.
    template <typename Visit>
    void eachKey(Visit visit) const
    {
        if (!m_reply)
            return;
        const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(m_reply.get());
        for (int modifier = 0; modifier < kModifierCount; ++modifier) {
            for (int i = 0; i < m_reply->keycodes_per_modifier; ++i) {
                if (const auto code = codes[modifier * m_reply->keycodes_per_modifier + i])
                    visit(modifier, code);
            }
        }
    }

private:
    Owned<xcb_get_modifier_mapping_reply_t> m_reply;
};

bool types(xcb_key_symbols_t* symbols, xcb_keycode_t code,
           std::initializer_list<xcb_keysym_t> wanted)
{
    constexpr int kColumns = 4;
    for (int column = 0; column < kColumns; ++column) {
        const auto symbol = xcb_key_symbols_get_keysym(symbols, code, column);
        for (const xcb_keysym_t one : wanted) {
            if (symbol == one)
                return true;
        }
    }
    return false;
}

/// What a key has in the layout of this number, counted from 0. One with fewer layouts begins anew,
/// as keys do that are not set otherwise.
xcb_keysym_t symbolIn(const xcb_xkb_key_sym_map_t& key, int layout)
{
    constexpr int kCountBits = 0x0f;
    const int count = key.groupInfo & kCountBits;
    const int index = count == 0 ? 0 : layout % count * key.width;
    return index < key.nSyms ? xcb_xkb_key_sym_map_syms(&key)[index] : XCB_NO_SYMBOL;
}

/// The same, of a key of the keyboard: the core protocol knows of two layouts only.
xcb_keysym_t symbolIn(xcb_keycode_t code, int layout)
{
    const auto* const xkb = xcb_get_extension_data(connection(), &xcb_xkb_id);
    if (!xkb || !xkb->present) // who asks nevertheless loses the connection
        return XCB_NO_SYMBOL;
    constexpr std::uint16_t kSymbols = XCB_XKB_MAP_PART_KEY_SYMS;
    const auto cookie = xcb_xkb_get_map(connection(), XCB_XKB_ID_USE_CORE_KBD, 0, kSymbols, 0, 0,
                                        code, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const Owned<xcb_xkb_get_map_reply_t> reply(
        xcb_xkb_get_map_reply(connection(), cookie, nullptr));
    if (!reply || !(reply->present & kSymbols))
        return XCB_NO_SYMBOL;
    xcb_xkb_get_map_map_t map;
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), reply->nTypes, reply->nKeySyms,
                               reply->nKeyActions, reply->totalActions, reply->totalKeyBehaviors,
                               reply->virtualMods, reply->totalKeyExplicit, reply->totalModMapKeys,
                               reply->totalVModMapKeys, reply->present, &map);
    const auto keys = xcb_xkb_get_map_map_syms_rtrn_iterator(reply.get(), &map);
    return keys.rem > 0 ? symbolIn(*keys.data, layout) : XCB_NO_SYMBOL;
}

} // namespace

KeySet keysDown()
{
    const Owned<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection(), xcb_query_keymap(connection()), nullptr));
    KeySet keys;
    if (!reply)
        return keys;
    for (std::size_t code = 0; code < keys.size(); ++code)
        keys[code] = (reply->keys[code / 8] >> (code % 8)) & 1;
    return keys;
}

KeySet modifierKeys()
{
    KeySet keys;
    ModifierMap().eachKey([&keys](int, xcb_keycode_t code) { keys.set(code); });
    return keys;
}

std::uint8_t escapeKey()
{
    const KeySymbols symbols(xcb_key_symbols_alloc(connection()));
    const Owned<xcb_keycode_t> codes(xcb_key_symbols_get_keycode(symbols.get(), kEscape));
    for (const xcb_keycode_t* code = codes.get(); code && *code != XCB_NO_SYMBOL; ++code) {
        // Not one that takes a modifier.
        if (xcb_key_symbols_get_keysym(symbols.get(), *code, 0) == kEscape)
            return *code;
    }
    return 0;
}

QString plainCharacters(std::uint8_t code, std::uint16_t state)
{
    constexpr int kGroupShift = 13;
    constexpr int kGroupMask = 3;
    const xcb_keysym_t symbol = symbolIn(code, (state >> kGroupShift) & kGroupMask);
    for (const DeadKey& dead : kDeadKeys) {
        if (symbol == dead.symbol)
            return QString(QChar(dead.character));
    }
    const bool isLatin = (symbol >= 0x20 && symbol <= 0x7e) || (symbol >= 0xa0 && symbol <= 0xff);
    const bool isUnicode = (symbol & 0xff000000) == 0x01000000;
    if (!isLatin && !isUnicode)
        return {};
    const char32_t character = symbol & 0x00ffffff;
    return QString::fromUcs4(&character, 1);
}

ModifierBits ModifierBits::read()
{
    const KeySymbols symbols(xcb_key_symbols_alloc(connection()));
    ModifierBits bits;
    std::uint16_t locks = XCB_MOD_MASK_LOCK;
    ModifierMap().eachKey([&](int modifier, xcb_keycode_t code) {
        const auto bit = static_cast<std::uint16_t>(1 << modifier);
        if (bit < XCB_MOD_MASK_1)
            return; // Shift, Lock and Control are what they are.
        if (types(symbols.get(), code, {kAltLeft}))
            bits.alt |= bit;
        if (types(symbols.get(), code, {kSuperLeft, kSuperRight}))
            bits.super |= bit;
        if (types(symbols.get(), code, {kNumLock, kScrollLock}))
            locks |= bit;
    });
    if (bits.alt == 0)
        bits.alt = XCB_MOD_MASK_1;
    if (bits.super == 0)
        bits.super = XCB_MOD_MASK_4;
    bits.locks = locks & static_cast<std::uint16_t>(~(bits.alt | bits.super));
    return bits;
}

std::uint16_t ModifierBits::stateOf(int modifiers) const
{
    std::uint16_t state = 0;
    if (modifiers & shiftModifier)
        state |= XCB_MOD_MASK_SHIFT;
    if (modifiers & controlModifier)
        state |= XCB_MOD_MASK_CONTROL;
    if (modifiers & optionModifier)
        state |= alt;
    if (modifiers & commandModifier)
        state |= super;
    return state;
}

int ModifierBits::modifiersOf(std::uint16_t state) const
{
    int modifiers = 0;
    if (state & XCB_MOD_MASK_SHIFT)
        modifiers |= shiftModifier;
    if (state & XCB_MOD_MASK_CONTROL)
        modifiers |= controlModifier;
    if (state & alt)
        modifiers |= optionModifier;
    if (state & super)
        modifiers |= commandModifier;
    return modifiers;
}

std::uint16_t ModifierBits::relevant(std::uint16_t state) const
{
    return state & kModifierBits & static_cast<std::uint16_t>(~locks);
}

std::vector<std::uint16_t> ModifierBits::lockStates() const
{
    // Counts through the subsets of `locks`.
    std::vector<std::uint16_t> states{0};
    for (std::uint16_t subset = locks & -locks; subset != 0; subset = (subset - locks) & locks)
        states.push_back(subset);
    return states;
}

} // namespace brindlecam::x11
