#include "drawer/DrawerPanel.h"

#include "base/Text.h"
#include "drawer/CaptureTile.h"
#include "drawer/DrawerGeometry.h"
#include "drawer/TileRow.h"
#include "look/InterfaceFont.h"
#include "look/PanelButton.h"
#include "preferences/Config.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QWindow>

#include <algorithm>

namespace brindlecam {

namespace {

// Points. Lower edges are counted from the top.
constexpr int kTitleBottom = 32;
constexpr int kHelpBottom = 31;
constexpr int kClearBottom = 35;
constexpr int kEmptyBottom = 129;
constexpr int kHeaderGap = 12;
constexpr qreal kPanelRadius = 16;
constexpr qreal kPanelBorder = 1;
constexpr qreal kTitleSize = 13;
constexpr qreal kHelpSize = 11;
constexpr qreal kEmptySize = 13;

/// Darker than opaque ones, so that the cards stand out over a light desktop, too.
const QColor kBlendedGround = QColor::fromRgbF(0.05F, 0.05F, 0.05F, 0.92F);
constexpr int kHelpAlpha = 140;  // 0.55
constexpr int kEmptyAlpha = 153; // 0.6
const QColor kPanelBorderColor = QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.12F);

QLabel* makeLabel(const QString& words, const QFont& font, int alpha, QWidget* parent)
{
    auto* const label = new QLabel(words, parent);
    label->setTextFormat(Qt::PlainText);
    label->setFont(font);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, QColor(255, 255, 255, alpha));
    label->setPalette(palette);
    label->adjustSize();
    return label;
}

void placeAbove(QWidget& widget, int left, int bottom)
{
    widget.move(left, bottom - widget.height());
}

} // namespace

DrawerPanel::DrawerPanel(qreal width, Entries entries, const QString& emptyText)
    : m_width(width)
    , m_title(
          makeLabel(text("🍃  Capturas recientes"), InterfaceFont::semibold(kTitleSize), 255, this))
    , m_help(makeLabel(text("Clic: copiar  ·  Espacio: ver en grande  ·  Arrastrar: soltar en otra "
                            "app  ·  Clic derecho: más  ·  Esc: cerrar"),
                       InterfaceFont::regular(kHelpSize), kHelpAlpha, this))
    , m_empty(makeLabel(emptyText, InterfaceFont::regular(kEmptySize), kEmptyAlpha, this))
    , m_clear(new PanelButton(text("Vaciar"), PanelButton::Size::small, this))
    , m_row(new TileRow(this))
{
    setWindowTitle(text("Capturas recientes"));
    setAccessibleName(windowTitle());
    setFocusPolicy(Qt::TabFocus); // a press on it leaves the tiles their keys
    m_clear->setToolTip(text("Borrar definitivamente todas las capturas recientes"));
    connect(m_clear, &QAbstractButton::clicked, this, [this] { onClear(); });
    layOut(entries);
    // Or the button would get the keys with the window.
    setFocus();
}

DrawerPanel::~DrawerPanel() = default;

void DrawerPanel::layOut(Entries entries)
{
    const bool some = entries == Entries::some;
    m_row->setVisible(some);
    m_clear->setVisible(some);
    m_empty->setVisible(!some);
    m_row->setGeometry(QRectF(DrawerGeometry::kMargin, DrawerGeometry::kRowTop,
                              m_width - 2 * DrawerGeometry::kMargin, DrawerGeometry::kTile.height())
                           .toRect());
    placeAbove(*m_empty, qRound((m_width - m_empty->width()) / 2), kEmptyBottom);
    layOutHeader(entries);
}

// From the right: what there is no room for beside the title is left out.
void DrawerPanel::layOutHeader(Entries entries)
{
    placeAbove(*m_title, qRound(DrawerGeometry::kMargin), kTitleBottom);
    int right = qRound(m_width - DrawerGeometry::kMargin);
    if (entries == Entries::some) {
        m_clear->resize(m_clear->sizeHint());
        placeAbove(*m_clear, right - m_clear->width(), kClearBottom);
        right = m_clear->x() - kHeaderGap;
    }
    placeAbove(*m_help, right - m_help->width(), kHelpBottom);
    m_help->setVisible(m_title->x() + m_title->width() + kHeaderGap < m_help->x());
}

void DrawerPanel::setBlends(bool blends)
{
    m_blends = blends;
    cut();
    update();
}

void DrawerPanel::cut()
{
    if (m_blends) {
        clearMask();
        return;
    }
    QPainterPath path;
    path.addRoundedRect(QRectF(rect()), kPanelRadius, kPanelRadius);
    setMask(QRegion(path.toFillPolygon().toPolygon()));
}

// As a disabled widget, which takes its children along: no key, no press and no assistive
// technology reaches them.
void DrawerPanel::retire()
{
    onLeft = {};
    setEnabled(false);
}

void DrawerPanel::resizeEvent(QResizeEvent*)
{
    cut();
}

void DrawerPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!m_blends)
        painter.fillRect(rect(), Config::panelColor(1));
    constexpr qreal inset = kPanelBorder / 2;
    painter.setPen(QPen(kPanelBorderColor, kPanelBorder));
    painter.setBrush(m_blends ? kBlendedGround : Config::panelColor(1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kPanelRadius,
                            kPanelRadius);
}

void DrawerPanel::keyPressEvent(QKeyEvent* event)
{
    if (event->isAutoRepeat() && event->key() != Qt::Key_Left && event->key() != Qt::Key_Right)
        return;
    CaptureTile* const tile = m_row->focusedTile();
    const int index = m_row->focusedIndex();
    switch (event->key()) {
    case Qt::Key_Escape:
        return onEscape();
    case Qt::Key_Space:
        return onSpace();
    case Qt::Key_Left:
        return m_row->focusTile(std::max(index - 1, 0));
    case Qt::Key_Right:
        return m_row->focusTile(index + 1);
    case Qt::Key_Home:
        return m_row->focusTile(0);
    case Qt::Key_End:
        return m_row->focusTile(static_cast<int>(m_row->captureTiles().size()) - 1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (tile)
            tile->click();
        return;
    case Qt::Key_Delete:
        if (tile)
            onDelete(*tile);
        return;
    case Qt::Key_F10:
        if (tile && event->modifiers() == Qt::ShiftModifier)
            tile->openMenu(tile->rect().center());
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

// There are two stops: the row, in which arrows walk, and the button.
bool DrawerPanel::focusNextPrevChild(bool)
{
    if (m_row->captureTiles().empty() || !isEnabled()) // Qt asks while it disables it
        return false;
    if (m_clear->hasFocus() || !m_row->focusedTile())
        m_row->focusTile(0);
    else
        m_clear->setFocus(Qt::TabFocusReason);
    return true;
}

void DrawerPanel::showEvent(QShowEvent*)
{
    windowHandle()->installEventFilter(this);
}

// Presses on the window, whichever child they are for.
bool DrawerPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && watched == windowHandle() && isEnabled() &&
        onPressed)
        onPressed();
    return QWidget::eventFilter(watched, event);
}

void DrawerPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || isActiveWindow() || !onLeft)
        return;
    const auto left = onLeft; // whoever hears of it listens no longer
    left();
}

} // namespace brindlecam
