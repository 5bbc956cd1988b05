#pragma once

#include "platform/FileOpener.h"

#include <QStringList>

namespace brindlecam::test {

/// Notes what it should have opened.
class FakeFileOpener final : public FileOpener {
public:
    QStringList opened;

    bool openFolder(const QString& path) override
    {
        opened << path;
        return true;
    }
};

} // namespace brindlecam::test
