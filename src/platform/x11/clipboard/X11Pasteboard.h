#pragma once

#include "base/Executor.h"
#include "platform/Pasteboard.h"
#include "platform/x11/clipboard/SelectionThread.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <atomic>
#include <map>
#include <memory>
#include <utility>

namespace brindlecam {

/// The CLIPBOARD selection on a connection and a thread of its own.
///
/// Not QClipboard, which encodes and serves on the main thread, and (QXcbClipboard::setMimeData, in
/// 6.4 and still in 6.11) takes the selection with the time of the last event Qt saw: after a hot
/// key or a command that may be older than the present owner's, and the server silently refuses.
class X11Pasteboard final : public Pasteboard {
public:
    /// `pool` runs the TIFF encoder, off the main thread.
    explicit X11Pasteboard(Executor pool);

    void set(ClipboardContent content, QObject* context, Answer answer) override;
    void reveal() override;
    void handOver(QObject* context, std::function<void()> done) override;

private:
    using Number = quint64;
    /// Somebody who waits for an answer of the thread.
    struct Waiting {
        QPointer<QObject> context;
        Answer answer;
        QDeadlineTimer limit;
        std::shared_ptr<std::atomic_bool> leaves; ///< tells the thread that the limit is over
    };

    std::pair<Number, const Waiting&> await(QObject* context, Answer answer);
    /// What the selection's thread calls with its answer.
    [[nodiscard]] std::function<void(ClipboardFate)> tellerOf(Number number);
    void settle(Number number, ClipboardFate fate);
    void giveUpOverdue();

    std::map<Number, Waiting> m_waiting; ///< in the order they were asked
    Number m_last = 0;
    QObject m_mainThread;          ///< receives the thread's answers
    QTimer m_patience;             ///< runs while somebody waits
    x11::SelectionThread m_thread; ///< ends before what it answers to
};

} // namespace brindlecam
