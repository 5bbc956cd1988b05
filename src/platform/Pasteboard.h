#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace brindlecam {

/// The general clipboard. Main thread. We stay its owner while the program runs; large contents
/// are served without stopping the main loop.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Replaces the content by a picture: PNG bytes (may be empty: then only TIFF is offered) and a
    /// TIFF that `makeTiff` encodes when somebody first asks for it, on another thread. False when
    /// the clipboard could not be taken.
    virtual bool setPicture(const QByteArray& png, std::function<QByteArray()> makeTiff) = 0;

    /// Replaces the content by text. False when the clipboard could not be taken.
    virtual bool setText(const QString& text) = 0;

    /// Hands the content to a clipboard manager, when there is one, so that it outlives us. Waits
    /// for it, but not for long. For quitting.
    virtual void handOver() = 0;
};

} // namespace brindlecam
