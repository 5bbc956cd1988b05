#pragma once

#include "platform/TextRecognizer.h"

#include <QImage>
#include <QObject>
#include <QPainter>

#include <utility>
#include <vector>

namespace brindlecam::test {

inline constexpr int kReadingTime = 120000; ///< milliseconds; a busy machine under sanitizers

/// Waits for what a recogniser reports.
struct Answers {
    QObject context;
    std::vector<Result<QStringList>> all;

    TextRecognizer::Done collect()
    {
        return [this](Result<QStringList> lines) { all.push_back(std::move(lines)); };
    }
    [[nodiscard]] int count() const { return static_cast<int>(all.size()); }
};

inline QImage blankPage(QSize size)
{
    QImage page(size, QImage::Format_RGB32);
    page.fill(Qt::white);
    return page;
}

/// Writes lines on a page, from its upper left corner.
inline void writeOn(QImage& page, const QStringList& lines, QColor ink)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(15);
    QPainter painter(&page);
    painter.setFont(font);
    painter.setPen(ink);
    for (int i = 0; i < lines.size(); ++i)
        painter.drawText(QPoint(12, 28 + 26 * i), lines[i]);
}

/// A page just large enough for these lines.
inline QImage writtenPage(const QStringList& lines, QColor ink = Qt::black,
                          QColor paper = Qt::white)
{
    QImage page(420, 20 + 26 * static_cast<int>(lines.size()), QImage::Format_RGB32);
    page.fill(paper);
    writeOn(page, lines, ink);
    return page;
}

/// Each pixel of another colour; the same each time.
inline QImage noise(QSize size)
{
    QImage picture(size, QImage::Format_RGB32);
    quint32 state = 1;
    for (int y = 0; y < size.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            state = state * 1664525U + 1013904223U;
            line[x] = qRgb(static_cast<int>(state >> 24), static_cast<int>(state >> 16) & 255,
                           static_cast<int>(state >> 8) & 255);
        }
    }
    return picture;
}

/// Black dots, each a pixel or a few, on white.
inline QImage scatteredDots(QSize size, int percent)
{
    QImage picture = noise(size);
    for (int y = 0; y < size.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            line[x] = qRed(line[x]) < percent * 256 / 100 ? qRgb(0, 0, 0) : qRgb(255, 255, 255);
    }
    return picture;
}

} // namespace brindlecam::test
