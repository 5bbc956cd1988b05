#pragma once

#include "platform/TextRecognizer.h"

#include <QPointer>

#include <deque>
#include <functional>
#include <utility>

namespace brindlecam::test {

/// Holds each reading back until the test answers it.
class FakeTextRecognizer final : public TextRecognizer {
public:
    struct Request {
        QImage picture;
        QPointer<QObject> context;
        Done done;
    };

    std::function<void()> onRequest; ///< once the picture is handed over
    int warmUps = 0;
    std::deque<Request> requests; ///< not answered yet, the oldest first

    void warmUp() override { ++warmUps; }
    void recognize(const QImage& picture, QObject* context, Done done) override
    {
        requests.push_back({picture, context, std::move(done)});
        if (onRequest)
            onRequest();
    }

    /// Answers the oldest reading, unless whoever asked is gone.
    void answer(Result<QStringList> lines)
    {
        const Request request = std::move(requests.front());
        requests.pop_front();
        if (request.context)
            request.done(std::move(lines));
    }
};

} // namespace brindlecam::test
