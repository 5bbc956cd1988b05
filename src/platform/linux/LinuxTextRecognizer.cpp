#include "platform/linux/LinuxTextRecognizer.h"

#include "platform/linux/text/ReadingQueue.h"

#include <QDeadlineTimer>

#include <utility>

namespace brindlecam {

namespace {

/// Milliseconds. The engine stops between two words; only while it looks for the lines of a picture
/// full of noise does it not listen, for a minute perhaps, and quitting can't wait for that.
constexpr int kPatience = 1000;

} // namespace

LinuxTextRecognizer::LinuxTextRecognizer()
    : LinuxTextRecognizer(Options())
{
}

LinuxTextRecognizer::LinuxTextRecognizer(const Options& options)
    : m_queue(std::make_shared<ReadingQueue>(
          ReadingQueue::Options{.module = options.module.isEmpty() ? TextEngineModule::usualPath()
                                                                   : options.module,
                                .keepFor = options.keepFor},
          m_home))
{
}

LinuxTextRecognizer::~LinuxTextRecognizer()
{
    m_queue->close();
    if (m_thread && !m_thread->wait(QDeadlineTimer(kPatience))) {
        // It owns a share of all it uses and ends with the process; destroying it now would abort.
        [[maybe_unused]] QThread* const abandoned = m_thread.release();
    }
}

void LinuxTextRecognizer::warmUp()
{
    if (!m_warmedUp)
        add(std::make_shared<Reading>());
}

void LinuxTextRecognizer::recognize(const QImage& picture, QObject* context, Done done)
{
    const auto reading = std::make_shared<Reading>();
    reading->picture = picture;
    reading->context = context;
    reading->done = std::move(done);
    reading->whenGone =
        QObject::connect(context, &QObject::destroyed, &m_home, [waiting = std::weak_ptr(reading)] {
            if (const auto unwanted = waiting.lock())
                unwanted->cancelled = true;
        });
    add(reading);
}

bool LinuxTextRecognizer::isLoaded() const
{
    return m_queue->isLoaded();
}

void LinuxTextRecognizer::add(std::shared_ptr<Reading> reading)
{
    m_warmedUp = true;
    m_queue->add(std::move(reading));
    if (m_thread)
        return;
    m_thread.reset(QThread::create([queue = m_queue] { queue->run(); }));
    m_thread->setObjectName(QStringLiteral("text"));
    m_thread->start();
}

} // namespace brindlecam
