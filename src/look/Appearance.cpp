#include "look/Appearance.h"

#include "look/HouseStyle.h"
#include "look/InterfaceFont.h"
#include "look/Symbols.h"
#include "preferences/Config.h"

#include <QApplication>

namespace brindlecam::Appearance {

namespace {

constexpr int kMiddleLightness = 128;
constexpr QColor kWarningOnLight(200, 0, 24);
constexpr QColor kWarningOnDark(255, 120, 112);

struct Colors {
    QColor window;
    QColor base;
    QColor alternate;
    QColor button;
    QColor text;
    QColor secondary;
    QColor disabled;
    QColor highlight; ///< leaf green, dark enough for white text
    QColor link;
};

const Colors kLight{.window = {244, 245, 247},
                    .base = {255, 255, 255},
                    .alternate = {238, 240, 243},
                    .button = {250, 250, 251},
                    .text = {31, 36, 43},
                    .secondary = {97, 105, 115},
                    .disabled = {158, 164, 172},
                    .highlight = {32, 128, 58},
                    .link = {28, 114, 51}};
const Colors kDark{.window = {41, 44, 49},
                   .base = {31, 34, 38},
                   .alternate = {38, 41, 46},
                   .button = {60, 64, 71},
                   .text = {232, 235, 239},
                   .secondary = {166, 173, 182},
                   .disabled = {118, 125, 134},
                   .highlight = {32, 128, 58},
                   .link = {104, 206, 132}};

Shade shadeOf(const QPalette& palette)
{
    const int lightness = palette.color(QPalette::Window).lightness();
    return lightness < kMiddleLightness ? Shade::dark : Shade::light;
}

} // namespace

QPalette palette(Shade shade)
{
    const Colors& colors = shade == Shade::dark ? kDark : kLight;
    QPalette palette(colors.button, colors.window);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternate);
    palette.setColor(QPalette::ToolTipBase, colors.base);
    palette.setColor(QPalette::Highlight, colors.highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, colors.link);
    palette.setColor(QPalette::PlaceholderText, colors.secondary);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, colors.text);
        palette.setColor(QPalette::Disabled, role, colors.disabled);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.alternate);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colors.disabled);
    return palette;
}

QColor warningText(const QPalette& palette)
{
    return shadeOf(palette) == Shade::dark ? kWarningOnDark : kWarningOnLight;
}

void install(const QString& fontFamily)
{
    const Shade shade =
        shadeOf(QGuiApplication::palette()); // before the style brings colours of its own
    QApplication::setStyle(new HouseStyle);
    QApplication::setPalette(palette(shade));
    InterfaceFont::install(fontFamily);
    QApplication::setWindowIcon(Symbols::icon(QStringLiteral("leaf.fill"), Config::leafGreen));
}

} // namespace brindlecam::Appearance
