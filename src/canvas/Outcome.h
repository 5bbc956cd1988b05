#pragma once

#include "pictures/Rendered.h"

#include <QRect>
#include <QString>

#include <variant>

namespace brindlecam {

/// What a capture session ends with. Rectangles are native pixels of the global desktop.
namespace outcome {
struct Copy {
    Rendered picture;
};
struct Save {
    Rendered picture;
};
struct Text {
    QString text;
};
struct Pin {
    Rendered picture;
    QRect frame;
};
struct Scroll {
    QRect rect;
};
struct Gif {
    QRect rect;
};
struct Cancel {};
} // namespace outcome
using Outcome = std::variant<outcome::Copy, outcome::Save, outcome::Text, outcome::Pin,
                             outcome::Scroll, outcome::Gif, outcome::Cancel>;

} // namespace brindlecam
