#include "platform/linux/LinuxTextRecognizer.h"

#include "platform/linux/text/TextEngineModule.h"
#include "platform/linux/text/TextPage.h"

#include <QMetaObject>
#include <QPointer>

#include <malloc.h>

#include <utility>

namespace brindlecam {

/// A picture to read, or none: then the engine is only loaded.
struct LinuxTextRecognizer::Job {
    QImage picture;
    std::atomic<bool> cancelled = false;
    // The main thread's own.
    QPointer<QObject> context;
    QMetaObject::Connection whenGone;
    Done done;
};

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

/// Gives what was freed back to the system; the allocator would keep it.
void giveMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace

LinuxTextRecognizer::LinuxTextRecognizer()
    : LinuxTextRecognizer(Options())
{
}

LinuxTextRecognizer::LinuxTextRecognizer(Options options)
    : m_options(std::move(options))
{
}

LinuxTextRecognizer::~LinuxTextRecognizer()
{
    if (!m_thread)
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
        if (m_current)
            m_current->cancelled = true;
    }
    m_wake.notify_one();
    m_thread->wait();
}

void LinuxTextRecognizer::warmUp()
{
    if (std::exchange(m_warmedUp, true))
        return;
    post(std::make_shared<Job>());
}

void LinuxTextRecognizer::recognize(const QImage& picture, QObject* context, Done done)
{
    const auto job = std::make_shared<Job>();
    job->picture = picture;
    job->context = context;
    job->done = std::move(done);
    job->whenGone =
        QObject::connect(context, &QObject::destroyed, &m_home, [waiting = std::weak_ptr(job)] {
            if (const auto unwanted = waiting.lock())
                unwanted->cancelled = true;
        });
    m_warmedUp = true;
    post(job);
}

void LinuxTextRecognizer::post(std::shared_ptr<Job> job)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
    if (m_thread)
        return;
    m_thread.reset(QThread::create([this] { run(); }));
    m_thread->setObjectName(QStringLiteral("text"));
    m_thread->start();
}

void LinuxTextRecognizer::run()
{
    Engine engine;
    std::unique_lock lock(m_mutex);
    while (true) {
        sleep(lock, engine);
        if (m_quit)
            break;
        m_current = std::move(m_jobs.front());
        m_jobs.pop_front();
        auto job = m_current;
        lock.unlock();
        serve(std::move(job), engine);
        lock.lock();
    }
}

/// Waits for something to do, and after a while without the engine.
void LinuxTextRecognizer::sleep(std::unique_lock<std::mutex>& lock, Engine& engine)
{
    const auto awaited = [this] { return m_quit || !m_jobs.empty(); };
    if (engine && !m_wake.wait_for(lock, m_options.keepFor, awaited)) {
        lock.unlock();
        unload(engine);
        lock.lock();
    }
    m_wake.wait(lock, awaited);
}

void LinuxTextRecognizer::serve(std::shared_ptr<Job> job, Engine& engine)
{
    Result<QStringList> lines = read(*job, engine);
    {
        const std::lock_guard lock(m_mutex);
        m_current.reset();
    }
    // The job goes along, so that what its callback holds is let go on the main thread.
    QMetaObject::invokeMethod(
        &m_home,
        [job = std::move(job), lines = std::move(lines)] {
            QObject::disconnect(job->whenGone);
            if (job->context && job->done)
                job->done(lines);
        },
        Qt::QueuedConnection);
}

Result<QStringList> LinuxTextRecognizer::read(const Job& job, Engine& engine)
{
    if (job.cancelled)
        return QStringList();
    const Result<Engine> ready = loaded(engine);
    if (!ready)
        return ready.error();
    const TextPage page(job.picture);
    if (page.grey().isNull() || job.cancelled)
        return QStringList();
    const QImage& grey = page.grey();
    return page.lines(
        wordsOf(engine->engine().read(grey.constBits(), grey.width(), grey.height(),
                                      static_cast<int>(grey.bytesPerLine()), job.cancelled)));
}

/// The engine, loaded now when it isn't. What was missing may have been installed meanwhile.
Result<LinuxTextRecognizer::Engine> LinuxTextRecognizer::loaded(Engine& engine)
{
    if (engine)
        return engine;
    const QString path =
        m_options.module.isEmpty() ? TextEngineModule::usualPath() : m_options.module;
    Result<Engine> module = TextEngineModule::load(path);
    if (!module)
        return module;
    engine = module.value();
    m_loaded = true;
    return engine;
}

void LinuxTextRecognizer::unload(Engine& engine)
{
    engine.reset();
    m_loaded = false;
    giveMemoryBack();
}

} // namespace brindlecam
