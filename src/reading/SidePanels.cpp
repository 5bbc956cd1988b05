#include "reading/SidePanels.h"

#include "reading/Rows.h"

#include <algorithm>
#include <map>

namespace brindlecam::SidePanels {

namespace {

constexpr std::size_t kLeastRows = 2;

struct Panel {
    std::vector<Fragment> fragments;
    QRect box;
};

/// Panels that stand beside each other, from left to right.
struct Group {
    std::vector<Panel> panels;
    QRect box;
};

bool sideBySide(const QRect& a, const QRect& b)
{
    return (a.right() < b.left() || b.right() < a.left()) && a.top() <= b.bottom() &&
           b.top() <= a.bottom();
}

QRect boxOf(const std::vector<Fragment>& fragments)
{
    QRect box;
    for (const Fragment& fragment : fragments)
        box |= fragment.box;
    return box;
}

/// What stands around another panel, above and below it, is the window and not a panel.
void dropSurrounding(std::vector<Panel>& panels)
{
    std::vector<QRect> boxes;
    boxes.reserve(panels.size());
    for (const Panel& panel : panels)
        boxes.push_back(panel.box);
    std::erase_if(panels, [&boxes](const Panel& panel) {
        return std::any_of(boxes.begin(), boxes.end(), [&panel](const QRect& other) {
            return panel.box.intersects(other) && panel.box.height() > other.height();
        });
    });
}

/// Everything on a background of its own with two rows or more.
std::vector<Panel> candidates(const std::vector<Fragment>& fragments)
{
    std::map<int, std::vector<Fragment>> byBackground;
    for (const Fragment& fragment : fragments)
        byBackground[fragment.background].push_back(fragment);
    std::vector<Panel> result;
    for (auto& [background, members] : byBackground) {
        if (rows(members).size() < kLeastRows)
            continue;
        const QRect box = boxOf(members);
        result.push_back({std::move(members), box});
    }
    dropSurrounding(result);
    return result;
}

std::vector<Group> groups(std::vector<Panel> panels)
{
    std::sort(panels.begin(), panels.end(),
              [](const Panel& a, const Panel& b) { return a.box.left() < b.box.left(); });
    std::vector<Group> result;
    for (Panel& panel : panels) {
        const auto group = std::find_if(result.begin(), result.end(), [&panel](const Group& each) {
            return std::any_of(
                each.panels.begin(), each.panels.end(),
                [&panel](const Panel& other) { return sideBySide(other.box, panel.box); });
        });
        if (group == result.end()) {
            result.push_back({{}, panel.box});
            result.back().panels.push_back(std::move(panel));
        } else {
            group->box |= panel.box;
            group->panels.push_back(std::move(panel));
        }
    }
    std::erase_if(result, [](const Group& group) { return group.panels.size() < 2; });
    std::sort(result.begin(), result.end(),
              [](const Group& a, const Group& b) { return a.box.top() < b.box.top(); });
    return result;
}

int distance(const QRect& panel, int x)
{
    return std::max({0, panel.left() - x, x - panel.right()});
}

/// A button or a marked line within a panel has a background of its own, but belongs to it.
bool adopted(const Fragment& fragment, std::vector<Group>& groups)
{
    const QPoint middle = fragment.box.center();
    for (Group& group : groups) {
        if (middle.y() < group.box.top() || middle.y() > group.box.bottom())
            continue;
        const auto nearest = std::min_element(group.panels.begin(), group.panels.end(),
                                              [x = middle.x()](const Panel& a, const Panel& b) {
                                                  return distance(a.box, x) < distance(b.box, x);
                                              });
        nearest->fragments.push_back(fragment);
        return true;
    }
    return false;
}

bool isPanel(const Fragment& fragment, const std::vector<Group>& groups)
{
    return std::any_of(groups.begin(), groups.end(), [&fragment](const Group& group) {
        return std::any_of(group.panels.begin(), group.panels.end(), [&](const Panel& panel) {
            return panel.fragments.front().background == fragment.background;
        });
    });
}

} // namespace

std::vector<std::vector<Fragment>> parts(const std::vector<Fragment>& fragments)
{
    std::vector<Group> found = groups(candidates(fragments));
    if (found.empty())
        return {fragments};
    std::vector<Fragment> others;
    for (const Fragment& fragment : fragments) {
        if (!isPanel(fragment, found) && !adopted(fragment, found))
            others.push_back(fragment);
    }
    std::vector<std::vector<Fragment>> result;
    for (Group& group : found) {
        const auto below = std::stable_partition(others.begin(), others.end(),
                                                 [top = group.box.top()](const Fragment& fragment) {
                                                     return fragment.box.center().y() < top;
                                                 });
        if (below != others.begin())
            result.emplace_back(others.begin(), below);
        others.erase(others.begin(), below);
        for (Panel& panel : group.panels)
            result.push_back(std::move(panel.fragments));
    }
    if (!others.empty())
        result.push_back(std::move(others));
    return result;
}

} // namespace brindlecam::SidePanels
