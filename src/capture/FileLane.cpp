#include "capture/FileLane.h"

#include "base/WholeFile.h"
#include "history/History.h"
#include "pictures/PngWriter.h"
#include "preferences/Prefs.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace brindlecam {

namespace {

QByteArray encodeForFile(const Rendered& picture)
{
    return PngWriter::encode(picture.image(), {.effort = PngWriter::Effort::small,
                                               .dotsPerMetre = picture.dotsPerMetre(),
                                               .cancelled = {}});
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

} // namespace

/// One picture in the lane.
struct FileLane::Job {
    Job(const Rendered& what, Places where)
        : picture(what)
        , places(std::move(where))
    {
    }

    const Rendered picture;
    const Places places;
    Answer answer;
    FileStep::State state = FileStep::State::entered;
    QByteArray png;
    Fate fate;
};

FileLane::FileLane(History& history, const Prefs& prefs, Executor executor)
    : m_history(history)
    , m_prefs(prefs)
    , m_executor(std::move(executor))
{
}

void FileLane::onMainThread(std::function<void()> then)
{
    QMetaObject::invokeMethod(&m_mainThread, std::move(then), Qt::QueuedConnection);
}

FileLane::Ticket FileLane::enter(const Rendered& picture, const Places& places)
{
    const bool history = places.history && m_prefs.keepHistory();
    if (places.path.isEmpty() && !history)
        return nullptr;
    m_jobs.push_back(std::make_shared<Job>(picture, Places{places.path, history}));
    return m_jobs.back();
}

void FileLane::start(const Ticket& ticket, Answer answer)
{
    ticket->answer = std::move(answer);
    take(ticket, FileStep::Event::start);
}

void FileLane::take(const Ticket& job, FileStep::Event event)
{
    const FileStep step = FileStep::of(job->state, event);
    job->state = step.next;
    switch (step.act) {
    case FileStep::Act::nothing:
        return;
    case FileStep::Act::encode:
        encode(job);
        return;
    case FileStep::Act::letPass:
        letPass();
        return;
    case FileStep::Act::write:
        write(job);
        return;
    case FileStep::Act::leave:
        leave(job);
        return;
    }
}

void FileLane::encode(const Ticket& job)
{
    m_executor([this, job] {
        job->png = encodeForFile(job->picture);
        onMainThread([this, job] { take(job, FileStep::Event::encoded); });
    });
}

// Two captures of the same second have the same name, and the later one must stay.
bool FileLane::isWayFree(const Job& job) const
{
    if (job.places.path.isEmpty())
        return true;
    const auto first = std::ranges::find_if(
        m_jobs, [&job](const Ticket& other) { return other->places.path == job.places.path; });
    return first->get() == &job;
}

void FileLane::letPass()
{
    for (const Ticket& job : std::vector(m_jobs)) {
        if (isWayFree(*job))
            take(job, FileStep::Event::wayFree);
    }
}

void FileLane::write(const Ticket& job)
{
    m_executor([this, job] {
        const Places& places = job->places;
        if (!places.path.isEmpty())
            job->fate.file = outcomeOf(!job->png.isEmpty() && writePicture(places.path, job->png));
        if (places.history && m_prefs.keepHistory())
            job->fate.history =
                outcomeOf(m_history.add(job->png, QStringLiteral("png"), job->picture.image()));
        onMainThread([this, job] { take(job, FileStep::Event::written); });
    });
}

void FileLane::leave(const Ticket& job)
{
    std::erase(m_jobs, job);
    // Let go here: the last holder may be a piece of work that is about to end.
    const Answer answer = std::exchange(job->answer, {});
    answer(job->fate);
    letPass();
}

} // namespace brindlecam
