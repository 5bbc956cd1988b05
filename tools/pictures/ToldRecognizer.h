#pragma once

#include "platform/TextRecognizer.h"

#include <optional>
#include <utility>

namespace brindlecam::pictures {

/// Answers each reading as told beforehand, or goes on reading for ever. Main thread.
class ToldRecognizer final : public TextRecognizer {
public:
    std::optional<Result<QStringList>> answer;

    void warmUp() override {}
    void recognize(const QImage& /*picture*/, QObject* context, Done done) override
    {
        if (answer)
            QMetaObject::invokeMethod(
                context, [done = std::move(done), lines = *answer] { done(lines); },
                Qt::QueuedConnection);
    }
};

} // namespace brindlecam::pictures
