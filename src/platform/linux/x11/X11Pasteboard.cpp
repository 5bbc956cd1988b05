#include "platform/linux/x11/X11Pasteboard.h"

#include <QSemaphore>

#include <atomic>
#include <memory>
#include <utility>

namespace brindlecam {

namespace {

constexpr int kTakeMs = 1000;
constexpr int kHandOverMs = 2000;

/// An answer of the selection's thread that the main thread waits for. Shared, because the main
/// thread may have stopped waiting.
struct Answer {
    QSemaphore given;
    std::atomic_bool yes = false;
};

} // namespace

X11Pasteboard::X11Pasteboard(Executor pool)
    : m_thread(std::move(pool))
{
}

bool X11Pasteboard::setPicture(const QByteArray& png, std::function<QByteArray()> makeTiff)
{
    return take(x11::ClipboardContent::picture(png, std::move(makeTiff)));
}

bool X11Pasteboard::setText(const QString& text)
{
    return take(x11::ClipboardContent::text(text));
}

bool X11Pasteboard::take(x11::ClipboardContent content)
{
    const auto answer = std::make_shared<Answer>();
    const bool asked =
        m_thread.post([answer, content = std::move(content)](x11::SelectionOwner& owner) {
            owner.take(content, [answer](bool taken) {
                answer->yes = taken;
                answer->given.release();
            });
        });
    return asked && answer->given.tryAcquire(1, kTakeMs) && answer->yes;
}

void X11Pasteboard::handOver()
{
    const auto answer = std::make_shared<Answer>();
    const bool asked = m_thread.post([answer](x11::SelectionOwner& owner) {
        owner.handOver([answer] { answer->given.release(); });
    });
    if (asked)
        answer->given.tryAcquire(1, kHandOverMs);
}

} // namespace brindlecam
