#include "look/InterfaceFont.h"

#include <QApplication>
#include <QFontDatabase>
#include <QScreen>

#include <cmath>

namespace brindlecam {

namespace {

constexpr qreal kFontPointsPerInch = 72;
constexpr qreal kUsualDotsPerInch = 96;

/// The density by which Qt turns typographic points into pixels.
int dotsPerInch()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return qRound(screen ? screen->logicalDotsPerInchY() : kUsualDotsPerInch);
}

/// QFont's pixel sizes are integers: a fraction is kept in typographic points.
void setSize(QFont& font, qreal points)
{
    if (points == std::floor(points))
        font.setPixelSize(static_cast<int>(points));
    else
        font.setPointSizeF(points * kFontPointsPerInch / dotsPerInch());
}

QFont weighted(qreal points, QFont::Weight weight)
{
    QFont font = QGuiApplication::font();
    font.setWeight(weight);
    setSize(font, points);
    return font;
}

} // namespace

namespace InterfaceFont {

void install(const QString& family)
{
    if (family.isEmpty() || !QFontDatabase::hasFamily(family))
        return;
    QFont font = QGuiApplication::font();
    font.setFamilies({family});
    QApplication::setFont(font);
}

QFont regular(qreal points)
{
    return weighted(points, QFont::Normal);
}

QFont medium(qreal points)
{
    return weighted(points, QFont::Medium);
}

QFont semibold(qreal points)
{
    return weighted(points, QFont::DemiBold);
}

QFont bold(qreal points)
{
    return weighted(points, QFont::Bold);
}

qreal points(const QFont& font)
{
    if (font.pixelSize() > 0)
        return font.pixelSize();
    return font.pointSizeF() * dotsPerInch() / kFontPointsPerInch;
}

} // namespace InterfaceFont

} // namespace brindlecam
