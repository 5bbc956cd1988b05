#pragma once

#include "base/Executor.h"
#include "platform/Pasteboard.h"
#include "platform/linux/x11/ClipboardContent.h"
#include "platform/linux/x11/SelectionThread.h"

namespace brindlecam {

/// The CLIPBOARD selection on a connection and a thread of its own. Qt's clipboard would encode and
/// wait on the main thread, and takes the selection with the time of the last event Qt saw: after a
/// hot key or a command that is older than the present owner's, and the server silently refuses.
class X11Pasteboard final : public Pasteboard {
public:
    /// `pool` runs the TIFF encoder, off the main thread.
    explicit X11Pasteboard(Executor pool);

    bool setPicture(const QByteArray& png, std::function<QByteArray()> makeTiff) override;
    bool setText(const QString& text) override;
    void handOver() override;

private:
    bool take(x11::ClipboardContent content);

    x11::SelectionThread m_thread;
};

} // namespace brindlecam
