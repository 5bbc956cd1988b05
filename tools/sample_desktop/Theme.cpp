#include "Theme.h"

#include <QFontDatabase>

namespace brindlecam::sample {

Theme lightTheme()
{
    return {.night = false,
            .page = QColor(255, 255, 255),
            .side = QColor(243, 245, 247),
            .title = QColor(232, 235, 238),
            .line = QColor(208, 213, 219),
            .text = QColor(33, 38, 45),
            .muted = QColor(105, 113, 124),
            .accent = QColor(38, 116, 190),
            .bar = QColor(188, 209, 232)};
}

Theme darkTheme()
{
    return {.night = true,
            .page = QColor(30, 33, 39),
            .side = QColor(37, 41, 48),
            .title = QColor(45, 49, 57),
            .line = QColor(63, 69, 79),
            .text = QColor(226, 230, 236),
            .muted = QColor(146, 155, 168),
            .accent = QColor(102, 170, 238),
            .bar = QColor(70, 92, 118)};
}

QFont font(int size, QFont::Weight weight)
{
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

QFont fixedFont(int size)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(size);
    return font;
}

} // namespace brindlecam::sample
