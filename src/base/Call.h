#pragma once

#include <functional>
#include <type_traits>

namespace brindlecam {

/// Calls a callback that its owner may have left empty.
template <typename... Arguments>
void call(const std::function<void(Arguments...)>& callback,
          std::type_identity_t<Arguments>... arguments)
{
    if (callback)
        callback(arguments...);
}

} // namespace brindlecam
