#include "reading/ReadingThread.h"

#include <QDeadlineTimer>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace brindlecam {

namespace {

/// Threads at work, those that nobody owns any more included.
std::atomic<int>& atWork()
{
    static std::atomic<int> count = 0;
    return count;
}

/// Tesseract (5.3) asks whether it is to stop only between words, not while it looks for lines.
/// Were the process to end in order, the library's globals would be destroyed while it still uses
/// them. Drop it, and the threads left to themselves, when the engine listens everywhere.
void endAtOnceIfBusy(int status, void* /*unused*/)
{
    if (atWork() == 0)
        return;
    std::fflush(nullptr);
    ::_exit(status);
}

void guardTheEnd()
{
#ifdef __GLIBC__
    // What is registered late is called early: before the globals of a library loaded meanwhile.
    [[maybe_unused]] static const int registered = ::on_exit(endAtOnceIfBusy, nullptr);
#endif
}

} // namespace

ReadingThread::ReadingThread(ReadingQueue::Options options, QObject& home)
    : m_queue(std::make_shared<ReadingQueue>(std::move(options), home))
{
}

ReadingThread::~ReadingThread()
{
    close();
    // Connected first: the end may come in between.
    if (m_thread)
        QObject::connect(m_thread.get(), &QThread::finished, m_thread.get(), &QObject::deleteLater);
    if (endsBy(QDeadlineTimer(0)))
        return;
    guardTheEnd();
    // It owns a share of all it uses; destroying it now would abort.
    [[maybe_unused]] QThread* const abandoned = m_thread.release();
}

void ReadingThread::add(std::shared_ptr<Reading> reading)
{
    m_queue->add(std::move(reading));
    if (m_thread)
        return;
    ++atWork();
    m_thread.reset(QThread::create([queue = m_queue] {
        queue->run();
        --atWork();
    }));
    m_thread->setObjectName(QStringLiteral("text"));
    m_thread->start();
}

ReadingQueue::Readings ReadingThread::close()
{
    return m_queue->close();
}

std::optional<ReadingQueue::Readings> ReadingThread::closeIfAt(const Reading& reading)
{
    return m_queue->closeIfAt(reading);
}

bool ReadingThread::endsBy(const QDeadlineTimer& deadline)
{
    return !m_thread || m_thread->wait(deadline);
}

} // namespace brindlecam
