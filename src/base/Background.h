#pragma once

#include "base/Executor.h"

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace brindlecam {

/// Work that runs elsewhere and whose results come home: to the thread that this lives on, as long
/// as it does. Work that has begun by the time it goes is finished all the same, and its result
/// dropped; so work may use what it owns or what outlives the executor, and nothing else.
class Background final {
public:
    explicit Background(Executor executor);
    ~Background();
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    /// Runs `work` on the executor, and `then` with its result later on this thread: never before
    /// this call returns.
    template <typename Work, typename Then>
    void run(Work work, Then then) const
    {
        m_executor([home = m_home, work = std::move(work), then = std::move(then)] {
            if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
                work();
                post(*home, then);
            } else {
                // Shared: what is posted must be copyable, results need not be.
                auto result = std::make_shared<std::invoke_result_t<Work>>(work());
                post(*home, [result, then] { then(std::move(*result)); });
            }
        });
    }

private:
    struct Home;
    static void post(Home& home, std::function<void()> then);

    const Executor m_executor;
    const std::shared_ptr<Home> m_home;
};

} // namespace brindlecam
