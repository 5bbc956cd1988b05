#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

namespace brindlecam {

/// What the clipboard offers at one time: the same thing in several formats, the best one first.
struct ClipboardContent {
    struct Format {
        QByteArray mimeType;
        QByteArray bytes;
        /// Makes the bytes when they are first asked for; runs on any thread, at most once. Empty:
        /// `bytes` are there already.
        std::function<QByteArray()> make;
    };
    std::vector<Format> formats;
    /// Clipboard managers are asked to leave it alone until Pasteboard::reveal().
    bool concealed = false;

    /// PNG bytes (may be empty: then only TIFF is offered) and what makes a TIFF of them.
    [[nodiscard]] static ClipboardContent picture(const QByteArray& png,
                                                  std::function<QByteArray()> makeTiff);
    [[nodiscard]] static ClipboardContent text(const QString& text);
};

} // namespace brindlecam
