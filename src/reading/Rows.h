#pragma once

#include "reading/Fragment.h"

#include <vector>

namespace brindlecam {

/// Fragments at one height, from left to right.
struct Row {
    std::vector<Fragment> fragments;
    QRect box;

    /// The fragments with one blank between them.
    [[nodiscard]] QString text() const;
};

/// Sorts fragments into rows, from top to bottom: those overlapping vertically share one.
[[nodiscard]] std::vector<Row> rows(std::vector<Fragment> fragments);

} // namespace brindlecam
