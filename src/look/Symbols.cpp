#include "look/Symbols.h"

#include <QCache>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace brindlecam::Symbols {

namespace {

constexpr qreal kDisabledOpacity = 0.4;

QString resource(const QString& name)
{
    return QStringLiteral(":/symbols/%1.svg").arg(name);
}

/// Parsed once and kept: there are some dozens, and bars show them again and again.
QSvgRenderer& renderer(const QString& name)
{
    static QHash<QString, std::shared_ptr<QSvgRenderer>> parsed;
    std::shared_ptr<QSvgRenderer>& entry = parsed[name];
    if (!entry) {
        entry = std::make_shared<QSvgRenderer>(resource(name));
        entry->setAspectRatioMode(Qt::KeepAspectRatio);
    }
    return *entry;
}

/// Drawn symbols. Not QPixmapCache: half a minute after each use that wakes a program at rest.
QCache<QString, QImage>& drawn()
{
    constexpr qsizetype kMostBytes = 512 * 1024;
    static QCache<QString, QImage> images(kMostBytes);
    return images;
}

/// The symbol in one colour, in pixels.
QPixmap tinted(const QString& name, const QSize& pixels, const QColor& color)
{
    const QString key = QStringLiteral("symbol/%1/%2x%3/%4")
                            .arg(name)
                            .arg(pixels.width())
                            .arg(pixels.height())
                            .arg(color.rgba());
    if (const QImage* known = drawn().object(key))
        return QPixmap::fromImage(*known);
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer(name).render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    drawn().insert(key, new QImage(image), image.sizeInBytes());
    return QPixmap::fromImage(std::move(image));
}

class SymbolEngine final : public QIconEngine {
public:
    SymbolEngine(QString name, QColor color)
        : m_name(std::move(name))
        , m_color(std::move(color))
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        draw(*painter, m_name, rect, shade(mode));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        return tinted(m_name, size, shade(mode));
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override
    {
        QPixmap pixmap = tinted(m_name, size, shade(mode));
        pixmap.setDevicePixelRatio(scale);
        return pixmap;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new SymbolEngine(*this); }
    [[nodiscard]] QString key() const override { return QStringLiteral("BrindlecamSymbol"); }
    bool isNull() override { return false; }

private:
    [[nodiscard]] QColor shade(QIcon::Mode mode) const
    {
        QColor color = m_color;
        if (mode == QIcon::Disabled)
            color.setAlphaF(color.alphaF() * static_cast<float>(kDisabledOpacity));
        return color;
    }

    QString m_name;
    QColor m_color;
};

} // namespace

bool exists(const QString& name)
{
    return QFile::exists(resource(name));
}

QIcon icon(const QString& name, const QColor& color)
{
    return exists(name) ? QIcon(new SymbolEngine(name, color)) : QIcon();
}

void draw(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color)
{
    if (!exists(name))
        return;
    const qreal side = std::min(rect.width(), rect.height());
    QRectF square(0, 0, side, side);
    square.moveCenter(rect.center());
    const qreal scale = painter.device()->devicePixelRatioF() *
                        std::hypot(painter.transform().m11(), painter.transform().m12());
    const int pixels = std::max(1, static_cast<int>(std::lround(side * scale)));
    painter.drawPixmap(square, tinted(name, QSize(pixels, pixels), color),
                       QRectF(0, 0, pixels, pixels));
}

} // namespace brindlecam::Symbols
