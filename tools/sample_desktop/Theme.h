#pragma once

#include <QColor>
#include <QFont>

namespace brindlecam::sample {

/// The colours of one look of the desktop.
struct Theme {
    bool night = false; ///< what the landscape shows
    QColor page;        ///< ground of windows
    QColor side;        ///< ground of their side bars
    QColor title;       ///< ground of their title bars
    QColor line;        ///< between parts of a window, and around it
    QColor text;
    QColor muted; ///< less important text
    QColor accent;
    QColor bar; ///< of charts, where nothing is to be said
};

[[nodiscard]] Theme lightTheme();
[[nodiscard]] Theme darkTheme();

/// The desktop's font in points of the screen.
[[nodiscard]] QFont font(int size, QFont::Weight weight = QFont::Normal);
/// The same for text in columns.
[[nodiscard]] QFont fixedFont(int size);

} // namespace brindlecam::sample
