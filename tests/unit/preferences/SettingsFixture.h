#pragma once

#include "support/Files.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace brindlecam::test {

/// A place for settings, and two keys to set in them.
struct SettingsFixture {
    std::unique_ptr<QTemporaryDir> place = std::make_unique<QTemporaryDir>();
    const QString kOld = QStringLiteral("old");
    const QString kNew = QStringLiteral("new");

    void startFresh() { place = std::make_unique<QTemporaryDir>(); }

    /// The settings; there is no such file yet.
    [[nodiscard]] QString file() const { return place->filePath(QStringLiteral("settings.json")); }

    /// The keys in a file as it stands, sorted.
    [[nodiscard]] static QStringList keysIn(const QString& path)
    {
        return QJsonDocument::fromJson(contentOf(path)).object().keys();
    }
};

} // namespace brindlecam::test
