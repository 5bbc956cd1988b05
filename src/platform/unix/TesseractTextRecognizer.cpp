#include "platform/unix/TesseractTextRecognizer.h"

#include "reading/ReadingThread.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <utility>

namespace brindlecam {

namespace {

/// Threads left to themselves, at most; each has an engine, a picture and a processor.
constexpr std::size_t kMostLeft = 2;

} // namespace

TesseractTextRecognizer::TesseractTextRecognizer()
    : TesseractTextRecognizer(Options())
{
}

TesseractTextRecognizer::TesseractTextRecognizer(const Options& options)
    : m_options(options)
    , m_thread(newThread())
{
}

TesseractTextRecognizer::~TesseractTextRecognizer()
{
    m_left.push_back(std::move(m_thread));
    const QDeadlineTimer deadline(m_options.patienceAtTheEnd);
    for (const auto& thread : m_left)
        thread->close();
    std::erase_if(m_left, [&deadline](const auto& thread) { return thread->endsBy(deadline); });
}

void TesseractTextRecognizer::warmUp()
{
    if (!m_warmedUp)
        add(std::make_shared<Reading>());
}

void TesseractTextRecognizer::recognize(const QImage& picture, QObject* context, Done done)
{
    const auto reading = std::make_shared<Reading>();
    reading->picture = picture;
    reading->context = context;
    reading->done = std::move(done);
    reading->whenGone = QObject::connect(context, &QObject::destroyed, &m_home,
                                         [this, waiting = std::weak_ptr(reading)] {
                                             if (const auto unwanted = waiting.lock())
                                                 giveUp(unwanted);
                                         });
    add(reading);
}

bool TesseractTextRecognizer::isLoaded() const
{
    return m_thread->isLoaded();
}

void TesseractTextRecognizer::add(std::shared_ptr<Reading> reading)
{
    m_warmedUp = true;
    m_thread->add(std::move(reading));
}

void TesseractTextRecognizer::giveUp(const std::shared_ptr<Reading>& reading)
{
    reading->cancelled = true;
    reading->done = nullptr; // here, not on the other thread
    QTimer::singleShot(m_options.patience, &m_home, [this, waiting = std::weak_ptr(reading)] {
        if (const auto unwanted = waiting.lock())
            goOnWithout(*unwanted);
    });
}

/// Goes on elsewhere while the thread is still at this reading.
void TesseractTextRecognizer::goOnWithout(const Reading& unwanted)
{
    std::erase_if(m_left, [](const auto& thread) { return thread->endsBy(QDeadlineTimer(0)); });
    if (m_left.size() >= kMostLeft)
        return;
    auto waiting = m_thread->closeIfAt(unwanted);
    if (!waiting)
        return;
    m_left.push_back(std::exchange(m_thread, newThread()));
    for (auto& reading : *waiting)
        m_thread->add(std::move(reading));
}

std::unique_ptr<ReadingThread> TesseractTextRecognizer::newThread()
{
    return std::make_unique<ReadingThread>(
        ReadingQueue::Options{.module = m_options.module.isEmpty() ? TextEngineModule::usualPath()
                                                                   : m_options.module,
                              .keepFor = m_options.keepFor},
        m_home);
}

} // namespace brindlecam
