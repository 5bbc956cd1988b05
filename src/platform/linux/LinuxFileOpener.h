#pragma once

#include "platform/FileOpener.h"

namespace brindlecam {

/// Opens through the desktop's own choice of program (xdg-open or the portal).
class LinuxFileOpener final : public FileOpener {
public:
    /// False also when there is no such folder.
    bool openFolder(const QString& path) override;
};

} // namespace brindlecam
