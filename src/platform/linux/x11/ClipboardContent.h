#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

namespace brindlecam::x11 {

/// What the clipboard offers at one time, in order of preference.
struct ClipboardContent {
    struct Format {
        QByteArray target; ///< name of the atom that asks for it
        QByteArray type;   ///< name of the atom that says what the bytes are
        QByteArray bytes;
        /// Makes the bytes when they are first asked for; runs on any thread, at most once. Empty:
        /// `bytes` are there already.
        std::function<QByteArray()> make;
    };
    std::vector<Format> formats;
    /// What a clipboard manager is asked to keep: nothing that would first have to be made.
    std::vector<QByteArray> kept;

    [[nodiscard]] static ClipboardContent picture(const QByteArray& png,
                                                  std::function<QByteArray()> makeTiff);
    [[nodiscard]] static ClipboardContent text(const QString& text);
};

} // namespace brindlecam::x11
