#include "capture/Output.h"

#include <QEventLoop>

#include <utility>

namespace brindlecam {

Output::Output(Pasteboard& pasteboard, History& history, const Prefs& prefs, Executor executor)
    : m_clipboard(pasteboard, executor)
    , m_files(history, prefs, std::move(executor))
{
}

// Work that is still under way reports here, and a picture that is not written yet would be lost.
// The program has waited for all of it by then, without blocking (finishAll).
Output::~Output()
{
    if (!m_running.empty() || !m_afterAll.empty())
        finishAll();
}

void Output::onMainThread(std::function<void()> then)
{
    QMetaObject::invokeMethod(this, std::move(then), Qt::QueuedConnection);
}

Output::SharedDelivery Output::begin(FileLane::Ticket file, Done done)
{
    m_running.push_back(std::make_shared<Delivery>());
    m_running.back()->file = std::move(file);
    m_running.back()->done = std::move(done);
    return m_running.back();
}

void Output::deliver(const Rendered& picture, const Wishes& wishes, Done done)
{
    const auto delivery =
        begin(m_files.enter(picture, {.path = wishes.saveTo, .history = wishes.history}),
              std::move(done));
    if (wishes.copy) {
        using Kind = ClipboardLane::Kind;
        m_clipboard.put(picture, wishes.soonStale ? Kind::live : Kind::result,
                        [this, delivery](ClipboardFate fate) { copied(delivery, fate); });
    } else if (delivery->file) {
        startFile(delivery);
    } else {
        // Never before the caller has its call behind it.
        onMainThread([this, delivery] { finish(delivery); });
    }
}

void Output::copy(ClipboardContent content, CopyDone done)
{
    const auto delivery = begin(nullptr, [done = std::move(done)](const Fate& fate) {
        if (done)
            done(*fate.clipboard);
    });
    m_clipboard.put(std::move(content),
                    [this, delivery](ClipboardFate fate) { copied(delivery, fate); });
}

// The clipboard comes first: somebody waits for it, and an encode for the file beside it would take
// half of its time on a small machine.
void Output::copied(const SharedDelivery& delivery, ClipboardFate fate)
{
    delivery->fate.clipboard = fate;
    if (delivery->file)
        startFile(delivery);
    else
        finish(delivery);
}

void Output::startFile(const SharedDelivery& delivery)
{
    m_files.start(delivery->file, [this, delivery](const Fate& fate) {
        delivery->fate.file = fate.file;
        delivery->fate.history = fate.history;
        finish(delivery);
    });
}

void Output::finish(const SharedDelivery& delivery)
{
    std::erase(m_running, delivery);
    if (const Done done = std::exchange(delivery->done, {}))
        done(delivery->fate);
    tellWhenFinished();
}

void Output::writeFile(const Rendered& picture, const QString& path, Done done)
{
    deliver(picture, {.copy = false, .saveTo = path, .history = false}, std::move(done));
}

void Output::sessionEnded()
{
    m_clipboard.sessionEnded();
}

void Output::finishAll(std::function<void()> then)
{
    m_clipboard.hurry();
    m_afterAll.push_back(std::move(then));
    onMainThread([this] { tellWhenFinished(); });
}

void Output::tellWhenFinished()
{
    if (!m_running.empty())
        return;
    for (const auto& then : std::exchange(m_afterAll, {}))
        then();
}

void Output::finishAll()
{
    bool finished = false;
    finishAll([&finished] { finished = true; });
    QEventLoop loop;
    while (!finished)
        loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace brindlecam
