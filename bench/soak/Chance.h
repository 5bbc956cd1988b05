#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <algorithm>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace brindlecam::soak {

/// Every choice of a walk, the same ones for the same seed on every machine.
class Chance final {
public:
    explicit Chance(std::uint32_t seed);

    [[nodiscard]] std::uint32_t seed() const { return m_seed; }
    /// 0 … limit - 1.
    [[nodiscard]] int below(int limit);
    [[nodiscard]] int between(int least, int most);
    [[nodiscard]] bool oneIn(int count) { return below(count) == 0; }
    [[nodiscard]] QPoint pointIn(const QRect& where);
    /// A rectangle that lies within another one, which holds the largest.
    [[nodiscard]] QRect rectIn(const QRect& where, QSize least, QSize most);

    template <typename T>
    [[nodiscard]] const T& oneOf(const std::vector<T>& all)
    {
        return all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
    }
    template <typename T>
    void shuffle(std::vector<T>& all)
    {
        for (std::size_t left = all.size(); left > 1; --left)
            std::swap(all[left - 1], all[static_cast<std::size_t>(below(static_cast<int>(left)))]);
    }

private:
    std::uint32_t m_seed;
    std::mt19937 m_engine;
};

} // namespace brindlecam::soak
