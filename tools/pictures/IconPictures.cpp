#include "IconPictures.h"

#include "Photographer.h"
#include "look/Symbols.h"
#include "preferences/Config.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>

#include <array>

namespace brindlecam::pictures {

namespace {

constexpr std::array kSizes{16, 22, 24, 32, 48, 64, 128};
constexpr int kCell = 144;   // pixels
constexpr int kEnlarge = 4;  // for the second row of each ground
constexpr int kLargest = 32; // that is also shown enlarged

void paintRow(QPainter& painter, const QIcon& icon, int top, const QColor& ground)
{
    painter.fillRect(0, top, kCell * static_cast<int>(kSizes.size()), 2 * kCell, ground);
    int left = 0;
    for (const int size : kSizes) {
        const QPixmap pixmap = icon.pixmap(QSize(size, size), 1.0);
        const int inset = (kCell - size) / 2;
        painter.drawPixmap(left + inset, top + inset, pixmap);
        if (size <= kLargest) {
            const int side = size * kEnlarge;
            const QRect large(left + (kCell - side) / 2, top + kCell + (kCell - side) / 2, side,
                              side);
            painter.drawPixmap(large, pixmap);
        }
        left += kCell;
    }
}

QImage sheet(const QIcon& icon)
{
    const std::array grounds{QColor(0xf4, 0xf5, 0xf6), QColor(0x22, 0x24, 0x28)};
    QImage image(kCell * static_cast<int>(kSizes.size()),
                 2 * kCell * static_cast<int>(grounds.size()), QImage::Format_RGB32);
    QPainter painter(&image);
    int top = 0;
    for (const QColor& ground : grounds) {
        paintRow(painter, icon, top, ground);
        top += 2 * kCell;
    }
    return image;
}

} // namespace

void takeIconPictures(Photographer& photographer)
{
    photographer.keep(QStringLiteral("icon-tray"),
                      sheet(Symbols::icon(QStringLiteral("leaf.fill"), Config::leafGreen)));
    photographer.keep(QStringLiteral("icon-window"), sheet(QApplication::windowIcon()));
}

} // namespace brindlecam::pictures
