#pragma once

#include "base/ScreenInfo.h"
#include "capture/ScreenCover.h"
#include "drawer/CapturePreview.h"
#include "drawer/DrawerGeometry.h"
#include "drawer/DrawerSlide.h"
#include "drawer/EntryActions.h"
#include "drawer/TileLoader.h"
#include "history/ConfirmedClearing.h"
#include "notices/WindowTip.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace brindlecam {

class Activity;
class Alerts;
class CaptureTile;
class DrawerPanel;
class Output;
class PressWatch;
class Prefs;
class TakenKey;
class Toast;
struct Platform;

/// The recent captures in a drawer at the bottom of the screen with the pointer, made anew each
/// time it opens. Main thread; the history is read on the executor.
class RecentDrawer final : public QObject, public ScreenCover {
    Q_OBJECT

public:
    /// What it works with; all of it outlives the drawer.
    struct Rooms {
        Platform& platform;
        const Prefs& prefs;
        const History& history;
        Output& output;
        Toast& toast;
        Alerts& alerts;
        const Activity& activity;
        Executor executor;
    };

    explicit RecentDrawer(const Rooms& rooms);
    ~RecentDrawer() override;

    /// Whether it is on the screen, or about to be.
    [[nodiscard]] bool isOpen() const { return m_opening.has_value() || m_drawer.panel; }

    /// Opens it with the history as it is now. One that is open is replaced where it is.
    void show();
    /// Closes it; the focus goes back to where it was. Nothing when it is closed.
    void hide() { close(Focus::goesBack); }

    /// With the large preview.
    bool leave(Focus focus) override;

    /// Whether a press elsewhere has just closed it: perhaps the one that opened a menu, from which
    /// it is to be closed.
    [[nodiscard]] bool wasJustPressedAway() const;

    /// The open panel, or null.
    [[nodiscard]] DrawerPanel* panel() const { return m_drawer.panel.get(); }
    [[nodiscard]] const CapturePreview& largePreview() const { return m_preview; }

private:
    /// A panel, and where it belongs.
    struct Drawer {
        ScreenInfo screen;
        DrawerGeometry::Places places{};
        std::unique_ptr<DrawerPanel> panel{};
    };
    /// From the call of show() until the panel is on the screen.
    struct Opening {
        Drawer drawer;           ///< with its panel once the entries are listed
        std::size_t inSight = 0; ///< so many thumbnails it waits for, from the first entry's on
        std::size_t awaited = 0; ///< how many of these are yet to come
    };

    void listed(const std::vector<TileLoader::Entry>& entries);
    void loaded(std::size_t index, const std::optional<Thumbnail>& thumbnail);
    void make(Drawer& drawer, const std::vector<TileLoader::Entry>& entries);
    void wire(CaptureTile& tile);
    void wire(DrawerPanel& panel);
    void open();
    void watchForTheEnd();

    void close(Focus focus);
    void discardPanel();
    void pressedElsewhere();
    void keyboardLost();
    void takeKeyboardBack();
    [[nodiscard]] bool hasKeyboard() const;
    void screensChanged();

    void previewBySpace();
    void preview(const QString& path);
    void askToRemove(const CaptureTile& tile);
    void remove(const QString& path);
    void clearAll();
    void dragEnds(bool dropped);
    void takeEscape();

    const Rooms m_rooms;
    EntryActions m_actions;
    ConfirmedClearing m_clearing;
    CapturePreview m_preview;
    WindowTip m_tip;
    DrawerSlide m_slide;
    std::unique_ptr<TileLoader> m_loader; ///< of the drawer that is open or opens
    std::optional<Opening> m_opening;
    QTimer m_patience; ///< until it opens without the thumbnails that it waits for
    Drawer m_drawer;   ///< the latest; its panel is null when it is closed
    std::unique_ptr<TakenKey> m_escapeKey;
    std::unique_ptr<PressWatch> m_monitor;
    QElapsedTimer m_pressedAway;  ///< since a press elsewhere has closed it
    QElapsedTimer m_answered;     ///< since a question about a tile was answered
    QPointer<QDialog> m_question; ///< about a tile, while it is open; goes with the drawer
};

} // namespace brindlecam
