#include "capture/ClipboardLane.h"

#include "pictures/PngWriter.h"
#include "pictures/TiffWriter.h"

#include <atomic>
#include <chrono>
#include <utility>
#include <vector>

namespace brindlecam {

namespace {

// Longer than the pause between the repeats of a held key, and too short to be missed.
constexpr std::chrono::milliseconds kCalm{50};

QByteArray encodeForClipboard(const Rendered& picture, const std::atomic<bool>& cancelled)
{
    return PngWriter::encode(picture.image(),
                             {.effort = PngWriter::Effort::quick,
                              .dotsPerMetre = picture.dotsPerMetre(),
                              .cancelled = [&cancelled] { return cancelled.load(); }});
}

// Made from the PNG, so that an idle clipboard keeps some compressed bytes and not a whole screen.
std::function<QByteArray()> tiffMaker(const Rendered& picture, const QByteArray& png)
{
    if (png.isEmpty())
        return [picture] { return picture.tiffData(); };
    if (!ClipboardLane::offersTiff(picture.image().size()))
        return {};
    return [png, dotsPerMetre = picture.dotsPerMetre()] {
        return TiffWriter::encode(QImage::fromData(png, "PNG"), dotsPerMetre);
    };
}

} // namespace

/// One encode, shared by all who have asked for the same picture.
struct ClipboardLane::Copy {
    explicit Copy(const Rendered& what)
        : picture(what)
    {
    }

    const Rendered picture;
    std::atomic<bool> overtaken = false;
    QByteArray png;
    std::vector<Order> orders; ///< in the order they came
};

ClipboardLane::ClipboardLane(Pasteboard& pasteboard, Executor executor)
    : m_pasteboard(pasteboard)
    , m_executor(std::move(executor))
{
    m_calm.setSingleShot(true);
    m_calm.setInterval(kCalm);
    QObject::connect(&m_calm, &QTimer::timeout, &m_mainThread, [this] { take(Event::pause); });
}

void ClipboardLane::onMainThread(std::function<void()> then)
{
    QMetaObject::invokeMethod(&m_mainThread, std::move(then), Qt::QueuedConnection);
}

void ClipboardLane::put(const Rendered& picture, Kind kind, Answer answer)
{
    take(eventOf(picture), {picture, kind, std::move(answer)});
    if (kind == Kind::result)
        hurry();
}

void ClipboardLane::put(ClipboardContent content, Answer answer)
{
    take(Event::content);
    m_pasteboard.set(std::move(content), &m_mainThread, std::move(answer));
}

void ClipboardLane::hurry()
{
    take(Event::pause);
}

void ClipboardLane::sessionEnded()
{
    take(Event::sessionEnd);
}

ClipboardLane::Event ClipboardLane::eventOf(const Rendered& picture) const
{
    if (m_newest && m_newest->picture.isSame(picture))
        return Event::samePicture;
    // Compressing can't always be interrupted: each change of a held key would keep a thread busy
    // for a picture that nobody sees.
    const bool inARow = m_runningEncodes > 0 || m_state == State::waiting;
    return inARow ? Event::pictureInARow : Event::picture;
}

void ClipboardLane::take(Event event, Order order)
{
    using Act = ClipboardStep::Act;
    const State before = m_state;
    const SharedCopy copy = m_newest;
    const ClipboardStep step = ClipboardStep::of(before, event);
    enter(step.next);
    switch (step.act) {
    case Act::nothing:
        return;
    case Act::makeWay:
        overtake(copy, before);
        return;
    case Act::encodeNew:
        overtake(copy, before);
        begin(std::move(order));
        encode();
        return;
    case Act::holdNew:
        overtake(copy, before);
        begin(std::move(order));
        m_calm.start();
        return;
    case Act::join:
        copy->orders.push_back(std::move(order));
        return;
    case Act::offerAgain:
        copy->orders.push_back(std::move(order));
        offer(*copy, Showing::asOrdered);
        return;
    case Act::encode:
        encode();
        return;
    case Act::offer:
        offer(*copy, Showing::asOrdered);
        return;
    case Act::offerOpenly:
        offer(*copy, Showing::openly);
        return;
    case Act::reveal:
        m_pasteboard.reveal();
        return;
    }
}

// Before anything is done: whoever is answered meanwhile may put the next thing.
void ClipboardLane::enter(State state)
{
    m_state = state;
    if (state == State::idle)
        m_newest.reset();
    if (state != State::waiting)
        m_calm.stop();
}

void ClipboardLane::overtake(const SharedCopy& copy, State itsState)
{
    if (!copy)
        return;
    copy->overtaken = true;
    // Where an encode is under way, that reports.
    if (itsState == State::waiting)
        onMainThread([this, copy] { reported(copy); });
}

void ClipboardLane::begin(Order order)
{
    m_newest = std::make_shared<Copy>(order.picture);
    m_newest->orders.push_back(std::move(order));
}

void ClipboardLane::encode()
{
    ++m_runningEncodes;
    m_executor([this, copy = m_newest] {
        // What was overtaken while it waited need not even be flattened.
        if (!copy->overtaken)
            copy->png = encodeForClipboard(copy->picture, copy->overtaken);
        onMainThread([this, copy] {
            --m_runningEncodes;
            reported(copy);
        });
    });
}

void ClipboardLane::reported(const SharedCopy& copy)
{
    if (!copy->overtaken) {
        take(Event::encoded);
        return;
    }
    if (copy->png.isEmpty())
        ++m_stoppedEncodes;
    for (const Order& order : std::exchange(copy->orders, {}))
        order.answer(ClipboardFate::overtaken);
}

void ClipboardLane::offer(Copy& copy, Showing showing)
{
    auto orders = std::exchange(copy.orders, {});
    Order newest = std::move(orders.back());
    orders.pop_back();
    auto content = ClipboardContent::picture(copy.png, tiffMaker(copy.picture, copy.png));
    content.concealed = newest.kind == Kind::live && showing == Showing::asOrdered;
    m_pasteboard.set(std::move(content), &m_mainThread, std::move(newest.answer));
    for (const Order& earlier : orders)
        earlier.answer(ClipboardFate::overtaken);
}

} // namespace brindlecam
