#include "Terminal.h"

#include "Theme.h"
#include "WindowFrame.h"

#include <QFontMetrics>
#include <QPainter>

#include <array>

namespace brindlecam::sample {

namespace {

constexpr int kMargin = 14;
constexpr int kLineHeight = 19;

struct Piece {
    const char* text;
    QRgb colour;
};
constexpr QRgb kPlain = 0xffd5dae2;
constexpr QRgb kGreen = 0xff7fc77a;
constexpr QRgb kBlue = 0xff78aee8;
constexpr QRgb kYellow = 0xffe2c06d;
constexpr QRgb kDim = 0xff8a93a2;

using Line = std::array<Piece, 3>;
constexpr std::array<Line, 9> kLines{{
    {{{"ana@taller", kGreen}, {":~/catalogo$ ", kBlue}, {"make fotos", kPlain}}},
    {{{"[1/4] ", kDim}, {"reduciendo ", kPlain}, {"playa.jpg", kYellow}}},
    {{{"[2/4] ", kDim}, {"reduciendo ", kPlain}, {"puerto.jpg", kYellow}}},
    {{{"[3/4] ", kDim}, {"reduciendo ", kPlain}, {"mercado.jpg", kYellow}}},
    {{{"[4/4] ", kDim}, {"escribiendo ", kPlain}, {"indice.html", kYellow}}},
    {{{"Listo: ", kGreen}, {"37 fotos, 12,4 MB", kPlain}, {"", kPlain}}},
    {{{"ana@taller", kGreen}, {":~/catalogo$ ", kBlue}, {"git status --short", kPlain}}},
    {{{" M ", kYellow}, {"paginas/verano.md", kPlain}, {"", kPlain}}},
    {{{"ana@taller", kGreen}, {":~/catalogo$ ", kBlue}, {"", kPlain}}},
}};

} // namespace

void paintTerminal(QPainter& painter, QSize size)
{
    Theme theme = darkTheme();
    theme.page = QColor(22, 25, 31);
    paintFrame(painter, size, QStringLiteral("Terminal"), theme);
    const QRect content = contentOf(size);
    painter.setClipRect(content);
    painter.setFont(fixedFont(13));
    const QFontMetrics metrics = painter.fontMetrics();
    int baseline = content.top() + kMargin + metrics.ascent();
    int x = 0;
    for (const Line& line : kLines) {
        x = content.left() + kMargin;
        for (const Piece& piece : line) {
            const QString text = QString::fromUtf8(piece.text);
            painter.setPen(QColor(piece.colour));
            painter.drawText(x, baseline, text);
            x += metrics.horizontalAdvance(text);
        }
        baseline += kLineHeight;
    }
    // The cursor stands at the end of the last line.
    painter.fillRect(QRect(x, baseline - kLineHeight - metrics.ascent(), 8, metrics.height()),
                     QColor(kPlain));
}

} // namespace brindlecam::sample
