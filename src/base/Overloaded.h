#pragma once

namespace brindlecam {

/// One visitor out of a lambda per alternative.
template <typename... Branches>
struct Overloaded : Branches... {
    using Branches::operator()...;
};
template <typename... Branches>
Overloaded(Branches...) -> Overloaded<Branches...>;

} // namespace brindlecam
