#include "PageText.h"

#include <array>
#include <cstdint>

namespace brindlecam::desktop::PageText {

namespace {

constexpr int kLinesOfParagraph = 7;

/// Words that nobody knows, the same ones each time.
class Words final {
public:
    int below(int end)
    {
        m_state = m_state * 1664525U + 1013904223U;
        return static_cast<int>((m_state >> 16) % static_cast<std::uint32_t>(end));
    }
    QByteArray word()
    {
        QByteArray letters;
        const int length = 2 + below(9);
        for (int i = 0; i < length; ++i)
            letters += static_cast<char>('a' + below(26));
        return letters;
    }
    QByteArray sentence(int words)
    {
        QByteArray text = word();
        for (int i = 1; i < words; ++i)
            text += ' ' + word();
        return text;
    }
    /// At most so many letters, of whole words.
    QByteArray line(int letters)
    {
        QByteArray text;
        for (QByteArray next = word(); text.size() + next.size() < letters; next = word())
            text += next + ' ';
        return text.trimmed();
    }

private:
    std::uint32_t m_state = 7;
};

QByteArray table(Words& words)
{
    QByteArray rows;
    for (int row = 0; row < 4; ++row) {
        rows += row % 2 ? "<tr>" : "<tr bgcolor=\"#eef3fa\">";
        for (int cell = 0; cell < 3; ++cell)
            rows += "<td>" + words.sentence(2) + "</td>";
        rows += "</tr>";
    }
    return R"(<table border="1" cellpadding="4" cellspacing="0">)" + rows + "</table>";
}

QByteArray list(Words& words)
{
    QByteArray items;
    for (int item = 0; item < 4; ++item)
        items += "<li>" + words.sentence(3 + words.below(6)) + "</li>";
    return "<ul>" + items + "</ul>";
}

QByteArray box(Words& words)
{
    static constexpr std::array kColours{"#dbe9ff", "#ffe9d6", "#e2f5e0", "#f6e1f2"};
    const auto colour = static_cast<std::size_t>(words.below(4));
    return QByteArray(R"(<table width="100%" cellpadding="12"><tr><td bgcolor=")") +
           kColours.at(colour) + "\"><b>" + words.sentence(3) + "</b><br>" + words.sentence(14) +
           "</td></tr></table>";
}

QByteArray section(Words& words, int number)
{
    const QByteArray heading =
        "<h2>" + QByteArray::number(number + 1) + ". " + words.sentence(4) + "</h2>";
    const QByteArray paragraph = "<p>" + words.sentence(40 + words.below(40)) + "</p>";
    switch (number % 3) {
    case 0:
        return heading + paragraph + list(words);
    case 1:
        return heading + paragraph + table(words);
    default:
        return heading + box(words) + paragraph;
    }
}

} // namespace

QByteArray lines(int count, int columns)
{
    Words words;
    QByteArray all;
    for (int i = 0; i < count; ++i) {
        if (i % kLinesOfParagraph != kLinesOfParagraph - 1)
            all += words.line(columns);
        all += '\n';
    }
    return all;
}

QByteArray colouredLines(int count, int columns)
{
    Words words;
    QByteArray all;
    for (int i = 0; i < count; ++i) {
        const QByteArray colour = QByteArray::number(30 + i % 7);
        const QByteArray number = QByteArray::number(i + 1).rightJustified(4);
        all += number + "  ";
        if (i % kLinesOfParagraph == 0)
            all += "\033[7m " + words.word() + " \033[0m";
        else if (i % kLinesOfParagraph != kLinesOfParagraph - 1)
            all += "\033[" + colour + 'm' + words.word() + "\033[0m " + words.line(columns - 20);
        all += '\n';
    }
    return all;
}

QByteArray html(int sections)
{
    Words words;
    QByteArray body;
    for (int i = 0; i < sections; ++i)
        body += section(words, i) + '\n';
    return "<!DOCTYPE html><html><head><meta charset=\"utf-8\">"
           "<style>html { overflow-y: scroll; }</style></head><body>\n" +
           body + "</body></html>\n";
}

} // namespace brindlecam::desktop::PageText
