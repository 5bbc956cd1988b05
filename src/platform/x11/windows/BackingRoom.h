#pragma once

#include <QSize>
#include <QWidget>

namespace brindlecam {

/// Keeps room to grow in what Qt paints a window into. Qt (6.4 and 6.11,
/// QXcbBackingStoreImage::resize) takes new memory, shared with the server, when a window grows,
/// which takes longer than painting; what has room it keeps while it needs over half. Drop it when
/// Qt keeps some room by itself. Main thread; native pixels. Lives as long as its widget.
class BackingRoom final {
public:
    explicit BackingRoom(QWidget& widget);

    /// The window has this size now, and Qt has not heard of it yet.
    void resized(QSize pixels);
    /// The window was made anew.
    void forget() { m_pixels = 0; }

private:
    QWidget& m_widget;
    qint64 m_pixels = 0; ///< how many there is room for; 0: unknown
};

} // namespace brindlecam
