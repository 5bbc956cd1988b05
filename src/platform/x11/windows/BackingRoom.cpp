#include "platform/x11/windows/BackingRoom.h"

#include <QBackingStore>

namespace brindlecam {

namespace {

constexpr qreal kRoomToGrow = 1.35; ///< to each side: more than half as much again is never kept

} // namespace

BackingRoom::BackingRoom(QWidget& widget)
    : m_widget(widget)
{
}

void BackingRoom::resized(QSize pixels)
{
    QBackingStore* store = m_widget.backingStore();
    if (!store)
        return;
    const qint64 needed = qint64(pixels.width()) * pixels.height();
    const bool known = m_pixels > 0;
    if (needed > m_pixels && known) {
        const QSize roomy = pixels * kRoomToGrow;
        m_pixels = qint64(roomy.width()) * roomy.height();
        store->resize(roomy / m_widget.devicePixelRatioF());
    } else if (!known || 2 * needed <= m_pixels) {
        m_pixels = needed;
    }
}

} // namespace brindlecam
