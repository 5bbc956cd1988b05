#include "drawer/CaptureTile.h"

#include "base/Text.h"
#include "drawer/CaptureCaption.h"
#include "drawer/DrawerGeometry.h"
#include "look/DevicePixels.h"
#include "look/InterfaceFont.h"
#include "look/TextLine.h"
#include "platform/Panels.h"
#include "preferences/Config.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QUrl>

#include <cmath>
#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kCardInset = 1;
constexpr qreal kCardRadius = 10;
constexpr qreal kTileOutline = 2;
constexpr qreal kPictureRadius = 4;
constexpr qreal kCaptionSize = 10.5;
constexpr qreal kCaptionBaseline = 9; // above the lower edge
constexpr qreal kDragInset = 8;
constexpr qreal kClickStray = 4; // how far a click may move

/// How much more room than a picture that was made for it a place may have, in pixels: it is
/// rounded where it stands, and so was the picture.
constexpr qreal kSparePixels = 2;

constexpr int kArrivalMilliseconds = 80;

const QColor kRestingCard = QColor::fromRgbF(0.16F, 0.16F, 0.16F, 0.9F);
const QColor kHoveredCard = QColor::fromRgbF(0.28F, 0.28F, 0.28F, 0.9F);
const QColor kCaptionColor = QColor::fromRgbF(1.0F, 1.0F, 1.0F, 0.7F);

} // namespace

CaptureTile::CaptureTile(const QString& path, const QString& when, Panels& panels)
    : m_path(path)
    , m_when(when)
    , m_panels(panels)
{
    setFixedSize(DrawerGeometry::kTile.toSize());
    setFocusPolicy(Qt::TabFocus); // a click copies, it chooses nothing
    setToolTip(brindlecam::text(
        "Clic para copiar · espacio para verla en grande · arrastra para soltarla en "
        "otra app"));
    setCaption({});
    m_arrival.setDuration(kArrivalMilliseconds);
    m_arrival.setStartValue(0.0);
    m_arrival.setEndValue(1.0);
    connect(&m_arrival, &QVariantAnimation::valueChanged, this, [this] {
        update(DrawerGeometry::kPicture.toAlignedRect()); // of many tiles at once, during the slide
    });
    connect(this, &QAbstractButton::clicked, this, [this] { onCopy(); });
}

CaptureTile::~CaptureTile() = default;

QSize CaptureTile::thumbnailPixels(qreal scale)
{
    const QSizeF room = DrawerGeometry::kPicture.size() * scale;
    return {static_cast<int>(room.width()), static_cast<int>(room.height())};
}

void CaptureTile::setCaption(QSize pixels)
{
    m_caption = CaptureCaption::of(m_path, m_when, pixels);
    setAccessibleName(m_caption);
    setAccessibleDescription(toolTip());
}

void CaptureTile::setThumbnail(const Thumbnail& thumbnail, Arrival arrival)
{
    m_picture = thumbnail.image;
    setCaption(thumbnail.pixels);
    if (arrival == Arrival::fadesIn)
        m_arrival.start();
    update();
}

// Painting.

void CaptureTile::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintCard(painter);
    if (m_arrival.state() == QAbstractAnimation::Running)
        painter.setOpacity(m_arrival.currentValue().toDouble());
    paintPicture(painter, m_picture, DrawerGeometry::kPicture);
    painter.setOpacity(1);
    paintCaption(painter);
}

void CaptureTile::paintCard(QPainter& painter) const
{
    const QRectF card = QRectF(rect()).adjusted(kCardInset, kCardInset, -kCardInset, -kCardInset);
    const bool marked = m_hovering || hasFocus();
    painter.setBrush(m_hovering ? kHoveredCard : kRestingCard);
    painter.setPen(marked ? QPen(Config::leafGreen, kTileOutline) : QPen(Qt::NoPen));
    painter.drawRoundedRect(card, kCardRadius, kCardRadius);
}

// As a brush, so that the corners are soft.
void CaptureTile::paintPicture(QPainter& painter, const QImage& picture, const QRectF& room)
{
    if (picture.isNull())
        return;
    const DevicePixels pixels(painter);
    const QRectF place(pixels.nearest(room));
    const QSizeF size = picture.size();
    const QSizeF factors(place.width() / size.width(), place.height() / size.height());
    const bool isWide = factors.width() < factors.height();
    const qreal factor = isWide ? factors.width() : factors.height();
    const qreal spare = isWide ? place.width() - size.width() : place.height() - size.height();
    const bool exact = spare >= 0 && spare <= kSparePixels;
    const QSizeF shown = exact ? size : size * factor;
    const QPointF corner(std::round(place.center().x() - shown.width() / 2),
                         std::round(place.center().y() - shown.height() / 2));
    QBrush brush(picture);
    QTransform where = QTransform::fromTranslate(corner.x(), corner.y());
    if (!exact)
        where.scale(factor, factor);
    brush.setTransform(where);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    const qreal radius = pixels.length(kPictureRadius);
    painter.drawRoundedRect(QRectF(corner, shown), radius, radius);
}

void CaptureTile::paintCaption(QPainter& painter) const
{
    const TextLine line{.text = m_caption, .font = InterfaceFont::regular(kCaptionSize)};
    painter.setPen(kCaptionColor);
    line.draw(painter, {(width() - line.width()) / 2, height() - kCaptionBaseline});
}

// The pointer.

void CaptureTile::setHovering(bool hovering)
{
    if (std::exchange(m_hovering, hovering) != hovering)
        update();
}

void CaptureTile::enterEvent(QEnterEvent*)
{
    setHovering(true);
}

void CaptureTile::leaveEvent(QEvent*)
{
    setHovering(false);
}

void CaptureTile::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_pressed = event->position().toPoint();
}

void CaptureTile::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragging || !m_pressed || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPointF moved = event->position() - QPointF(*m_pressed);
    if (std::hypot(moved.x(), moved.y()) > kClickStray)
        drag();
}

void CaptureTile::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (std::exchange(m_pressed, std::nullopt) && !m_dragging)
        click();
}

QPixmap CaptureTile::dragPicture() const
{
    const QRectF room = QRectF(rect()).adjusted(kDragInset, kDragInset, -kDragInset, -kDragInset);
    QPixmap picture((room.size() * devicePixelRatioF()).toSize());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintPicture(painter, m_picture, QRectF(QPointF(), room.size()));
    return picture;
}

// A loop of events of its own: this may be gone from the screen by its end, but not from memory.
void CaptureTile::drag()
{
    m_dragging = true;
    const QPointer<CaptureTile> self(this);
    onDragBegins();
    auto* const drag = new QDrag(this); // Qt's, until whoever takes it has it
    auto* const content = new QMimeData;
    content->setUrls({QUrl::fromLocalFile(m_path)});
    drag->setMimeData(content);
    drag->setPixmap(dragPicture());
    drag->setHotSpot(*m_pressed - QPoint(kDragInset, kDragInset));
    const Qt::DropAction taken = drag->exec(Qt::CopyAction, Qt::CopyAction);
    if (!self)
        return;
    m_dragging = false;
    m_pressed.reset();
    onDragEnds(taken == Qt::IgnoreAction ? Drag::refused : Drag::dropped);
}

// Keys are the panel's, which knows the other tiles.

void CaptureTile::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
}

void CaptureTile::keyReleaseEvent(QKeyEvent* event)
{
    event->ignore();
}

void CaptureTile::focusInEvent(QFocusEvent* event)
{
    QAbstractButton::focusInEvent(event);
    update();
}

void CaptureTile::focusOutEvent(QFocusEvent* event)
{
    QAbstractButton::focusOutEvent(event);
    update();
}

void CaptureTile::contextMenuEvent(QContextMenuEvent* event)
{
    openMenu(event->reason() == QContextMenuEvent::Mouse ? event->pos() : rect().center());
}

void CaptureTile::openMenu(QPoint place)
{
    m_panels.popUp(
        *this, place,
        {{brindlecam::text("Copiar"), [this] { onCopy(); }},
         {brindlecam::text("Ver en grande"), [this] { onPreview(); }},
         {brindlecam::text("Abrir con Vista Previa"), [this] { onOpenInPreview(); }},
         {brindlecam::text("Mostrar en Finder"), [this] { onReveal(); }},
         {brindlecam::text("Guardar en la carpeta de capturas"), [this] { onSaveToFolder(); }},
         {brindlecam::text("Quitar de recientes"), [this] { onRemove(); }}});
}

} // namespace brindlecam
