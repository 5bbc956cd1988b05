#pragma once

#include "platform/HotKeys.h"

#include <memory>

namespace brindlecam {

/// One registered system-wide key combination; destroying it gives the combination back.
using HotKey = std::unique_ptr<HotKeyRegistration>;

} // namespace brindlecam
