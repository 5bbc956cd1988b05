#include "capture/Output.h"

#include "app/Prefs.h"
#include "base/WholeFile.h"
#include "pictures/PngWriter.h"
#include "pictures/TiffWriter.h"
#include "platform/Pasteboard.h"
#include "recents/History.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>

#include <algorithm>
#include <atomic>
#include <chrono>

namespace brindlecam {

namespace {

// Longer than the pause between the repeats of a held key, and too short to be missed.
constexpr std::chrono::milliseconds kCalm{50};

QByteArray encodeForFile(const Rendered& picture)
{
    return PngWriter::encode(picture.image(), {.effort = PngWriter::Effort::small,
                                               .dotsPerMetre = picture.dotsPerMetre(),
                                               .cancelled = {}});
}

QByteArray encodeForClipboard(const Rendered& picture, const std::atomic<bool>& cancelled)
{
    return PngWriter::encode(picture.image(),
                             {.effort = PngWriter::Effort::quick,
                              .dotsPerMetre = picture.dotsPerMetre(),
                              .cancelled = [&cancelled] { return cancelled.load(); }});
}

bool writePicture(const QString& path, const QByteArray& png)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    return writeWhole(path, png);
}

Fate::Copy outcomeOf(bool succeeded)
{
    return succeeded ? Fate::Copy::done : Fate::Copy::failed;
}

// Made from the PNG, so that an idle clipboard keeps some compressed bytes and not a whole screen.
std::function<QByteArray()> tiffMaker(const Rendered& picture, const QByteArray& png)
{
    if (png.isEmpty())
        return [picture] { return picture.tiffData(); };
    return [png, dotsPerMetre = picture.dotsPerMetre()] {
        return TiffWriter::encode(QImage::fromData(png, "PNG"), dotsPerMetre);
    };
}

} // namespace

/// One encode for the clipboard; deliveries of the same picture share it.
struct Output::CopyEncode {
    Rendered picture;
    std::atomic<bool> cancelled = false;
    enum class Stage { waiting, encoding, ended } stage = Stage::waiting;
    enum class After { kept, forgotten } after = After::kept;
    QByteArray png;
    std::vector<std::shared_ptr<Delivery>> waiting;
};

/// One picture on its way. The clipboard comes first: somebody waits for it, and an encode for the
/// file beside it would take half of its time on a small machine.
struct Output::Delivery {
    enum class Stage { copying, encoding, encoded, writing };

    Rendered picture;
    Wishes wishes;
    Done done;
    qint64 token = 0; ///< the generation it was handed in with
    Stage stage = Stage::copying;
    QByteArray filePng;
    Fate fate;

    [[nodiscard]] bool copied() const { return !wishes.copy || fate.clipboard; }
    [[nodiscard]] bool writes() const { return !wishes.saveTo.isEmpty() || wishes.history; }
};

Output::Output(Pasteboard& pasteboard, History& history, const Prefs& prefs, Executor executor)
    : m_pasteboard(pasteboard)
    , m_history(history)
    , m_prefs(prefs)
    , m_executor(std::move(executor))
{
    m_calm.setSingleShot(true);
    m_calm.setInterval(kCalm);
    connect(&m_calm, &QTimer::timeout, this, &Output::startWaiting);
}

Output::~Output()
{
    // Jobs that are still under way report here.
    finishAll();
}

void Output::onMainThread(std::function<void()> then)
{
    QMetaObject::invokeMethod(this, std::move(then), Qt::QueuedConnection);
}

void Output::deliver(const Rendered& picture, const Wishes& wishes, Done done)
{
    auto delivery = std::make_shared<Delivery>();
    delivery->picture = picture;
    delivery->wishes = wishes;
    delivery->wishes.history = wishes.history && m_prefs.keepHistory();
    delivery->done = std::move(done);
    m_running.push_back(delivery);
    if (wishes.copy)
        ++m_generation;
    delivery->token = m_generation;
    if (wishes.copy)
        startCopy(delivery);
    else if (delivery->writes())
        startFileEncode(delivery);
    // Never before the caller has its call behind it.
    onMainThread([this, delivery] { advance(delivery); });
}

void Output::copyText(const QString& text, TextDone done)
{
    ++m_generation;
    overtakeCopies();
    ++m_textsOnTheirWay;
    m_pasteboard.set(ClipboardContent::text(text), this,
                     [this, done = std::move(done)](ClipboardFate fate) {
                         --m_textsOnTheirWay;
                         if (done)
                             done(fate);
                         tellWhenFinished();
                     });
}

void Output::overtakeCopies()
{
    m_calm.stop();
    const auto overtaken = std::exchange(m_lastCopy, nullptr);
    if (!overtaken)
        return;
    overtaken->cancelled = true;
    if (overtaken->stage == CopyEncode::Stage::waiting)
        onMainThread([this, overtaken] { copyEncoded(overtaken); });
}

void Output::startCopy(const std::shared_ptr<Delivery>& delivery)
{
    if (m_lastCopy && m_lastCopy->picture.isSame(delivery->picture)) {
        if (m_lastCopy->stage == CopyEncode::Stage::ended) {
            publish(delivery, *m_lastCopy);
            return;
        }
        m_lastCopy->waiting.push_back(delivery);
        if (!delivery->wishes.soonStale)
            startWaiting();
        return;
    }
    const bool inARow = m_runningEncodes > 0 || m_calm.isActive();
    overtakeCopies();
    const auto encode = std::make_shared<CopyEncode>();
    encode->picture = delivery->picture;
    encode->waiting.push_back(delivery);
    m_lastCopy = encode;
    // Compressing can't always be interrupted: each change of a held key would keep a thread busy
    // for a picture that nobody sees.
    if (delivery->wishes.soonStale && inARow)
        m_calm.start();
    else
        startEncode(encode);
}

void Output::startWaiting()
{
    m_calm.stop();
    if (m_lastCopy && m_lastCopy->stage == CopyEncode::Stage::waiting)
        startEncode(m_lastCopy);
}

void Output::startEncode(const std::shared_ptr<CopyEncode>& encode)
{
    encode->stage = CopyEncode::Stage::encoding;
    ++m_runningEncodes;
    m_executor([this, encode] {
        // What was overtaken while it waited need not even be flattened.
        if (!encode->cancelled)
            encode->png = encodeForClipboard(encode->picture, encode->cancelled);
        onMainThread([this, encode] {
            --m_runningEncodes;
            copyEncoded(encode);
        });
    });
}

void Output::copyEncoded(const std::shared_ptr<CopyEncode>& encode)
{
    encode->stage = CopyEncode::Stage::ended;
    if (encode->cancelled && encode->png.isEmpty())
        ++m_stoppedEncodes;
    if (encode == m_lastCopy && encode->after == CopyEncode::After::forgotten)
        m_lastCopy.reset();
    for (const auto& delivery : std::exchange(encode->waiting, {}))
        publish(delivery, *encode);
}

void Output::publish(const std::shared_ptr<Delivery>& delivery, const CopyEncode& encode)
{
    if (delivery->token != m_generation) {
        clipboardAnswered(delivery, ClipboardFate::overtaken);
        return;
    }
    auto content = ClipboardContent::picture(encode.png, tiffMaker(delivery->picture, encode.png));
    content.concealed = delivery->wishes.soonStale && encode.after == CopyEncode::After::kept;
    m_pasteboard.set(std::move(content), this,
                     [this, delivery](ClipboardFate fate) { clipboardAnswered(delivery, fate); });
}

void Output::clipboardAnswered(const std::shared_ptr<Delivery>& delivery, ClipboardFate fate)
{
    delivery->fate.clipboard = fate;
    advance(delivery);
}

void Output::startFileEncode(const std::shared_ptr<Delivery>& delivery)
{
    delivery->stage = Delivery::Stage::encoding;
    m_executor([this, delivery] {
        QByteArray png = encodeForFile(delivery->picture);
        onMainThread([this, delivery, png = std::move(png)] {
            delivery->filePng = png;
            delivery->stage = Delivery::Stage::encoded;
            advance(delivery);
        });
    });
}

// Two captures of the same second have the same name, and the later one must stay.
bool Output::waitsForEarlier(const Delivery& delivery) const
{
    if (delivery.wishes.saveTo.isEmpty())
        return false;
    const auto earlier = std::ranges::find_if(m_running, [&](const auto& other) {
        return other.get() == &delivery || other->wishes.saveTo == delivery.wishes.saveTo;
    });
    return earlier->get() != &delivery;
}

void Output::advance(const std::shared_ptr<Delivery>& delivery)
{
    switch (delivery->stage) {
    case Delivery::Stage::copying:
        if (!delivery->copied())
            return;
        if (delivery->writes())
            startFileEncode(delivery);
        else
            finish(delivery);
        return;
    case Delivery::Stage::encoded:
        if (!waitsForEarlier(*delivery))
            startWriting(delivery);
        return;
    case Delivery::Stage::encoding:
    case Delivery::Stage::writing:
        return;
    }
}

void Output::startWriting(const std::shared_ptr<Delivery>& delivery)
{
    delivery->stage = Delivery::Stage::writing;
    m_executor([this, delivery] {
        Fate& fate = delivery->fate;
        const QByteArray& png = delivery->filePng;
        if (!delivery->wishes.saveTo.isEmpty())
            fate.file = outcomeOf(!png.isEmpty() && writePicture(delivery->wishes.saveTo, png));
        if (delivery->wishes.history && m_prefs.keepHistory())
            fate.history = outcomeOf(m_history.add(png, QStringLiteral("png")));
        onMainThread([this, delivery] { finish(delivery); });
    });
}

void Output::finish(const std::shared_ptr<Delivery>& delivery)
{
    if (std::erase(m_running, delivery) == 0)
        return;
    // Let go here: the delivery's last holder may be a job that is about to end.
    if (const Done done = std::exchange(delivery->done, {}))
        done(delivery->fate);
    for (const auto& other : std::vector(m_running))
        advance(other);
    tellWhenFinished();
}

void Output::writeFile(const Rendered& picture, const QString& path, Done done)
{
    deliver(picture, {.copy = false, .saveTo = path, .history = false}, std::move(done));
}

void Output::sessionEnded()
{
    startWaiting();
    if (m_lastCopy && m_lastCopy->stage != CopyEncode::Stage::ended) {
        m_lastCopy->after = CopyEncode::After::forgotten;
        return;
    }
    m_lastCopy.reset();
    m_pasteboard.reveal();
}

void Output::finishAll(std::function<void()> then)
{
    startWaiting();
    m_afterAll.push_back(std::move(then));
    onMainThread([this] { tellWhenFinished(); });
}

void Output::tellWhenFinished()
{
    if (!m_running.empty() || m_textsOnTheirWay > 0)
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
