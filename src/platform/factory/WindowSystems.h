#pragma once

#include "base/Result.h"
#include "platform/Session.h"

#include <vector>

namespace brindlecam {

/// Whose windows Qt may make, and when.
struct BuiltSystem {
    WindowSystem system;
    const char* qtName; ///< what Qt calls it; null: whatever it was told
    bool (*offered)(const Session&);
};

/// The first that is offered in this session. The error says in Spanish what is missing.
[[nodiscard]] Result<BuiltSystem> chooseWindowSystem(const std::vector<BuiltSystem>& built,
                                                     const Session& session);

} // namespace brindlecam
