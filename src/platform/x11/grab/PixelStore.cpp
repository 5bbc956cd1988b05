#include "platform/x11/grab/PixelStore.h"

#include "base/FreedMemory.h"

#include <mutex>
#include <utility>
#include <vector>

namespace brindlecam {

/// What outlives the store: pictures give their memory back here, from any thread.
struct PixelStore::Shelf {
    struct Item {
        std::unique_ptr<PixelBuffer> buffer;
        Clock::time_point expires;
    };

    Shelf(xcb_connection_t* server, QTimer* timer, std::chrono::milliseconds time,
          std::function<Clock::time_point()> clock)
        : connection(server)
        , expiry(timer)
        , kept(time)
        , now(std::move(clock))
    {
    }

    xcb_connection_t* const connection;
    std::mutex mutex;
    std::vector<Item> items; ///< oldest first
    QTimer* expiry;          ///< null once the store is gone
    const std::chrono::milliseconds kept;
    const std::function<Clock::time_point()> now;

    void giveBack(std::unique_ptr<PixelBuffer> buffer)
    {
        const std::lock_guard lock(mutex);
        if (!expiry) {
            buffer->forgetServer();
            return;
        }
        const bool first = items.empty();
        items.push_back({std::move(buffer), now() + kept});
        if (first) {
            QMetaObject::invokeMethod(
                expiry, [timer = expiry, time = kept] { timer->start(time); },
                Qt::QueuedConnection);
        }
    }
};

/// One picture's hold on its memory.
struct PixelStore::Loan {
    std::shared_ptr<Shelf> shelf;
    std::unique_ptr<PixelBuffer> buffer;
};

PixelStore::PixelStore(xcb_connection_t* connection, std::chrono::milliseconds kept,
                       std::function<Clock::time_point()> now)
    : m_shelf(std::make_shared<Shelf>(connection, &m_expiry, kept, std::move(now)))
{
    m_expiry.setSingleShot(true);
    QObject::connect(&m_expiry, &QTimer::timeout, &m_expiry, [this] { freeExpired(); });
}

PixelStore::~PixelStore()
{
    const std::lock_guard lock(m_shelf->mutex);
    m_shelf->expiry = nullptr;
    m_shelf->items.clear();
}

std::unique_ptr<PixelBuffer> PixelStore::take(PixelBuffer::Kind kind, std::size_t bytes)
{
    const std::lock_guard lock(m_shelf->mutex);
    auto& items = m_shelf->items;
    // The newest first: its pages are the warmest.
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        if (item->buffer->kind() != kind || item->buffer->size() != bytes)
            continue;
        auto buffer = std::move(item->buffer);
        items.erase(std::next(item).base());
        return buffer;
    }
    return PixelBuffer::make(kind, bytes, m_shelf->connection);
}

void PixelStore::giveBack(std::unique_ptr<PixelBuffer> buffer)
{
    m_shelf->giveBack(std::move(buffer));
}

QImage PixelStore::wrap(std::unique_ptr<PixelBuffer> buffer, QSize size, qsizetype bytesPerLine,
                        QImage::Format format)
{
    uchar* const data = buffer->data();
    auto loan = std::make_unique<Loan>(Loan{m_shelf, std::move(buffer)});
    const auto giveBack = [](void* ended) {
        const std::unique_ptr<Loan> owned(static_cast<Loan*>(ended));
        owned->shelf->giveBack(std::move(owned->buffer));
    };
    return {data, size.width(), size.height(), bytesPerLine, format, giveBack, loan.release()};
}

std::size_t PixelStore::keptBytes() const
{
    const std::lock_guard lock(m_shelf->mutex);
    std::size_t bytes = 0;
    for (const auto& item : m_shelf->items)
        bytes += item.buffer->size();
    return bytes;
}

void PixelStore::freeExpired()
{
    const std::lock_guard lock(m_shelf->mutex);
    const auto now = m_shelf->now();
    // A coarse timer may also fire a little early.
    const auto soon = now + m_shelf->kept / 10;
    std::erase_if(m_shelf->items, [soon](const Shelf::Item& item) { return item.expires <= soon; });
    if (!m_shelf->items.empty()) {
        m_expiry.start(
            std::chrono::ceil<std::chrono::milliseconds>(m_shelf->items.front().expires - now));
        return;
    }
    // The session is long over: what its many small things left behind goes back, too.
    giveFreedMemoryBack();
}

} // namespace brindlecam
