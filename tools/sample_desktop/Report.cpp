#include "Report.h"

#include "Theme.h"
#include "WindowFrame.h"

#include <QPainter>

#include <array>

namespace brindlecam::sample {

namespace {

constexpr int kSideWidth = 150;
constexpr int kMargin = 26;
constexpr int kRowHeight = 26;

struct Month {
    const char* name;
    int visits;
};
constexpr std::array kMonths{Month{"enero", 2210}, Month{"febrero", 2874}, Month{"marzo", 2635},
                             Month{"abril", 3560}, Month{"mayo", 3921},    Month{"junio", 4812}};
constexpr int kMostVisits = 5000;

void paintSide(QPainter& painter, const QRect& side, const Theme& theme)
{
    painter.fillRect(side, theme.side);
    painter.fillRect(QRect(side.right(), side.top(), 1, side.height()), theme.line);
    constexpr std::array kEntries{"Resumen", "Visitas", "Catálogo", "Tienda", "Notas"};
    constexpr std::size_t kChosen = 1;
    painter.setFont(font(11, QFont::DemiBold));
    painter.setPen(theme.muted);
    painter.drawText(side.left() + 18, side.top() + 30, QStringLiteral("INFORMES"));
    int top = side.top() + 44;
    for (std::size_t i = 0; i < kEntries.size(); ++i) {
        const QRectF row(side.left() + 8, top, side.width() - 17, 28);
        if (i == kChosen) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(theme.accent);
            painter.drawRoundedRect(row, 6, 6);
        }
        painter.setFont(font(13, i == kChosen ? QFont::Medium : QFont::Normal));
        painter.setPen(i == kChosen ? theme.page : theme.text);
        painter.drawText(row.adjusted(10, 0, 0, 0), Qt::AlignVCenter,
                         QString::fromUtf8(kEntries.at(i)));
        top += 32;
    }
}

void paintChart(QPainter& painter, const QRectF& area, const Theme& theme)
{
    painter.setFont(font(10));
    for (int visits = 0; visits <= kMostVisits; visits += 1000) {
        const qreal y = area.bottom() - area.height() * visits / kMostVisits;
        painter.setPen(theme.line);
        painter.drawLine(QPointF(area.left() + 34, y), QPointF(area.right(), y));
        painter.setPen(theme.muted);
        painter.drawText(QRectF(area.left(), y - 8, 28, 16), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(visits));
    }
    const qreal left = area.left() + 44;
    const qreal step = (area.right() - left) / static_cast<qreal>(kMonths.size());
    for (std::size_t i = 0; i < kMonths.size(); ++i) {
        const Month& month = kMonths.at(i);
        const bool last = i + 1 == kMonths.size();
        const qreal height = area.height() * month.visits / kMostVisits;
        const QRectF bar(left + static_cast<qreal>(i) * step, area.bottom() - height, step * 0.62,
                         height);
        painter.setPen(Qt::NoPen);
        painter.setBrush(last ? theme.accent : theme.bar);
        painter.drawRoundedRect(bar, 3, 3);
        painter.setPen(last ? theme.text : theme.muted);
        painter.setFont(font(11, last ? QFont::DemiBold : QFont::Normal));
        painter.drawText(QRectF(bar.left() - 20, area.bottom() + 4, bar.width() + 40, 18),
                         Qt::AlignCenter, QString::fromUtf8(month.name));
    }
}

void paintTable(QPainter& painter, QRect area, const Theme& theme)
{
    constexpr std::array<std::array<const char*, 3>, 4> kRows{{
        {"Procedencia", "Visitas", "Cambio"},
        {"Catálogo nuevo", "3 208", "+41 %"},
        {"Buscadores", "1 127", "+6 %"},
        {"Boletín", "477", "−2 %"},
    }};
    for (std::size_t i = 0; i < kRows.size() && area.height() >= kRowHeight; ++i) {
        const bool head = i == 0;
        painter.setFont(font(12, head ? QFont::DemiBold : QFont::Normal));
        painter.setPen(head ? theme.muted : theme.text);
        const QRect row(area.left(), area.top(), area.width(), kRowHeight);
        const int third = row.width() / 3;
        painter.drawText(row, Qt::AlignVCenter, QString::fromUtf8(kRows.at(i)[0]));
        painter.drawText(row.adjusted(0, 0, -third, 0), Qt::AlignVCenter | Qt::AlignRight,
                         QString::fromUtf8(kRows.at(i)[1]));
        painter.drawText(row, Qt::AlignVCenter | Qt::AlignRight, QString::fromUtf8(kRows.at(i)[2]));
        painter.fillRect(QRect(row.left(), row.bottom(), row.width(), 1), theme.line);
        area.setTop(area.top() + kRowHeight);
    }
}

} // namespace

void paintReport(QPainter& painter, QSize size, const Theme& theme)
{
    paintFrame(painter, size, QStringLiteral("Informe de visitas"), theme);
    const QRect content = contentOf(size);
    const QRect side(content.topLeft(), QSize(kSideWidth, content.height()));
    paintSide(painter, side, theme);

    const QRect page = content.adjusted(kSideWidth + kMargin, kMargin, -kMargin, -kMargin);
    painter.setFont(font(22, QFont::DemiBold));
    painter.setPen(theme.text);
    painter.drawText(page.left(), page.top() + 18, QStringLiteral("Visitas del semestre"));
    painter.setFont(font(13));
    painter.setPen(theme.muted);
    painter.drawText(QRect(page.left(), page.top() + 30, page.width(), 44), Qt::TextWordWrap,
                     QStringLiteral("En junio llegaron 4812 personas, más que en ningún otro mes. "
                                    "El catálogo nuevo explica dos tercios de la subida."));

    const int tableHeight = 4 * kRowHeight;
    const int chartTop = page.top() + 92;
    const QRectF chart(page.left(), chartTop, page.width(),
                       page.bottom() - tableHeight - 44 - chartTop);
    paintChart(painter, chart, theme);
    paintTable(painter, QRect(page.left(), page.bottom() - tableHeight, page.width(), tableHeight),
               theme);
}

} // namespace brindlecam::sample
