#pragma once

#include <QString>
#include <QStringList>

namespace brindlecam {

/// The file by which a desktop session starts the program, among those of the user and of the
/// system. Any thread; as slow as the disk.
class AutostartEntry final {
public:
    struct Places {
        QString own;           ///< the user's folder of such files; need not exist
        QStringList systems{}; ///< the machine's, the first counts before the next
        QString program;       ///< what the session is to start: a full path
    };

    explicit AutostartEntry(Places places);

    /// Those of this user, for the program that is running.
    [[nodiscard]] static Places standardPlaces();

    [[nodiscard]] QString path() const;

    /// Whether the session would start a program that is there: the user's file counts, where there
    /// is none, the machine's.
    [[nodiscard]] bool isEnabled() const;

    /// False when the file can't be written.
    [[nodiscard]] bool enable() const;
    /// Removes the file, or overrules that of the machine; false when that can't be done.
    [[nodiscard]] bool disable() const;

private:
    [[nodiscard]] QString systemFile() const;

    const Places m_places;
};

} // namespace brindlecam
