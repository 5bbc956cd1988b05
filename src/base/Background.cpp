#include "base/Background.h"

#include <QObject>

#include <mutex>

namespace brindlecam {

/// Where results are received, for whoever brings one.
struct Background::Home {
    std::mutex mutex;
    std::unique_ptr<QObject> receiver = std::make_unique<QObject>(); ///< none: nobody is there
};

Background::Background(Executor executor)
    : m_executor(std::move(executor))
    , m_home(std::make_shared<Home>())
{
}

Background::~Background()
{
    const std::lock_guard lock(m_home->mutex);
    m_home->receiver.reset();
}

void Background::post(Home& home, std::function<void()> then)
{
    const std::lock_guard lock(home.mutex);
    if (home.receiver)
        QMetaObject::invokeMethod(home.receiver.get(), std::move(then), Qt::QueuedConnection);
}

} // namespace brindlecam
