#include "drawer/RecentDrawer.h"

#include "base/FreedMemory.h"
#include "base/Text.h"
#include "drawer/CaptureCaption.h"
#include "drawer/CaptureTile.h"
#include "drawer/DrawerPanel.h"
#include "drawer/TileRow.h"
#include "history/History.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "platform/Platform.h"
#include "preferences/Prefs.h"

#include <QApplication>
#include <QDrag>
#include <QScreen>

#include <algorithm>
#include <chrono>
#include <utility>

namespace brindlecam {

namespace {

/// How long thumbnails that are kept may keep the drawer from opening: as long as nobody notices.
constexpr std::chrono::milliseconds kThumbnailPatience{20};
/// In which a window manager has heard of a question's end.
constexpr std::chrono::milliseconds kManagerAnswers{1000};
/// From a press to the menu that it opens, where another program draws that.
constexpr std::chrono::milliseconds kMenuOpens{500};

} // namespace

RecentDrawer::RecentDrawer(const Rooms& rooms)
    : m_rooms(rooms)
    , m_actions({*rooms.platform.fileOpener, rooms.prefs, rooms.history, rooms.output, rooms.toast,
                 rooms.activity, rooms.executor})
    , m_clearing(rooms.history, rooms.alerts, rooms.executor)
    , m_preview(rooms.platform, rooms.toast, rooms.activity, rooms.executor)
    , m_tip({*rooms.platform.panels, *rooms.platform.displays, *rooms.platform.compositing},
            rooms.activity)
    , m_slide(*rooms.platform.panels)
{
    m_patience.setSingleShot(true);
    m_patience.callOnTimeout([this] { open(); });
    m_rooms.platform.displays->whenChanged(this, [this] { screensChanged(); });
    m_rooms.platform.compositing->whenChanged(this, [this] {
        const bool blends = m_rooms.platform.compositing->blends();
        if (m_opening && m_opening->drawer.panel)
            m_opening->drawer.panel->setBlends(blends);
        if (m_drawer.panel)
            m_drawer.panel->setBlends(blends);
    });
}

RecentDrawer::~RecentDrawer()
{
    delete m_question;
}

// Opening.

void RecentDrawer::show()
{
    const auto screen = m_drawer.panel ? std::optional(m_drawer.screen)
                                       : screenUnderPointer(*m_rooms.platform.displays);
    if (!screen)
        return;
    m_rooms.platform.frontApplication->remember();
    m_patience.stop(); // of one that was about to open
    m_opening = Opening{.drawer = {.screen = *screen}};
    m_loader = std::make_unique<TileLoader>(m_rooms.history.folders(), m_rooms.executor);
    m_loader->list([this](const std::vector<TileLoader::Entry>& entries) { listed(entries); });
}

// The panel is made while the thumbnails are read.
void RecentDrawer::listed(const std::vector<TileLoader::Entry>& entries)
{
    Drawer& drawer = m_opening->drawer;
    const int inSight =
        DrawerGeometry::tilesInSight(static_cast<int>(entries.size()), drawer.screen);
    // One that is open may be scrolled.
    m_opening->inSight = m_drawer.panel ? entries.size() : static_cast<std::size_t>(inSight);
    m_opening->awaited = m_opening->inSight;
    if (m_opening->awaited > 0) {
        m_patience.start(kThumbnailPatience);
        m_loader->load(entries, CaptureTile::thumbnailPixels(drawer.screen.scale),
                       [this](std::size_t index, const std::optional<Thumbnail>& thumbnail) {
                           loaded(index, thumbnail);
                       });
    }
    make(drawer, entries);
    if (m_opening->awaited == 0)
        open();
}

// Those in sight are read first, but others may overtake the last of them.
void RecentDrawer::loaded(std::size_t index, const std::optional<Thumbnail>& thumbnail)
{
    const DrawerPanel* const panel =
        m_opening ? m_opening->drawer.panel.get() : m_drawer.panel.get();
    if (panel && thumbnail)
        panel->row().captureTiles().at(index)->setThumbnail(
            *thumbnail, m_opening ? CaptureTile::Arrival::atOnce : CaptureTile::Arrival::fadesIn);
    if (m_opening && index < m_opening->inSight && --m_opening->awaited == 0)
        open();
}

void RecentDrawer::make(Drawer& drawer, const std::vector<TileLoader::Entry>& entries)
{
    using Entries = DrawerPanel::Entries;
    const int count = static_cast<int>(entries.size());
    drawer.places =
        DrawerGeometry::places(count, drawer.screen, m_rooms.platform.displays->layout());
    drawer.panel = std::make_unique<DrawerPanel>(
        DrawerGeometry::panelWidth(count, drawer.screen),
        count == 0 ? Entries::none : Entries::some,
        m_rooms.prefs.keepHistory()
            ? text("Aún no hay capturas. Haz una y aparecerá aquí.")
            : text("El historial está apagado. Puedes activarlo en Configuración."));
    DrawerPanel& panel = *drawer.panel;
    const QDateTime now = QDateTime::currentDateTime();
    const QLocale locale = CaptureCaption::locale();
    for (const TileLoader::Entry& entry : entries) {
        auto* const tile = new CaptureTile(
            entry.path, CaptureCaption::when(entry.written, now, locale), *m_rooms.platform.panels);
        wire(*tile);
        panel.row().append(tile);
    }
    wire(panel);
    m_rooms.platform.panels->assume(panel, PanelRole::drawer,
                                    DrawerSlide::firstPlace(drawer.places));
    panel.setBlends(m_rooms.platform.compositing->blends());
}

void RecentDrawer::wire(CaptureTile& tile)
{
    const QString path = tile.path();
    tile.onCopy = [this, path] {
        m_actions.copy(path, m_drawer.screen);
        hide();
    };
    tile.onPreview = [this, path] { preview(path); };
    tile.onOpenInPreview = [this, path] {
        m_actions.openInPreview(path, m_drawer.screen);
        hide();
    };
    tile.onReveal = [this, path] { m_actions.reveal(path, m_drawer.screen); };
    tile.onSaveToFolder = [this, path] { m_actions.saveToFolder(path, m_drawer.screen); };
    tile.onRemove = [this, path] { remove(path); };
    tile.onDragBegins = [this] { m_slide.setDragging(true); };
    tile.onDragEnds = [this](CaptureTile::Drag end) {
        dragEnds(end == CaptureTile::Drag::dropped);
    };
}

void RecentDrawer::wire(DrawerPanel& panel)
{
    // Twenty pictures of some hundred kilobytes lay among everything else.
    connect(&panel, &QObject::destroyed, this, [] { giveFreedMemoryBack(); });
    panel.onEscape = [this] { hide(); };
    panel.onSpace = [this] { previewBySpace(); };
    panel.onDelete = [this](const CaptureTile& tile) { askToRemove(tile); };
    panel.onClear = [this] { clearAll(); };
}

void RecentDrawer::open()
{
    Opening opening = *std::exchange(m_opening, std::nullopt);
    m_patience.stop();
    const bool replaces = m_drawer.panel != nullptr;
    const qreal scrolled = replaces ? m_drawer.panel->row().scrolled() : 0;
    const int focused = replaces ? m_drawer.panel->row().focusedIndex() : -1;
    discardPanel();
    m_drawer = std::move(opening.drawer);
    DrawerPanel& panel = *m_drawer.panel;
    m_tip.serve(panel, [this](QPointF place) {
        return m_drawer.places.open.topLeft() + (place * m_drawer.screen.scale).toPoint();
    });
    if (replaces)
        m_rooms.platform.panels->show(panel, m_drawer.places.open);
    else
        m_slide.in(panel, m_drawer.places);
    m_rooms.platform.panels->focus(panel);
    if (focused >= 0)
        panel.row().focusTile(focused);
    panel.row().scrollTo(scrolled); // the keys may be with a tile that is out of sight
    watchForTheEnd();
    m_loader->decodeMissing();
}

void RecentDrawer::watchForTheEnd()
{
    takeEscape();
    m_monitor = m_rooms.platform.foreignPresses->watch([this] { pressedElsewhere(); });
    m_drawer.panel->onLeft = [this] { keyboardLost(); };
    m_drawer.panel->onPressed = [this] { takeKeyboardBack(); };
}

// A window manager that hears late of a question's end hands the keyboard to whoever had it before
// that. Where nobody tells of presses elsewhere, its loss is the sign of one.
void RecentDrawer::keyboardLost()
{
    if (m_answered.isValid() && !m_answered.hasExpired(kManagerAnswers.count())) {
        m_answered.invalidate();
        m_rooms.platform.panels->focus(*m_drawer.panel);
    } else if (!m_monitor) {
        pressedElsewhere();
    }
}

// Another program may have it by now, and gets it back in the end. The window manager gives the
// panel nothing, as it has no part in it; Qt hears late of a loss, so that it is not asked.
void RecentDrawer::takeKeyboardBack()
{
    m_rooms.platform.frontApplication->remember();
    m_rooms.platform.panels->focus(*m_drawer.panel);
}

// Its own hot key, because the keyboard may be somewhere else by now.
void RecentDrawer::takeEscape()
{
    m_escapeKey = m_rooms.platform.hotKeys->takeKey(PlainKey::escape, [this] {
        if (m_slide.isDragging())
            QDrag::cancel();
        else
            hide();
    });
}

// Closing.

void RecentDrawer::close(Focus focus)
{
    if (!isOpen())
        return;
    m_opening.reset();
    m_patience.stop();
    m_loader.reset();
    m_escapeKey.reset();
    m_monitor.reset();
    m_tip.dismiss();
    // Whoever works in another window by now stays there.
    if (focus == Focus::goesBack && hasKeyboard())
        m_rooms.platform.frontApplication->giveBack();
    delete m_question;
    if (!m_drawer.panel)
        return;
    m_slide.out(std::move(m_drawer.panel), m_drawer.places);
}

// Or what it asks.
bool RecentDrawer::hasKeyboard() const
{
    return (m_question && m_question->isActiveWindow()) ||
           (m_drawer.panel && m_drawer.panel->isActiveWindow());
}

bool RecentDrawer::leave(Focus focus)
{
    const bool tip = m_tip.dismiss();
    if (m_slide.isDragging())
        QDrag::cancel();
    close(focus);
    const bool moving = m_slide.cutShort();
    const bool preview = m_preview.leave(focus);
    return tip || moving || preview;
}

void RecentDrawer::discardPanel()
{
    if (!m_drawer.panel)
        return;
    m_tip.dismiss();
    delete m_question;
    m_slide.cutShort();
    m_slide.discard(std::move(m_drawer.panel));
}

// A press that ends our own menu, answers our own question or belongs to a drag is none.
void RecentDrawer::pressedElsewhere()
{
    if (m_question || m_slide.isDragging() || QApplication::activePopupWidget())
        return;
    close(Focus::isTaken);
    m_pressedAway.start();
}

bool RecentDrawer::wasJustPressedAway() const
{
    return m_pressedAway.isValid() && !m_pressedAway.hasExpired(kMenuOpens.count());
}

void RecentDrawer::screensChanged()
{
    const auto screens = m_rooms.platform.displays->layout();
    const ScreenInfo& screen = m_opening ? m_opening->drawer.screen : m_drawer.screen;
    const bool same = std::ranges::any_of(
        screens, [&screen](const ScreenInfo& other) { return other.sameDisplay(screen); });
    if (isOpen() && !same)
        leave(Focus::goesBack);
}

// What is asked of it.

void RecentDrawer::previewBySpace()
{
    const TileRow& row = m_drawer.panel->row();
    if (row.captureTiles().empty())
        return;
    const CaptureTile* chosen = row.focusedTile();
    if (!chosen)
        chosen = row.hoveredTile();
    preview((chosen ? chosen : row.captureTiles().front())->path());
}

void RecentDrawer::preview(const QString& path)
{
    close(Focus::isTaken);
    m_preview.show(path, m_drawer.screen);
}

void RecentDrawer::remove(const QString& path)
{
    m_actions.remove(path, [this] {
        if (m_drawer.panel)
            show();
    });
}

void RecentDrawer::askToRemove(const CaptureTile& tile)
{
    if (m_question)
        return;
    m_answered.invalidate();
    m_escapeKey.reset(); // it is the question's
    m_question = m_rooms.alerts.show(
        {.message = text("¿Quitar esta captura de recientes?"),
         .informative = text("Se borra definitivamente la copia interna del cajón. No afecta a los "
                             "archivos de tu carpeta de capturas ni a lo que ya pegaste."),
         .buttons = {text("Quitar"), text("Cancelar")},
         .within = m_drawer.panel->screen()->geometry()},
        [this, path = tile.path()](std::optional<int> chosen) {
            constexpr int kRemove = 0;
            m_question = nullptr;
            if (!m_drawer.panel)
                return;
            m_rooms.platform.panels->focus(*m_drawer.panel);
            m_answered.start();
            takeEscape();
            if (chosen == kRemove)
                remove(path);
        });
}

void RecentDrawer::clearAll()
{
    close(Focus::isTaken);
    m_clearing.confirmAndClear([this, screen = m_drawer.screen](bool cleared) {
        if (cleared)
            m_rooms.toast.show(text("Capturas recientes vaciadas"), screen);
        if (!m_rooms.activity.any())
            m_rooms.platform.frontApplication->giveBack();
    });
}

void RecentDrawer::dragEnds(bool dropped)
{
    m_slide.setDragging(false);
    if (dropped)
        hide();
}

} // namespace brindlecam
