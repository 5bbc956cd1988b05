#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace brindlecam {

/// Memory for an opaque picture that grows downwards: the addresses are reserved at once, the
/// memory is taken as it is written, so that nothing is ever moved, joined or copied. It is given
/// back with the last owner. Any thread, one at a time.
class TallBody final {
public:
    /// Null when the system has no room for so many addresses.
    [[nodiscard]] static std::shared_ptr<TallBody> reserve(std::size_t bytes);
    ~TallBody();
    TallBody(const TallBody&) = delete;
    TallBody& operator=(const TallBody&) = delete;

    /// Makes at least the first `bytes` usable; they stay so. False when that is more than was
    /// reserved, or when the system has no memory left: then everything is as it was.
    [[nodiscard]] bool growTo(std::size_t bytes);

    /// Copies pixels of 4 bytes to `at`, the fourth byte of each as 255. There must be room.
    void write(std::size_t at, std::span<const std::uint8_t> pixels);

    [[nodiscard]] std::uint8_t* data() const { return m_data; }
    [[nodiscard]] std::size_t usable() const { return m_usable; } ///< bytes

private:
    TallBody(std::uint8_t* data, std::size_t reserved);

    std::uint8_t* const m_data;
    const std::size_t m_reserved;
    std::size_t m_usable = 0;
};

} // namespace brindlecam
