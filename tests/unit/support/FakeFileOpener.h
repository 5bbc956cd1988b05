#pragma once

#include "platform/FileOpener.h"

#include <QObject>
#include <QStringList>

#include <utility>

namespace brindlecam::test {

/// Notes what it should have opened, and answers what it is told to.
class FakeFileOpener final : public FileOpener {
public:
    QStringList opened;
    bool succeeds = true;

    void openFolder(const QString& path, QObject* context, Done done) override
    {
        opened << path;
        QMetaObject::invokeMethod(
            context, [done = std::move(done), opened = succeeds] { done(opened); },
            Qt::QueuedConnection);
    }
};

} // namespace brindlecam::test
