#include "canvas/AnnotationText.h"

#include "look/InterfaceFont.h"

#include <QFontDatabase>
#include <QPainter>
#include <QTextLayout>

namespace brindlecam::AnnotationText {

namespace {

constexpr qreal kFontSize = 18;    // points
constexpr qreal kLineWidth = 4000; // points

QFont madeFont()
{
    QFont font = InterfaceFont::semibold(kFontSize);
    // Named, or the first font with some drawing of it would do, and that one has no colours.
    const QString emoji = QStringLiteral("Noto Color Emoji");
    if (QFontDatabase::hasFamily(emoji))
        font.setFamilies(font.families() << emoji);
    // The picture goes to other people's screens, whose subpixels are not ours.
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

QTextLine layOut(QTextLayout& layout)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(Qt::LayoutDirectionAuto); // as the field has it while it is typed
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid())
        line.setLineWidth(kLineWidth);
    layout.endLayout();
    return line;
}

} // namespace

const QFont& font()
{
    thread_local const QFont made = madeFont();
    return made;
}

QSizeF measured(const QString& text)
{
    QTextLayout layout(text, font());
    const QTextLine line = layOut(layout);
    return line.isValid() ? QSizeF(line.naturalTextWidth(), line.height()) : QSizeF(0, 0);
}

void draw(QPainter& painter, QPointF topLeft, const QString& text)
{
    QTextLayout layout(text, font());
    layOut(layout);
    layout.draw(&painter, topLeft);
}

} // namespace brindlecam::AnnotationText
