#pragma once

#include <QString>

#include <functional>

class QObject;
class QUrl;

namespace brindlecam {

/// Opens files and folders with the user's own programs. Main thread; waits for none of them. Each
/// `done` runs later on the main thread, never before the call returns and never once `context` is
/// gone.
class FileOpener {
public:
    using Done = std::function<void(bool opened)>;

    virtual ~FileOpener() = default;

    /// Opens a folder in the file manager; false when there is no such folder or nothing could open
    /// it.
    virtual void openFolder(const QString& path, QObject* context, Done done) = 0;

    /// Opens a file with the program that the user has for its kind; false when there is no such
    /// file or nothing could open it.
    virtual void openFile(const QString& path, QObject* context, Done done) = 0;

    /// Opens a page of the web in the user's browser; false when nothing could open it.
    virtual void openPage(const QUrl& page, QObject* context, Done done) = 0;

    /// Shows a file in its folder, selected where the file manager can do that; false when there is
    /// no such file or nothing could show it.
    virtual void reveal(const QString& path, QObject* context, Done done) = 0;

    /// Shows a file large, in the way that this desktop has for it; false when it has none, and the
    /// program shows it by itself. After true false may follow: whoever showed it has gone.
    virtual void preview(const QString& path, QObject* context, Done done) = 0;

    /// Takes that off the screen again, if it is there or comes only now.
    virtual void endPreview() = 0;
};

} // namespace brindlecam
