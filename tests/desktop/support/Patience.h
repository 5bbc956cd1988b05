#pragma once

#include <QTest>

#include <utility>

namespace brindlecam::desktop {

/// How long a condition may take before the test gives up, in milliseconds. Long on purpose: it
/// costs only when something is broken, and the sanitizer builds share two cores with other tests.
constexpr int kPatience = 15000;

/// Runs the event loop until the condition holds; false when it never did.
template <typename Condition>
[[nodiscard]] bool waitUntil(Condition condition, int timeoutMilliseconds = kPatience)
{
    return QTest::qWaitFor(std::move(condition), timeoutMilliseconds);
}

} // namespace brindlecam::desktop
