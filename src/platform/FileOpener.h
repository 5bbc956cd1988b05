#pragma once

#include <QString>

namespace brindlecam {

/// Opens files and folders with the user's own programs. Main thread; does not wait for them.
class FileOpener {
public:
    virtual ~FileOpener() = default;

    /// Opens a folder in the file manager. False when nothing could be started.
    virtual bool openFolder(const QString& path) = 0;
};

} // namespace brindlecam
