#pragma once

#include "platform/InputGrabs.h"

#include <QObject>
#include <QPointer>

#include <utility>

namespace brindlecam::test {

/// Pointer and keyboard are free, or held by somebody until the test says how that ends.
class FakeInputGrabs final : public InputGrabs {
public:
    bool held = false; ///< hold answers back until answer()
    int requests = 0;

    void clear(QObject* context, Done done) override
    {
        ++requests;
        m_context = context;
        m_done = std::move(done);
        if (!held)
            answer(Answer::free);
    }

    void answer(Answer answer)
    {
        const Done done = std::exchange(m_done, {});
        if (done && m_context)
            done(answer);
    }

private:
    QPointer<QObject> m_context;
    Done m_done;
};

} // namespace brindlecam::test
