#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace brindlecam::fuzz {

/// The bytes of one run, spent from the front on the choices that a target makes. Once they are
/// spent, every choice is the first or the least one; so any bytes tell a whole story, with every
/// compiler the same one. Choices that are arguments of one call belong in braces or in variables:
/// compilers differ in what they evaluate first.
class FuzzInput final {
public:
    FuzzInput(const std::uint8_t* bytes, std::size_t count)
        : m_next(bytes)
        , m_end(bytes + count)
    {
    }

    [[nodiscard]] bool isSpent() const { return m_next == m_end; }

    /// A whole number from `least` to `most`, of as few bytes as hold so many numbers.
    std::int64_t number(std::int64_t least, std::int64_t most)
    {
        const std::uint64_t range =
            static_cast<std::uint64_t>(most) - static_cast<std::uint64_t>(least);
        std::uint64_t drawn = 0;
        for (std::uint64_t left = range; left != 0 && !isSpent(); left >>= 8)
            drawn = drawn << 8 | *m_next++;
        if (range != UINT64_MAX)
            drawn %= range + 1;
        return static_cast<std::int64_t>(static_cast<std::uint64_t>(least) + drawn);
    }

    int integer(int least, int most) { return static_cast<int>(number(least, most)); }

    bool flag() { return integer(0, 1) == 1; }
    /// True more seldom than flag().
    bool oneIn(int chances) { return integer(0, chances - 1) == chances - 1; }

    /// In steps of a 65535th of the way.
    qreal real(qreal least, qreal most)
    {
        return least + (most - least) * integer(0, UINT16_MAX) / UINT16_MAX;
    }

    template <typename List>
    const auto& oneOf(const List& list)
    {
        return *std::next(std::begin(list), integer(0, static_cast<int>(std::size(list)) - 1));
    }

    /// A length and so many bytes, fewer when they run out.
    QByteArray bytes(int most) { return taken(integer(0, most)); }

    QByteArray rest() { return taken(m_end - m_next); }

private:
    QByteArray taken(std::ptrdiff_t count)
    {
        const std::ptrdiff_t there = std::min(count, m_end - m_next);
        QByteArray bytes(reinterpret_cast<const char*>(m_next), there);
        m_next += there;
        return bytes;
    }

    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
};

} // namespace brindlecam::fuzz
