#include "reading/Fragment.h"

namespace brindlecam {

namespace {

constexpr double kWideGap = 1.0; ///< line heights

/// Adds the words [first, end) of one line.
void cut(const std::vector<Word>& words, std::size_t first, std::size_t end,
         std::vector<Fragment>& result)
{
    QRect line;
    for (std::size_t i = first; i < end; ++i)
        line |= words[i].box;
    const double wide = kWideGap * line.height();
    for (std::size_t i = first; i < end; ++i) {
        const Word& word = words[i];
        if (i > first && word.box.left() - result.back().box.right() - 1 <= wide) {
            result.back().text += QLatin1Char(' ') + word.text;
            result.back().box |= word.box;
        } else {
            result.push_back({word.text, word.box});
        }
    }
}

} // namespace

std::vector<Fragment> fragments(const std::vector<Word>& words,
                                const std::function<int(QPoint)>& backgroundAt)
{
    std::vector<Fragment> result;
    std::size_t first = 0;
    for (std::size_t i = 1; i <= words.size(); ++i) {
        if (i < words.size() && words[i].line == words[first].line)
            continue;
        cut(words, first, i, result);
        first = i;
    }
    for (Fragment& fragment : result)
        fragment.background = backgroundAt(fragment.box.center());
    return result;
}

} // namespace brindlecam
