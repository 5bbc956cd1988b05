#include "DrawerPictures.h"

#include "OpenDialog.h"
#include "Photographer.h"
#include "base/WorkPool.h"
#include "capture/Output.h"
#include "drawer/CaptureTile.h"
#include "drawer/DrawerPanel.h"
#include "drawer/PreviewWindow.h"
#include "drawer/RecentDrawer.h"
#include "drawer/TileRow.h"
#include "history/History.h"
#include "look/PanelButton.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "pictures/PngWriter.h"
#include "platform/Platform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"

#include <QApplication>
#include <QCursor>
#include <QFile>
#include <QHelpEvent>
#include <QMenu>
#include <QScreen>
#include <QTemporaryDir>

#include <cstddef>

namespace brindlecam::pictures {

namespace {

/// What is captured of the screen, in points, and how long ago.
struct Capture {
    QRectF area;
    qint64 secondsAgo;
};

constexpr qint64 kHour = 3600;
constexpr qint64 kDay = 24 * kHour;
constexpr int kMostEntries = 20;

/// Newest first, again and again: as wide as high, wide, a strip, high, tiny, and a whole screen.
const std::vector<Capture> kCaptures{
    {{90, 90, 420, 420}, 40},        {{0, 0, 1280, 800}, kHour},
    {{60, 300, 900, 60}, kDay},      {{500, 60, 90, 700}, 3 * kDay},
    {{100, 100, 24, 16}, 40 * kDay}, {{130, 120, 380, 260}, 400 * kDay},
};

/// The program's drawer, with a history of its own.
class World final {
public:
    explicit World(Photographer& photographer)
        : m_photographer(photographer)
    {
        const ScreenInfo screen = photographer.screen();
        for (const Capture& capture : kCaptures)
            m_looks.push_back(photographer.look(screen.toNative(capture.area)));
    }

    /// Opens it with so many entries, and waits until it stands.
    DrawerPanel& open(int entries)
    {
        m_history.clear();
        for (int age = entries - 1; age >= 0; --age)
            add(static_cast<std::size_t>(age));
        m_drawer.show();
        m_photographer.await(QStringLiteral("the drawer"),
                             [this] { return m_drawer.panel() != nullptr; });
        m_photographer.rest();
        return *m_drawer.panel();
    }
    void close()
    {
        m_drawer.leave(ScreenCover::Focus::goesBack);
        m_photographer.rest();
    }
    [[nodiscard]] RecentDrawer& drawer() { return m_drawer; }
    void keepHistory(bool keep) { m_defaults.setBoolean(QStringLiteral("keepHistory"), keep); }

private:
    void add(std::size_t age)
    {
        const std::size_t which = age % kCaptures.size();
        const QImage& look = m_looks[which];
        m_history.add(PngWriter::encode(look, {.cancelled = {}}), QStringLiteral("png"), look);
        QFile file(m_history.items().constFirst());
        const bool dated =
            file.open(QIODevice::ReadWrite) &&
            file.setFileTime(QDateTime::currentDateTime().addSecs(-kCaptures[which].secondsAgo),
                             QFileDevice::FileModificationTime);
        if (!dated)
            qFatal("cannot date %s", qPrintable(file.fileName()));
    }

    Photographer& m_photographer;
    std::vector<QImage> m_looks;
    QTemporaryDir m_folder;
    Defaults m_defaults{m_folder.filePath(QStringLiteral("settings.json"))};
    Prefs m_prefs{m_defaults};
    Platform& m_platform = m_photographer.platform();
    Activity m_activity;
    Alerts m_alerts{*m_platform.panels};
    Toast m_toast{*m_platform.displays, *m_platform.panels, *m_platform.compositing};
    History m_history{{m_folder.filePath(QStringLiteral("recientes")),
                       m_folder.filePath(QStringLiteral("miniaturas"))}};
    Output m_output{*m_platform.pasteboard, m_history, m_prefs, WorkPool::run};
    RecentDrawer m_drawer{
        {m_platform, m_prefs, m_history, m_output, m_toast, m_alerts, m_activity, WorkPool::run}};
};

void takeCounts(Photographer& photographer, World& world)
{
    for (const int entries : {0, 1, 3, kMostEntries}) {
        world.open(entries);
        photographer.take(QStringLiteral("drawer-%1").arg(entries, 2, 10, QLatin1Char('0')));
        world.close();
    }
    world.keepHistory(false);
    world.open(0);
    photographer.take(QStringLiteral("drawer-history-off"));
    world.close();
    world.keepHistory(true);
}

void takeMarkedTiles(Photographer& photographer, World& world)
{
    DrawerPanel& panel = world.open(kMostEntries);
    CaptureTile& tile = *panel.row().captureTiles().at(1);
    tile.setHovering(true);
    photographer.take(QStringLiteral("drawer-tile-hovered"));
    panel.row().focusTile(1);
    photographer.take(QStringLiteral("drawer-tile-hovered-focused"));
    tile.setHovering(false);
    photographer.take(QStringLiteral("drawer-tile-focused"));
    const QPoint at = tile.rect().center();
    QHelpEvent rest(QEvent::ToolTip, at, tile.mapToGlobal(at));
    QCoreApplication::sendEvent(&tile, &rest);
    photographer.take(QStringLiteral("drawer-tip"));
    panel.row().focusTile(kMostEntries - 1);
    photographer.take(QStringLiteral("drawer-last-tile"));
    panel.findChild<PanelButton*>()->setFocus(Qt::TabFocusReason);
    photographer.take(QStringLiteral("drawer-button-focused"));
    world.close();
}

void takeMenuAndQuestions(Photographer& photographer, World& world)
{
    DrawerPanel& panel = world.open(kMostEntries);
    CaptureTile& tile = *panel.row().captureTiles().front();
    tile.openMenu(tile.rect().center());
    photographer.await(QStringLiteral("the menu"),
                       [] { return QApplication::activePopupWidget() != nullptr; });
    photographer.take(QStringLiteral("drawer-menu"));
    QApplication::activePopupWidget()->close();
    panel.onDelete(tile);
    takeOpenDialog(photographer, "drawer-remove");
    world.close();

    world.open(kMostEntries).onClear();
    takeOpenDialog(photographer, "drawer-clear");
}

void takePreviews(Photographer& photographer, World& world)
{
    for (std::size_t i = 0; i < kCaptures.size(); ++i) {
        const DrawerPanel& panel = world.open(static_cast<int>(kCaptures.size()));
        panel.row().captureTiles().at(i)->onPreview();
        photographer.await(QStringLiteral("the preview"), [&] {
            const PreviewWindow* const window = world.drawer().largePreview().window();
            return window && window->isVisible();
        });
        photographer.take(QStringLiteral("drawer-preview-%1").arg(i));
        world.close();
    }
}

} // namespace

void takeDrawerPictures(Photographer& photographer)
{
    // The pointer stands where no tile comes.
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QCursor::setPos(screen.right() - 1, screen.height() / 3);
    World world(photographer);
    takeCounts(photographer, world);
    takeMarkedTiles(photographer, world);
    takeMenuAndQuestions(photographer, world);
    takePreviews(photographer, world);
}

} // namespace brindlecam::pictures
