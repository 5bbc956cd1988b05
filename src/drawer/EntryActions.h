#pragma once

#include "base/Background.h"
#include "base/ScreenInfo.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace brindlecam {

class Activity;
class FileOpener;
class History;
class Output;
class Prefs;
class Toast;

/// What can be done with an entry of the history without the drawer: copied, opened, shown in its
/// folder, saved, removed. Main thread, files on the executor; what fails is told by a toast.
class EntryActions final : public QObject {
    Q_OBJECT

public:
    /// What it works with; all of it outlives this.
    struct Rooms {
        FileOpener& opener;
        const Prefs& prefs;
        const History& history;
        Output& output;
        Toast& toast;
        const Activity& activity;
        Executor executor;
    };

    explicit EntryActions(Rooms rooms);

    /// Puts it on the clipboard, and tells.
    void copy(const QString& path, const ScreenInfo& screen);
    /// Opens it with the system's image viewer.
    void openInPreview(const QString& path, const ScreenInfo& screen);
    /// Shows it in the file manager.
    void reveal(const QString& path, const ScreenInfo& screen);
    /// Puts a copy into the captures folder under a new name, and shows that in the file manager.
    void saveToFolder(const QString& path, const ScreenInfo& screen);
    /// Deletes it for good; `done` runs later.
    void remove(const QString& path, std::function<void()> done);

private:
    void tell(const std::optional<QString>& message, const ScreenInfo& screen);

    const Rooms m_rooms;
    const Background m_background;
};

} // namespace brindlecam
