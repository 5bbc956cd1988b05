#pragma once

#include "reading/Rows.h"

#include <optional>
#include <vector>

namespace brindlecam {

/// Text set in columns, told from tables, forms and menus by how full both sides are. Any thread.
namespace Columns {

/// A run of rows with a gutter through all of them.
struct Run {
    std::size_t first = 0; ///< row
    std::size_t end = 0;   ///< row after the last
    std::vector<Fragment> left;
    std::vector<Fragment> right;
};

/// The run of columns that begins in a row, if there is one.
[[nodiscard]] std::optional<Run> runAt(const std::vector<Row>& rows, std::size_t first);

} // namespace Columns

} // namespace brindlecam
