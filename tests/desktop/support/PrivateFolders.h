#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

namespace brindlecam::desktop {

/// A home of its own for one program under test: nothing it reads or writes is the tester's.
class PrivateFolders final {
public:
    /// With a home that goes with them, or with one that stays.
    explicit PrivateFolders(const QString& home = {});

    [[nodiscard]] QString home() const { return m_home; }
    /// The runtime folder, readable by its owner only; it goes in any case. Its path is short, for
    /// sockets have little room for their names.
    [[nodiscard]] QString runtime() const { return m_root.filePath(QStringLiteral("run")); }
    [[nodiscard]] QString settingsFile() const { return inside("config/brindlecam/settings.json"); }
    /// Where captures go unless the settings say otherwise.
    [[nodiscard]] QString captures() const { return inside("Pictures/Brindlecam"); }
    [[nodiscard]] QString history() const { return inside("data/Brindlecam/Recientes"); }

    /// Sets HOME and the XDG folders.
    void addTo(QProcessEnvironment& environment) const;

private:
    [[nodiscard]] QString inside(const char* path) const;

    QTemporaryDir m_root;
    QString m_home;
};

} // namespace brindlecam::desktop
