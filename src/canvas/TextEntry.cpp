#include "canvas/TextEntry.h"

#include "base/Call.h"

#include <utility>

namespace brindlecam {

namespace {

bool endsLine(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= u'\n' && code <= u'\r') || code == u'\u0085' || code == u'\u2028' ||
           code == u'\u2029';
}

// A mark is one line: a pasted text may bring line breaks and tabs along.
QString oneLine(QString text)
{
    for (QChar& character : text) {
        if (endsLine(character) || character == QLatin1Char('\t'))
            character = QLatin1Char(' ');
    }
    return text;
}

} // namespace

TextEntry::TextEntry(QWidget& canvas)
    : m_canvas(canvas)
{
}

TextEntry::~TextEntry()
{
    if (!m_field)
        return;
    m_field->onCommit = nullptr;
    m_field->onCancel = nullptr;
}

void TextEntry::begin(QPointF point, const QRectF& selection, const QColor& color)
{
    m_field = new TextField(TextField::place(point, selection), color, &m_canvas);
    m_field->onCommit = [this] { call(onCommit); };
    m_field->onCancel = [this] { call(onCancel); };
    m_field->lower(); // the bars stay in reach where they stand over it
    m_field->show();
    m_field->setFocus();
}

std::optional<TextEntry::Typed> TextEntry::end()
{
    if (!m_field)
        return std::nullopt;
    m_field->finishComposing();
    // The field may be the one that reports its end right now, and losing the focus is no second
    // one.
    TextField* field = std::exchange(m_field, nullptr);
    m_canvas.setFocus();
    field->hide();
    field->deleteLater();
    return Typed{oneLine(field->text()), field->color(), QRectF(field->geometry())};
}

} // namespace brindlecam
