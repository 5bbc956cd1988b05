#pragma once

#include "platform/LoginItem.h"

#include <QObject>
#include <QPointer>

#include <deque>
#include <utility>

namespace brindlecam::test {

/// A session that opens the program at login, or not; answers when the test says so.
class FakeLoginItem final : public LoginItem {
public:
    bool enabled = false;
    std::optional<Error> fails; ///< what set() answers
    std::deque<bool> wanted;    ///< by each set(), in order

    void ask(QObject* context, Known known) override
    {
        m_pending.emplace_back(context, [this, known = std::move(known)] { known(enabled); });
    }
    void set(bool on, QObject* context, Done done) override
    {
        wanted.push_back(on);
        m_pending.emplace_back(context, [this, on, done = std::move(done)] {
            if (!fails)
                enabled = on;
            done(fails);
        });
    }

    /// Answers everybody who has asked, in order, and who asks on being answered.
    void answer()
    {
        while (!m_pending.empty()) {
            const auto [context, give] = std::move(m_pending.front());
            m_pending.pop_front();
            if (context)
                give();
        }
    }

private:
    std::deque<std::pair<QPointer<QObject>, std::function<void()>>> m_pending;
};

} // namespace brindlecam::test
