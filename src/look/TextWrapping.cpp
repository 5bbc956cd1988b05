#include "look/TextWrapping.h"

#include "look/TextLine.h"

#include <QStringList>

namespace brindlecam {

namespace {

constexpr qreal kStep = 2; // points by which lines of the same number are made shorter

/// What a line may begin with: words, each with the dots that follow it.
QStringList wordsOf(const QString& text)
{
    QStringList words;
    for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (word == QStringLiteral("·") && !words.isEmpty())
            words.back() += QLatin1Char(' ') + word;
        else
            words << word;
    }
    return words;
}

QStringList linesOf(const QStringList& words, const QFont& font, qreal width)
{
    QStringList lines;
    for (const QString& word : words) {
        if (!lines.isEmpty()) {
            const QString longer = lines.back() + QLatin1Char(' ') + word;
            if (TextLine{longer, font}.width() <= width) {
                lines.back() = longer;
                continue;
            }
        }
        lines << word;
    }
    return lines;
}

} // namespace

QString wrapped(const QString& text, const QFont& font, qreal width)
{
    const QStringList words = wordsOf(text);
    QStringList lines = linesOf(words, font, width);
    for (qreal less = width - kStep; less > 0 && lines.size() > 1; less -= kStep) {
        const QStringList shorter = linesOf(words, font, less);
        if (shorter.size() > lines.size())
            break;
        lines = shorter;
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace brindlecam
