#pragma once

#include <QByteArray>

namespace brindlecam::desktop {

/// Long pages for other programs to show, the same each time: no screenful is like another one.
namespace PageText {

/// Lines of plain letters, at most `columns` long, some of them empty.
[[nodiscard]] QByteArray lines(int count, int columns);
/// The same with the colours of terminals.
[[nodiscard]] QByteArray colouredLines(int count, int columns);
/// Headings, paragraphs, lists, tables and coloured boxes. Room for a scroll bar is always kept.
[[nodiscard]] QByteArray html(int sections);

} // namespace PageText

} // namespace brindlecam::desktop
