#include "reading/ReadingQueue.h"

#include "base/FreedMemory.h"
#include "base/Text.h"
#include "reading/StopRequest.h"
#include "reading/TextPage.h"

#include <new>
#include <utility>

namespace brindlecam {

namespace {

std::vector<Word> wordsOf(const std::vector<TextEngine::EngineWord>& read)
{
    std::vector<Word> words;
    words.reserve(read.size());
    for (const TextEngine::EngineWord& word : read) {
        words.push_back(
            {.text = QString::fromStdString(word.utf8),
             .confidence = word.confidence,
             .box = QRect(QPoint(word.left, word.top), QPoint(word.right - 1, word.bottom - 1)),
             .line = word.line});
    }
    return words;
}

} // namespace

ReadingQueue::ReadingQueue(Options options, QObject& home)
    : m_options(std::move(options))
    , m_home(home)
{
}

void ReadingQueue::add(std::shared_ptr<Reading> reading)
{
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back(std::move(reading));
    }
    m_wake.notify_one();
}

ReadingQueue::Readings ReadingQueue::close()
{
    return close(std::unique_lock(m_mutex));
}

std::optional<ReadingQueue::Readings> ReadingQueue::closeIfAt(const Reading& reading)
{
    std::unique_lock lock(m_mutex);
    if (m_current.get() != &reading)
        return std::nullopt;
    return close(std::move(lock));
}

ReadingQueue::Readings ReadingQueue::close(std::unique_lock<std::mutex> lock)
{
    m_closed = true;
    // What the callback holds is let go here, on the main thread, and after the lock.
    std::function<void(Result<QStringList>)> unanswered;
    if (m_current) {
        m_current->cancelled = true;
        unanswered = std::exchange(m_current->done, nullptr);
    }
    Readings left = std::exchange(m_waiting, {});
    lock.unlock();
    m_wake.notify_one();
    return left;
}

void ReadingQueue::run()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        sleep(lock);
        if (m_closed)
            break;
        m_current = std::move(m_waiting.front());
        m_waiting.pop_front();
        const Reading& reading = *m_current;
        lock.unlock();
        Result<QStringList> lines = read(reading);
        lock.lock();
        answer(std::exchange(m_current, nullptr), std::move(lines));
    }
    lock.unlock();
    unload();
}

void ReadingQueue::sleep(std::unique_lock<std::mutex>& lock)
{
    const auto awaited = [this] { return m_closed || !m_waiting.empty(); };
    if (m_engine && !m_wake.wait_for(lock, m_options.keepFor, awaited)) {
        lock.unlock();
        unload();
        lock.lock();
    }
    m_wake.wait(lock, awaited);
}

Result<QStringList> ReadingQueue::read(const Reading& reading)
{
    QString why;
    try {
        return linesOf(reading);
    } catch (const StopRequest::Stopped&) {
        return QStringList(); // for nobody
    } catch (const std::bad_alloc&) {
        why = text("no hay memoria suficiente");
    } catch (...) {
        why = text("el motor de reconocimiento falló");
    }
    // What was interrupted may be in any state. Not before here: its code is also what was thrown.
    unload();
    return Error{why};
}

Result<QStringList> ReadingQueue::linesOf(const Reading& reading)
{
    const StopRequest stop(reading.cancelled);
    stop.check();
    if (const auto missing = load())
        return *missing;
    const TextPage page(reading.picture, stop);
    if (page.grey().isNull())
        return QStringList();
    const QImage& grey = page.grey();
    stop.check();
    const auto words = m_engine->engine().read(grey.constBits(), grey.width(), grey.height(),
                                               static_cast<int>(grey.bytesPerLine()), stop);
    stop.check();
    if (!words)
        return Error{text("el motor de reconocimiento falló")};
    return page.lines(wordsOf(*words), stop);
}

/// What was missing the last time may have been installed meanwhile: it is tried every time.
std::optional<Error> ReadingQueue::load()
{
    if (m_engine)
        return std::nullopt;
    const Result<Engine> module = TextEngineModule::load(m_options.module);
    if (!module)
        return module.error();
    m_engine = module.value();
    m_loaded = true;
    return std::nullopt;
}

void ReadingQueue::unload()
{
    m_engine.reset();
    giveFreedMemoryBack();
    m_loaded = false;
}

/// The mutex is held, so that `home` is there as long as nobody has closed.
void ReadingQueue::answer(std::shared_ptr<Reading> reading, Result<QStringList> lines)
{
    if (m_closed)
        return; // close() has taken the callback
    // The reading goes along: what its callback holds is let go on the main thread.
    QMetaObject::invokeMethod(
        &m_home,
        [reading = std::move(reading), lines = std::move(lines)] {
            QObject::disconnect(reading->whenGone);
            // Or its last holder, which may be the other thread, would let it go.
            const auto done = std::exchange(reading->done, nullptr);
            if (reading->context && done)
                done(lines);
        },
        Qt::QueuedConnection);
}

} // namespace brindlecam
