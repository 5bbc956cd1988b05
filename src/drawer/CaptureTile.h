#pragma once

#include "pictures/Thumbnail.h"

#include <QAbstractButton>
#include <QImage>
#include <QPoint>
#include <QVariantAnimation>

#include <functional>
#include <optional>

namespace brindlecam {

class Panels;

/// One capture in the drawer: its thumbnail on a card, with a caption. A click copies it, a drag
/// takes its file to another program. Main thread.
class CaptureTile final : public QAbstractButton {
    Q_OBJECT

public:
    /// Of the entry at this path, taken then, in words. The port outlives it.
    CaptureTile(const QString& path, const QString& when, Panels& panels);
    ~CaptureTile() override;

    // What can be asked of it; all are filled by whoever makes it, and may end it.
    std::function<void()> onCopy;
    std::function<void()> onPreview;
    std::function<void()> onOpenInPreview; ///< with the system's image viewer
    std::function<void()> onReveal;        ///< in the file manager
    std::function<void()> onSaveToFolder;
    std::function<void()> onRemove;
    std::function<void()> onDragBegins;
    enum class Drag { dropped, refused };
    std::function<void(Drag)> onDragEnds; ///< whether another program has taken it

    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] bool hovering() const { return m_hovering; }
    /// The pointer is over it, or not: for when it moves under a pointer that rests.
    void setHovering(bool hovering);

    enum class Arrival { atOnce, fadesIn };
    /// What it shows from now on, in as many pixels as it takes up on the screen.
    void setThumbnail(const Thumbnail& thumbnail, Arrival arrival);

    /// How many pixels a thumbnail takes up at most, at so many pixels per point.
    [[nodiscard]] static QSize thumbnailPixels(qreal scale);
    /// Paints one into the middle of this place (points): pixel by pixel where it has been made for
    /// that, larger where it is a small picture.
    static void paintPicture(QPainter& painter, const QImage& picture, const QRectF& room);

    void openMenu(QPoint place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void setCaption(QSize pixels);
    void paintCard(QPainter& painter) const;
    void paintCaption(QPainter& painter) const;
    [[nodiscard]] QPixmap dragPicture() const;
    void drag();

    const QString m_path;
    const QString m_when;
    Panels& m_panels;
    QImage m_picture; ///< null: none, or none yet
    QString m_caption;
    QVariantAnimation m_arrival; ///< how much of the picture can be seen
    bool m_hovering = false;
    bool m_dragging = false;
    std::optional<QPoint> m_pressed; ///< where the left button went down
};

} // namespace brindlecam
