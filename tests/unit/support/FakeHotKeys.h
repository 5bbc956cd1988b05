#pragma once

#include "platform/HotKeys.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace brindlecam::test {

/// A keyboard of the test's own: refuses what other programs hold, and a combination twice.
class FakeHotKeys final : public HotKeys {
public:
    using Combination = std::pair<int, int>; ///< key code, modifiers

    std::set<Combination> heldByOthers;
    std::map<Combination, std::function<void()>> registered;
    int duplicates = 0; ///< registrations of a combination that was registered already
    std::function<void(int keyCode)> onTaken;     ///< runs inside every registration
    std::function<void(int keyCode)> onGivenBack; ///< runs at the end of each

    [[nodiscard]] std::unique_ptr<HotKeyRegistration>
    registerKey(int keyCode, int modifiers, std::function<void()> pressed) override
    {
        const Combination combination(keyCode, modifiers);
        if (heldByOthers.contains(combination))
            return nullptr;
        if (!registered.emplace(combination, std::move(pressed)).second) {
            ++duplicates;
            return nullptr;
        }
        if (onTaken)
            onTaken(keyCode);
        return std::make_unique<Registration>(*this, combination);
    }

    /// Presses the keys; nothing happens when nobody registered them.
    void press(int keyCode, int modifiers)
    {
        const auto found = registered.find({keyCode, modifiers});
        if (found == registered.end())
            return;
        const auto pressed = found->second; // it may unregister itself
        pressed();
    }

private:
    class Registration final : public HotKeyRegistration {
    public:
        Registration(FakeHotKeys& keys, Combination combination)
            : m_keys(keys)
            , m_combination(std::move(combination))
        {
        }
        ~Registration() override
        {
            m_keys.registered.erase(m_combination);
            if (m_keys.onGivenBack)
                m_keys.onGivenBack(m_combination.first);
        }

    private:
        FakeHotKeys& m_keys;
        Combination m_combination;
    };
};

} // namespace brindlecam::test
