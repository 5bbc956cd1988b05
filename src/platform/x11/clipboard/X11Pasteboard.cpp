#include "platform/x11/clipboard/X11Pasteboard.h"

#include <QMetaObject>

#include <chrono>
#include <utility>
#include <vector>

namespace brindlecam {

namespace {

// For a server that serves somebody else only, and for a clipboard manager that takes its time.
constexpr std::chrono::seconds kPatience{2};

} // namespace

X11Pasteboard::X11Pasteboard(Executor pool)
    : m_thread(std::move(pool))
{
    m_patience.setSingleShot(true);
    QObject::connect(&m_patience, &QTimer::timeout, &m_mainThread, [this] { giveUpOverdue(); });
}

void X11Pasteboard::set(ClipboardContent content, QObject* context, Answer answer)
{
    const auto [number, waiting] = await(context, std::move(answer));
    x11::SelectionOwner::Client client{tellerOf(number), waiting.leaves};
    m_thread.post(
        [content = std::move(content), client = std::move(client)](x11::SelectionOwner* owner) {
            if (owner)
                owner->take(content, client);
            else
                client.taken(ClipboardFate::refused);
        });
}

void X11Pasteboard::reveal()
{
    m_thread.post([](x11::SelectionOwner* owner) {
        if (owner)
            owner->reveal();
    });
}

void X11Pasteboard::handOver(QObject* context, std::function<void()> done)
{
    const Number number = await(context, [done = std::move(done)](ClipboardFate) { done(); }).first;
    m_thread.post([tell = tellerOf(number)](x11::SelectionOwner* owner) {
        const auto handedOver = [tell] { tell(ClipboardFate::taken); };
        if (owner)
            owner->handOver(handedOver);
        else
            handedOver();
    });
}

std::pair<X11Pasteboard::Number, const X11Pasteboard::Waiting&>
X11Pasteboard::await(QObject* context, Answer answer)
{
    const auto added =
        m_waiting.emplace(++m_last, Waiting{context, std::move(answer), QDeadlineTimer(kPatience),
                                            std::make_shared<std::atomic_bool>(false)});
    if (!m_patience.isActive())
        m_patience.start(kPatience);
    return {m_last, added.first->second};
}

std::function<void(ClipboardFate)> X11Pasteboard::tellerOf(Number number)
{
    return [this, number](ClipboardFate fate) {
        QMetaObject::invokeMethod(
            &m_mainThread, [this, number, fate] { settle(number, fate); }, Qt::QueuedConnection);
    };
}

void X11Pasteboard::settle(Number number, ClipboardFate fate)
{
    const auto node = m_waiting.extract(number);
    if (m_waiting.empty())
        m_patience.stop();
    if (node && node.mapped().context)
        node.mapped().answer(fate);
}

void X11Pasteboard::giveUpOverdue()
{
    std::vector<Number> overdue;
    for (const auto& [number, waiting] : m_waiting) {
        if (!waiting.limit.hasExpired())
            continue;
        *waiting.leaves = true; // what is refused now must not be there later all the same
        overdue.push_back(number);
    }
    for (const Number number : overdue)
        settle(number, ClipboardFate::refused);
    if (!m_waiting.empty())
        m_patience.start(static_cast<int>(m_waiting.begin()->second.limit.remainingTime()));
}

} // namespace brindlecam
