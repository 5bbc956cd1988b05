#include "long/StatusLine.h"

#include "look/InterfaceFont.h"
#include "look/TextLine.h"

#include <QAccessible>
#include <QPainter>

namespace brindlecam {

namespace {

constexpr qreal kFontSize = 13; // points

/// What it says but for how much.
QString wordsOf(QString text)
{
    text.removeIf([](QChar character) { return character.isDigit(); });
    return text;
}

} // namespace

StatusLine::StatusLine(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

bool StatusLine::isNews(const QString& before, const QString& after)
{
    return wordsOf(before) != wordsOf(after);
}

void StatusLine::setStatus(const QString& status)
{
    if (status == text())
        return;
    const bool news = isNews(text(), status);
    setText(status);
    if (news && isVisible())
        announce();
}

void StatusLine::showEvent(QShowEvent*)
{
    announce();
}

void StatusLine::announce()
{
    QAccessibleEvent spoken(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&spoken);
}

void StatusLine::paintEvent(QPaintEvent*)
{
    const TextLine line =
        TextLine{.text = text(), .font = InterfaceFont::medium(kFontSize), .evenDigits = true}
            .elided(width());
    QPainter painter(this);
    painter.setPen(Qt::white);
    line.draw(painter, {0, (height() - line.height()) / 2 + line.ascent()});
}

} // namespace brindlecam
