#pragma once

#include "base/Error.h"

#include <utility>
#include <variant>

namespace brindlecam {

/// A value, or the Error that kept it from being made. Asking for the side that is not there is a
/// programming error.
template <typename T>
class [[nodiscard]] Result final {
public:
    Result(T value)
        : m_state(std::in_place_index<0>, std::move(value))
    {
    }
    Result(Error error)
        : m_state(std::in_place_index<1>, std::move(error))
    {
    }

    [[nodiscard]] bool ok() const { return m_state.index() == 0; }
    explicit operator bool() const { return ok(); }

    [[nodiscard]] const T& value() const& { return std::get<0>(m_state); }
    [[nodiscard]] T&& value() && { return std::get<0>(std::move(m_state)); }
    [[nodiscard]] const Error& error() const { return std::get<1>(m_state); }

private:
    std::variant<T, Error> m_state;
};

} // namespace brindlecam
