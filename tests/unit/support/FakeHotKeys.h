#pragma once

#include "base/KeyCodes.h"
#include "base/KeyCombo.h"
#include "platform/HotKeys.h"

#include <QKeyEvent>
#include <QObject>
#include <QPointer>

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace brindlecam::test {

/// A keyboard of the test's own: refuses what other programs hold. Answers at once or when the test
/// says so, also to sets that were replaced meanwhile.
class FakeHotKeys final : public HotKeys {
public:
    using Combination = std::pair<int, int>; ///< key code, modifiers

    std::set<Combination> heldByOthers;
    bool waits = false;             ///< hold answers back until answer()
    std::vector<HotKeyWish> wishes; ///< the set bound last
    /// Bound, or taken; of those for one combination the last hears.
    std::map<Combination, std::vector<std::shared_ptr<std::function<void()>>>> registered;
    int duplicates = 0; ///< registrations of a combination that was registered already
    std::function<void(int keyCode)> onTaken;     ///< runs inside every registration
    std::function<void(int keyCode)> onGivenBack; ///< runs at the end of each

    void bind(const std::vector<HotKeyWish>& wanted, QObject* context, Pressed pressed,
              Done done) override
    {
        while (!m_bound.empty())
            m_bound.pop_back();
        wishes = wanted;
        QStringList refused;
        const QPointer<QObject> alive(context);
        for (const HotKeyWish& wish : wanted) {
            auto key = take({wish.keyCode, wish.modifiers}, [alive, pressed, name = wish.name] {
                if (alive)
                    pressed(name);
            });
            if (key)
                m_bound.push_back(std::move(key));
            else
                refused << wish.name;
        }
        m_pending.push_back({alive, [refused, done = std::move(done)] { done(refused); }});
        if (!waits)
            answer();
    }
    [[nodiscard]] std::unique_ptr<TakenKey> takeKey(PlainKey key,
                                                    std::function<void()> pressed) override
    {
        return take({static_cast<int>(key), 0}, std::move(pressed));
    }

    /// Keys by which Qt calls them, and their virtual key codes: the others have none.
    std::map<int, int> codes{{Qt::Key_0, 29}, {Qt::Key_5, 23},    {Qt::Key_9, 25},
                             {Qt::Key_A, 0},  {Qt::Key_F13, 105}, {Qt::Key_Tab, 48}};
    [[nodiscard]] std::optional<PressedKey> read(const QKeyEvent& event) const override
    {
        const auto found = codes.find(event.key());
        if (found == codes.end())
            return std::nullopt;
        const auto held = event.modifiers();
        const auto bit = [held](Qt::KeyboardModifier one, int is) { return held & one ? is : 0; };
        const bool types = event.key() < Qt::Key_Escape;
        return PressedKey{
            found->second,
            bit(Qt::MetaModifier, commandModifier) | bit(Qt::ShiftModifier, shiftModifier) |
                bit(Qt::AltModifier, optionModifier) | bit(Qt::ControlModifier, controlModifier),
            types ? QString(QChar(event.key())) : QString()};
    }

    /// To the set that waits longest.
    void answer()
    {
        const Answer oldest = std::move(m_pending.front());
        m_pending.pop_front();
        if (oldest.context)
            oldest.give();
    }
    /// How many sets wait for an answer that somebody would hear.
    [[nodiscard]] auto awaited() const
    {
        return std::ranges::count_if(m_pending, [](const Answer& each) { return each.context; });
    }

    /// Presses the keys; nothing happens when nobody registered them.
    void press(int keyCode, int modifiers)
    {
        const auto found = registered.find({keyCode, modifiers});
        if (found == registered.end())
            return;
        const auto pressed = found->second.back(); // it may unregister itself
        (*pressed)();
    }

private:
    struct Answer {
        QPointer<QObject> context;
        std::function<void()> give;
    };

    class Registration final : public TakenKey {
    public:
        Registration(FakeHotKeys& keys, Combination combination, std::function<void()> pressed)
            : m_keys(keys)
            , m_combination(std::move(combination))
            , m_pressed(std::make_shared<std::function<void()>>(std::move(pressed)))
        {
            m_keys.registered[m_combination].push_back(m_pressed);
        }
        ~Registration() override
        {
            auto& all = m_keys.registered[m_combination];
            std::erase(all, m_pressed);
            if (all.empty())
                m_keys.registered.erase(m_combination);
            if (m_keys.onGivenBack)
                m_keys.onGivenBack(m_combination.first);
        }

    private:
        FakeHotKeys& m_keys;
        Combination m_combination;
        std::shared_ptr<std::function<void()>> m_pressed;
    };

    [[nodiscard]] std::unique_ptr<TakenKey> take(const Combination& combination,
                                                 std::function<void()> pressed)
    {
        if (heldByOthers.contains(combination))
            return nullptr;
        if (registered.contains(combination))
            ++duplicates;
        auto registration = std::make_unique<Registration>(*this, combination, std::move(pressed));
        if (onTaken)
            onTaken(combination.first);
        return registration;
    }

    std::deque<Answer> m_pending; ///< oldest first
    std::vector<std::unique_ptr<TakenKey>> m_bound;
};

} // namespace brindlecam::test
