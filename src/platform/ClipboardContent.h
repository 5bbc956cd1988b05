#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

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
    /// Files, by their absolute paths: what file managers copy, and whoever takes files pastes.
    [[nodiscard]] static ClipboardContent files(const QStringList& paths);
    /// An animation: its file for who takes files (no path: it has none), its bytes for who takes
    /// pictures (may be empty: then only the file is offered).
    [[nodiscard]] static ClipboardContent gif(const QByteArray& bytes, const QString& path);
};

} // namespace brindlecam
