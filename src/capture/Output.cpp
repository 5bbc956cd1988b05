#include "capture/Output.h"

#include "app/Prefs.h"
#include "pictures/PngWriter.h"
#include "pictures/TiffWriter.h"
#include "platform/Pasteboard.h"
#include "recents/History.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <atomic>

namespace brindlecam {

namespace {

QByteArray encodeForFile(const Rendered& picture)
{
    return PngWriter::encode(picture.image, {.effort = PngWriter::Effort::small,
                                             .dotsPerMetre = picture.dotsPerMetre(),
                                             .cancelled = {}});
}

// Whole or not at all: a full disk leaves neither half a file nor an empty one.
bool writeWhole(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
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
    qint64 imageKey = 0;
    QSizeF pointSize;
    std::atomic<bool> cancelled = false;
    bool ended = false;
    QByteArray png;
    std::vector<std::shared_ptr<Delivery>> waiting;
};

struct Output::Delivery {
    Rendered picture;
    Wishes wishes;
    Done done;
    qint64 token = 0;          ///< the generation it was handed in with
    bool clipboardOver = true; ///< published, overtaken, or not wanted
    bool fileEncoded = true;
    QByteArray filePng;
    bool writing = false;
    bool saved = false;
};

Output::Output(Pasteboard& pasteboard, History& history, const Prefs& prefs, Executor executor)
    : m_pasteboard(pasteboard)
    , m_history(history)
    , m_prefs(prefs)
    , m_executor(std::move(executor))
{
}

Output::~Output() = default;

void Output::onMainThread(std::function<void()> then)
{
    QMetaObject::invokeMethod(this, std::move(then), Qt::QueuedConnection);
}

void Output::deliver(const Rendered& picture, const Wishes& wishes, Done done)
{
    auto delivery = std::make_shared<Delivery>();
    delivery->picture = picture;
    delivery->wishes = wishes;
    delivery->done = std::move(done);
    m_running.push_back(delivery);
    if (wishes.copy)
        ++m_generation;
    delivery->token = m_generation;
    if (wishes.copy)
        startCopy(delivery);
    if (!wishes.saveTo.isEmpty() || wishes.history)
        startFileEncode(delivery);
    // Never before the caller has its call behind it.
    onMainThread([this, delivery] { advance(delivery); });
}

void Output::startCopy(const std::shared_ptr<Delivery>& delivery)
{
    const qint64 key = delivery->picture.image.cacheKey();
    if (m_lastCopy && m_lastCopy->imageKey == key &&
        m_lastCopy->pointSize == delivery->picture.pointSize) {
        if (m_lastCopy->ended) {
            publish(*delivery, m_lastCopy->png);
        } else {
            delivery->clipboardOver = false;
            m_lastCopy->waiting.push_back(delivery);
        }
        return;
    }
    if (m_lastCopy)
        m_lastCopy->cancelled = true;
    delivery->clipboardOver = false;
    const auto encode = std::make_shared<CopyEncode>();
    encode->imageKey = key;
    encode->pointSize = delivery->picture.pointSize;
    encode->waiting.push_back(delivery);
    m_lastCopy = encode;
    m_executor([this, encode, picture = delivery->picture] {
        encode->png = PngWriter::encode(
            picture.image, {.effort = PngWriter::Effort::quick,
                            .dotsPerMetre = picture.dotsPerMetre(),
                            .cancelled = [&encode] { return encode->cancelled.load(); }});
        onMainThread([this, encode] { copyEncoded(encode); });
    });
}

void Output::copyEncoded(const std::shared_ptr<CopyEncode>& encode)
{
    encode->ended = true;
    for (const auto& delivery : std::exchange(encode->waiting, {})) {
        publish(*delivery, encode->png);
        delivery->clipboardOver = true;
        advance(delivery);
    }
}

void Output::publish(const Delivery& delivery, const QByteArray& png)
{
    if (delivery.token == m_generation)
        m_pasteboard.setPicture(png, tiffMaker(delivery.picture, png));
}

void Output::startFileEncode(const std::shared_ptr<Delivery>& delivery)
{
    delivery->fileEncoded = false;
    m_executor([this, delivery] {
        QByteArray png = encodeForFile(delivery->picture);
        onMainThread([this, delivery, png = std::move(png)] {
            delivery->filePng = png;
            delivery->fileEncoded = true;
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
    if (delivery->writing || !delivery->clipboardOver || !delivery->fileEncoded ||
        waitsForEarlier(*delivery))
        return;
    if (!delivery->wishes.saveTo.isEmpty() || delivery->wishes.history)
        startWriting(delivery);
    else
        finish(delivery);
}

void Output::startWriting(const std::shared_ptr<Delivery>& delivery)
{
    delivery->writing = true;
    m_executor([this, delivery] {
        const QByteArray& png = delivery->filePng;
        if (!png.isEmpty()) {
            if (!delivery->wishes.saveTo.isEmpty())
                delivery->saved = writeWhole(delivery->wishes.saveTo, png);
            if (delivery->wishes.history && m_prefs.keepHistory())
                m_history.add(png, QStringLiteral("png"));
        }
        onMainThread([this, delivery] { finish(delivery); });
    });
}

void Output::finish(const std::shared_ptr<Delivery>& delivery)
{
    if (std::erase(m_running, delivery) == 0)
        return;
    if (delivery->done)
        delivery->done(delivery->saved);
    for (const auto& other : std::vector(m_running))
        advance(other);
}

void Output::writeFile(const Rendered& picture, const QString& path)
{
    deliver(picture, {.copy = false, .saveTo = path, .history = false});
}

void Output::forgetLastCopy()
{
    m_lastCopy.reset();
}

void Output::finishAll()
{
    QEventLoop loop;
    while (!m_running.empty())
        loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace brindlecam
