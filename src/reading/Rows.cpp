#include "reading/Rows.h"

#include <QStringList>

#include <algorithm>

namespace brindlecam {

namespace {

/// Part of the lower fragment's height that two of one row have in common.
constexpr double kSharedHeight = 0.5;

int sharedHeight(const QRect& a, const QRect& b)
{
    return std::min(a.bottom(), b.bottom()) - std::max(a.top(), b.top()) + 1;
}

bool inOneRow(const QRect& row, const QRect& fragment)
{
    return sharedHeight(row, fragment) >= kSharedHeight * std::min(row.height(), fragment.height());
}

} // namespace

QString Row::text() const
{
    QStringList texts;
    for (const Fragment& fragment : fragments)
        texts << fragment.text;
    return texts.join(QLatin1Char(' '));
}

std::vector<Row> rows(std::vector<Fragment> fragments)
{
    std::stable_sort(fragments.begin(), fragments.end(), [](const Fragment& a, const Fragment& b) {
        return a.box.center().y() < b.box.center().y();
    });
    // A row's height is that of its first fragment, so that rows can't grow into each other.
    std::vector<QRect> heights;
    std::vector<Row> result;
    for (Fragment& fragment : fragments) {
        std::size_t best = result.size();
        int most = 0;
        // Ordered by their middles: a row further up than a few can't be meant.
        constexpr std::size_t kLookBack = 8;
        for (std::size_t i = result.size() - std::min(result.size(), kLookBack); i < result.size();
             ++i) {
            const int shared = sharedHeight(heights[i], fragment.box);
            if (inOneRow(heights[i], fragment.box) && shared > most) {
                best = i;
                most = shared;
            }
        }
        if (best == result.size()) {
            result.emplace_back();
            heights.push_back(fragment.box);
        }
        result[best].box |= fragment.box;
        result[best].fragments.push_back(std::move(fragment));
    }
    for (Row& row : result) {
        std::stable_sort(
            row.fragments.begin(), row.fragments.end(),
            [](const Fragment& a, const Fragment& b) { return a.box.left() < b.box.left(); });
    }
    return result;
}

} // namespace brindlecam
