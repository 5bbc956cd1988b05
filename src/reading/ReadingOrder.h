#pragma once

#include "reading/Fragment.h"
#include "reading/StopRequest.h"

#include <QStringList>

#include <vector>

namespace brindlecam {

/// The lines of a page as one reads them: panels beside each other one by one, columns one after
/// the other, everything else row by row. Any thread.
[[nodiscard]] QStringList readingOrder(const std::vector<Fragment>& fragments,
                                       StopRequest stop = {});

} // namespace brindlecam
