#pragma once

#include "desktop/support/x11/Connection.h"
#include "x11/ThisDesktop.h"

#include <QImage>
#include <QRect>

#include <cstdint>
#include <vector>

namespace brindlecam::test {

struct PageOptions {
    enum class Alpha { none, opaque, half };

    QRect rect{};              ///< of its inside; a window manager puts its frame around it
    bool managed = false;      ///< by a window manager, where there is one
    int border = 0;            ///< outside of the rectangle
    Alpha alpha = Alpha::none; ///< the channel
    bool repaints = false;     ///< draws what somebody has covered meanwhile, at its first row
    int kind = 0;              ///< pages of different kinds differ in most pixels
};

/// Another program's window with a long page, a part of which it shows; on a connection of its own.
/// Every call has taken effect in the server when it returns. Native pixels.
class Page final {
public:
    /// Shown, and where it was wanted as far as a window manager lets it be.
    explicit Page(const PageOptions& options);

    /// Draws itself from this row of the page on.
    void scrollTo(int row);
    /// The same at a new place; only where no window manager has it.
    void place(const QRect& rect);
    void raise();
    /// Cuts these pixels of its own out of the window.
    void cutOut(const QRect& hole);
    /// It says itself that all of it is opaque.
    void sayOpaque();

    /// Of its inside, on the desktop.
    [[nodiscard]] QRect rect() const;
    /// What its inside is to look like now.
    [[nodiscard]] QImage image() const;
    [[nodiscard]] xcb_window_t id() const { return m_window; }
    [[nodiscard]] const desktop::Connection& connection() const { return m_connection; }
    [[nodiscard]] bool isFramed() const;

    static constexpr QRgb kBorder = 0xffff00ff;

private:
    void configure(std::uint16_t what, const std::vector<std::int32_t>& values);

    desktop::Connection m_connection{display()};
    const QImage m_long;
    const std::uint8_t m_depth;
    const xcb_pixmap_t m_pixels;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_gcontext_t m_context = XCB_NONE;
    int m_row = 0;
};

} // namespace brindlecam::test
