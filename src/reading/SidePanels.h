#pragma once

#include "reading/Fragment.h"

#include <vector>

namespace brindlecam {

/// Areas of a window that stand side by side on different backgrounds, as a side bar and the page
/// beside it: each is read on its own. Any thread.
namespace SidePanels {

/// Takes the fragments apart into what is read one after the other. Without panels that is one
/// part with all of them.
[[nodiscard]] std::vector<std::vector<Fragment>> parts(const std::vector<Fragment>& fragments);

} // namespace SidePanels

} // namespace brindlecam
