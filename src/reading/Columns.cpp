#include "reading/Columns.h"

#include <algorithm>
#include <cstdlib>

namespace brindlecam::Columns {

namespace {

constexpr int kLeastRows = 3;           ///< with text on both sides
constexpr double kLeastGutter = 0.6;    ///< row heights
constexpr double kLeastCharacters = 14; ///< per fragment
constexpr double kLeastFill = 0.7;      ///< of the widest line, on average
constexpr double kAligned = 0.5;        ///< row heights
constexpr double kMostLeading = 1.5;    ///< row heights between rows of one column

/// Where nothing stands, from one pixel to another.
struct Gutter {
    int left = 0;
    int right = 0;
    [[nodiscard]] int width() const { return right - left; }
};

/// One side of the gutter: a line of each row that has one.
class Side final {
public:
    void add(const std::vector<Fragment>& line)
    {
        if (line.empty())
            return;
        m_fragments.insert(m_fragments.end(), line.begin(), line.end());
        m_lefts.push_back(line.front().box.left());
        m_widths.push_back(line.back().box.right() - line.front().box.left() + 1);
        for (const Fragment& fragment : line)
            m_characters += static_cast<int>(fragment.text.size());
    }

    [[nodiscard]] bool isText() const
    {
        const int widest = *std::max_element(m_widths.begin(), m_widths.end());
        double sum = 0;
        for (const int width : m_widths)
            sum += width;
        return m_characters >= kLeastCharacters * static_cast<double>(m_fragments.size()) &&
               sum >= kLeastFill * widest * static_cast<double>(m_widths.size());
    }

    [[nodiscard]] bool isAligned(int rowHeight) const
    {
        const auto [least, most] = std::minmax_element(m_lefts.begin(), m_lefts.end());
        return *most - *least <= kAligned * rowHeight;
    }

    [[nodiscard]] const std::vector<Fragment>& fragments() const { return m_fragments; }

private:
    std::vector<Fragment> m_fragments;
    std::vector<int> m_lefts;
    std::vector<int> m_widths;
    int m_characters = 0;
};

/// A row cut in two by a gutter; the gutter shrinks to what the row leaves free.
struct Cut {
    std::vector<Fragment> left;
    std::vector<Fragment> right;
    Gutter gutter;
};

Cut cutAt(const Row& row, Gutter gutter)
{
    Cut cut{.left = {}, .right = {}, .gutter = gutter};
    const int middle = (gutter.left + gutter.right) / 2;
    for (const Fragment& fragment : row.fragments) {
        if (fragment.box.center().x() < middle) {
            cut.left.push_back(fragment);
            cut.gutter.left = std::max(cut.gutter.left, fragment.box.right() + 1);
        } else {
            cut.right.push_back(fragment);
            cut.gutter.right = std::min(cut.gutter.right, fragment.box.left());
        }
    }
    return cut;
}

std::optional<Run> runWith(const std::vector<Row>& rows, std::size_t first, Gutter gutter)
{
    Run run{.first = first, .end = first, .left = {}, .right = {}};
    Side left;
    Side right;
    int both = 0;
    const int height = rows[first].box.height();
    for (std::size_t i = first; i < rows.size(); ++i) {
        if (i > first && rows[i].box.top() - rows[i - 1].box.bottom() > kMostLeading * height)
            break;
        const Cut cut = cutAt(rows[i], gutter);
        if (cut.gutter.width() < kLeastGutter * height)
            break;
        gutter = cut.gutter;
        left.add(cut.left);
        right.add(cut.right);
        if (!cut.left.empty() && !cut.right.empty())
            ++both;
        run.end = i + 1;
    }
    if (both < kLeastRows || !left.isText() || !right.isText() || !right.isAligned(height))
        return std::nullopt;
    run.left = left.fragments();
    run.right = right.fragments();
    return run;
}

} // namespace

std::optional<Run> runAt(const std::vector<Row>& rows, std::size_t first)
{
    const std::vector<Fragment>& line = rows[first].fragments;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const Gutter gutter{line[i - 1].box.right() + 1, line[i].box.left()};
        if (auto run = runWith(rows, first, gutter))
            return run;
    }
    return std::nullopt;
}

} // namespace brindlecam::Columns
