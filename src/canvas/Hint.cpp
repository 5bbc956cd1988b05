#include "canvas/Hint.h"

#include "base/Text.h"
#include "look/InterfaceFont.h"
#include "look/Pill.h"

namespace brindlecam::Hint {

namespace {

constexpr qreal kFontSize = 14;
constexpr qreal kBottomFromTop = 90; // of the capsule, from the top of the canvas

Pill pill()
{
    return {
        .text = text("Arrastra para seleccionar un área · Clic en una ventana para capturarla · "
                     "Esc para cancelar"),
        .font = InterfaceFont::medium(kFontSize),
        .paddingX = 18,
        .paddingY = 9,
        .alpha = 0.8,
    };
}

QRectF placed(const Pill& pill, QSizeF canvas)
{
    const QSizeF size = pill.size();
    return {QPointF((canvas.width() - size.width()) / 2, kBottomFromTop - size.height()), size};
}

} // namespace

QRectF rect(QSizeF canvas)
{
    return placed(pill(), canvas);
}

void paint(QPainter& painter, QSizeF canvas)
{
    const Pill hint = pill();
    hint.paint(painter, placed(hint, canvas).topLeft());
}

} // namespace brindlecam::Hint
