#include "reading/FixedPitch.h"

#include <algorithm>
#include <cmath>

namespace brindlecam::FixedPitch {

namespace {

constexpr int kLongWord = 4;        ///< characters; shorter ones measure badly
constexpr double kSameWidth = 0.05; ///< of the cell
constexpr double kMostWords = 0.75; ///< have to have that width
constexpr double kBlank = 0.9;      ///< cells, at least, between two words
constexpr double kMostGaps = 0.6;   ///< have to be as wide
constexpr double kNoBlank = 0.75;   ///< cells, at most, within a word

int gap(const Word& left, const Word& right)
{
    return right.box.left() - left.box.right() - 1;
}

double share(std::size_t part, std::size_t all)
{
    return static_cast<double>(part) / static_cast<double>(all);
}

} // namespace

double cell(const std::vector<Word>& words)
{
    std::vector<double> widths;
    for (const Word& word : words) {
        if (word.text.size() >= kLongWord)
            widths.push_back(static_cast<double>(word.box.width()) /
                             static_cast<double>(word.text.size()));
    }
    if (widths.empty())
        return 0;
    const auto middle = widths.begin() + static_cast<std::ptrdiff_t>(widths.size() / 2);
    std::nth_element(widths.begin(), middle, widths.end());
    const double cell = *middle;
    const auto alike = std::count_if(widths.begin(), widths.end(), [cell](double width) {
        return std::abs(width - cell) <= kSameWidth * cell;
    });
    if (share(alike, widths.size()) < kMostWords)
        return 0;

    std::size_t gaps = 0;
    std::size_t blanks = 0;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i].line != words[i - 1].line)
            continue;
        ++gaps;
        if (gap(words[i - 1], words[i]) >= kBlank * cell)
            ++blanks;
    }
    return gaps > 0 && share(blanks, gaps) >= kMostGaps ? cell : 0;
}

void join(std::vector<Word>& words)
{
    const double width = cell(words);
    if (width <= 0)
        return;
    std::vector<Word> joined;
    for (const Word& word : words) {
        if (!joined.empty() && joined.back().line == word.line &&
            gap(joined.back(), word) < kNoBlank * width) {
            Word& whole = joined.back();
            whole.text += word.text;
            whole.box |= word.box;
            whole.confidence = std::min(whole.confidence, word.confidence);
        } else {
            joined.push_back(word);
        }
    }
    words.swap(joined);
}

} // namespace brindlecam::FixedPitch
