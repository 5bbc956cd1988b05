// Tells ThreadSanitizer of the orders that Qt guarantees. Qt is not instrumented and its locks are
// bare futexes, so the sanitizer does not see that a job of a pool runs after start() and ends
// before waitForDone() returns, that a thread ends before wait() does, nor that a queued call runs
// after invokeMethod(). Linked into the test programs, where these functions take the place of
// Qt's, and call them.
#include <QDeadlineTimer>
#include <QObject>
#include <QRunnable>
#include <QThread>
#include <QThreadPool>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

#include <cstdlib>
#include <functional>
#include <future>
#include <utility>

namespace {

/// Qt's own function of this name, which comes after ours in the order of the libraries.
template <typename Function>
Function qtOwn(const char* name)
{
    static_assert(sizeof(Function) == sizeof(void*));
    void* const found = ::dlsym(RTLD_NEXT, name);
    if (!found)
        std::abort(); // another version of Qt: the name is to be brought up to date
    return reinterpret_cast<Function>(found);
}

/// Runs after it was made, and is gone before its pool is done.
class OrderedJob final : public QRunnable {
public:
    OrderedJob(const QThreadPool* pool, std::function<void()> job)
        : m_pool(pool)
        , m_job(std::move(job))
    {
        __tsan_release(this);
    }
    ~OrderedJob() override
    {
        m_job = nullptr;
        __tsan_release(const_cast<QThreadPool*>(m_pool));
    }

    void run() override
    {
        __tsan_acquire(this);
        m_job();
    }

private:
    const QThreadPool* const m_pool;
    std::function<void()> m_job;
};

using Slot = QtPrivate::QSlotObjectBase;

/// A queued call that runs after it was made and is destroyed after it has run: on the thread that
/// made it, should that be the last to let it go.
class OrderedCall final : public Slot {
public:
    explicit OrderedCall(Slot* slot)
        : Slot(&OrderedCall::act)
        , m_slot(slot)
    {
        __tsan_release(this);
    }

private:
    static void act(int what, Slot* self, QObject* receiver, void** arguments, bool* /*unused*/)
    {
        __tsan_acquire(self);
        auto* const call = static_cast<OrderedCall*>(self);
        if (what == Destroy) {
            call->m_slot->destroyIfLastRef();
            delete call;
        } else if (what == Call) {
            call->m_slot->call(receiver, arguments);
            __tsan_release(self);
        }
    }

    Slot* const m_slot;
};

} // namespace

void QThreadPool::start(std::function<void()> job, int priority)
{
    start(new OrderedJob(this, std::move(job)), priority);
}

bool QThreadPool::waitForDone(int milliseconds)
{
    using Wait = bool (*)(QThreadPool*, int);
    static const auto wait = qtOwn<Wait>("_ZN11QThreadPool11waitForDoneEi");
    const bool done = wait(this, milliseconds);
    __tsan_acquire(this);
    return done;
}

QThread* QThread::createThreadImpl(std::future<void>&& work)
{
    using Create = QThread* (*)(std::future<void> &&);
    static const auto create = qtOwn<Create>("_ZN7QThread16createThreadImplEOSt6futureIvE");
    QThread* const thread = create(std::move(work));
    QObject::connect(
        thread, &QThread::finished, thread, [thread] { __tsan_release(thread); },
        Qt::DirectConnection);
    return thread;
}

bool QThread::wait(QDeadlineTimer deadline)
{
    using Wait = bool (*)(QThread*, QDeadlineTimer);
    static const auto wait = qtOwn<Wait>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool ended = wait(this, deadline);
    if (ended)
        __tsan_acquire(this);
    return ended;
}

bool QMetaObject::invokeMethodImpl(QObject* receiver, Slot* slot, Qt::ConnectionType type,
                                   void* result)
{
    using Invoke = bool (*)(QObject*, Slot*, Qt::ConnectionType, void*);
    static const auto invoke = qtOwn<Invoke>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt"
        "14ConnectionTypeEPv");
    return invoke(receiver, type == Qt::QueuedConnection ? new OrderedCall(slot) : slot, type,
                  result);
}
