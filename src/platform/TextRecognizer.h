#pragma once

#include "base/Result.h"

#include <QImage>
#include <QObject>
#include <QStringList>

#include <functional>

namespace brindlecam {

/// Reads text out of pictures, Spanish first and English second. Called on the main thread; works
/// on another.
class TextRecognizer {
public:
    /// The lines in reading order, none when there is no text. The error says in words fit for the
    /// user what is missing.
    using Done = std::function<void(Result<QStringList>)>;

    virtual ~TextRecognizer() = default;

    /// Loads what reading needs ahead of the first time. Does so once; later calls do nothing. What
    /// fails here is told by recognize().
    virtual void warmUp() = 0;

    /// Reads a picture in its own pixels. `done` is called on the main thread, never within this
    /// call, and not at all once `context` is gone: then the reading ends soon. `context` must not
    /// be null. Several readings are done one after the other, and each reports.
    virtual void recognize(const QImage& picture, QObject* context, Done done) = 0;
};

} // namespace brindlecam
