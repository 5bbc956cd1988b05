#include "reading/DoubtfulWords.h"

#include "reading/InkSpots.h"

#include <algorithm>

namespace brindlecam::DoubtfulWords {

namespace {

constexpr int kMostIconCharacters = 3;
constexpr double kSurelyText = 92; ///< confidence
/// Part of a word's box that is ink at least.
constexpr double kLeastInk = 0.03;

bool isSymbols(const QString& text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) { return c.isLetterOrNumber(); });
}

double inkShare(const QImage& grey, const QRect& box)
{
    const QRect inside = box & grey.rect();
    if (inside.isEmpty())
        return 0;
    int ink = 0;
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        const uchar* const line = grey.constScanLine(y);
        ink += static_cast<int>(std::count_if(line + inside.left(), line + inside.right() + 1,
                                              [](uchar value) { return value <= InkSpots::kInk; }));
    }
    return static_cast<double>(ink) / (static_cast<double>(inside.width()) * inside.height());
}

bool liesIn(const QRect& box, const std::vector<QRect>& places)
{
    return std::any_of(places.begin(), places.end(),
                       [&box](const QRect& place) { return place.contains(box.center()); });
}

} // namespace

void dropIcons(std::vector<Word>& words, const std::vector<QRect>& places)
{
    int line = -1;
    const auto icon = [&line, &places](const Word& word) {
        const bool first = word.line != line;
        line = word.line;
        return first && word.text.size() <= kMostIconCharacters &&
               (word.confidence < kSurelyText || word.text.size() == 1) && liesIn(word.box, places);
    };
    std::vector<Word> kept;
    for (const Word& word : words) {
        if (!icon(word))
            kept.push_back(word);
    }
    words.swap(kept);
}

void dropInkless(std::vector<Word>& words, const QImage& grey)
{
    std::erase_if(words, [&grey](const Word& word) {
        return (word.text.size() == 1 || isSymbols(word.text)) &&
               inkShare(grey, word.box) < kLeastInk;
    });
}

} // namespace brindlecam::DoubtfulWords
