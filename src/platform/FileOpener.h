#pragma once

#include <QString>

#include <functional>

class QObject;

namespace brindlecam {

/// Opens files and folders with the user's own programs. Main thread; waits for none of them.
class FileOpener {
public:
    using Done = std::function<void(bool opened)>;

    virtual ~FileOpener() = default;

    /// Opens a folder in the file manager. `done` runs later on the main thread, never before this
    /// returns and never once `context` is gone; false when there is no such folder or nothing
    /// could open it.
    virtual void openFolder(const QString& path, QObject* context, Done done) = 0;
};

} // namespace brindlecam
