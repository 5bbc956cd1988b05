#pragma once

#include "long/Stitcher.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace brindlecam::test {

using Bytes = std::vector<std::uint8_t>;

/// Rows of pixels as frames have them, of one width.
class PixelRows final {
public:
    explicit PixelRows(int width, Bytes bytes = {})
        : m_width(width)
        , m_bytes(std::move(bytes))
    {
    }

    /// Rows of patches in all colours, no two alike.
    static PixelRows patches(int width, int rows, std::mt19937& random)
    {
        PixelRows made(width);
        for (int row = 0; row < rows; ++row) {
            int left = 0;
            while (left < width) {
                const int patch = 1 + static_cast<int>(random() % 12);
                const auto colour = static_cast<std::uint32_t>(random());
                for (const int end = std::min(left + patch, width); left < end; ++left)
                    made.append(colour);
            }
        }
        return made;
    }

    /// Lines of text between blank rows.
    static PixelRows text(int width, int rows, std::mt19937& random)
    {
        PixelRows made(width);
        while (made.rows() < rows) {
            for (int blank = 2 + static_cast<int>(random() % 7); blank > 0; --blank)
                made.appendRow(0x00ffffff);
            made.append(patches(width, 8 + static_cast<int>(random() % 6), random));
        }
        made.m_bytes.resize(made.m_bytes.size() / static_cast<std::size_t>(made.rows()) *
                            static_cast<std::size_t>(rows));
        return made;
    }

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int rows() const { return static_cast<int>(m_bytes.size()) / (m_width * 4); }
    [[nodiscard]] const Bytes& bytes() const { return m_bytes; }

    [[nodiscard]] PixelRows cut(int from, int count) const
    {
        PixelRows part(m_width);
        part.m_bytes.assign(m_bytes.begin() + at(from), m_bytes.begin() + at(from + count));
        return part;
    }

    /// Puts other rows, which may be narrower, over these.
    void put(int row, int column, const PixelRows& other)
    {
        for (int i = 0; i < other.rows(); ++i)
            std::copy_n(other.m_bytes.begin() + other.at(i), other.m_width * 4,
                        m_bytes.begin() + at(row + i) + column * 4);
    }

    void append(const PixelRows& other)
    {
        m_bytes.insert(m_bytes.end(), other.m_bytes.begin(), other.m_bytes.end());
    }

    void appendRow(std::uint32_t colour)
    {
        for (int i = 0; i < m_width; ++i)
            append(colour);
    }

    /// The same with 255 in each fourth byte, as pictures have it.
    [[nodiscard]] PixelRows opaque() const
    {
        PixelRows made = *this;
        for (std::size_t i = 3; i < made.m_bytes.size(); i += 4)
            made.m_bytes[i] = 255;
        return made;
    }

    bool operator==(const PixelRows&) const = default;

private:
    void append(std::uint32_t colour)
    {
        for (int shift = 0; shift < 32; shift += 8)
            m_bytes.push_back(static_cast<std::uint8_t>(colour >> shift));
    }
    [[nodiscard]] std::ptrdiff_t at(int row) const
    {
        return static_cast<std::ptrdiff_t>(row) * m_width * 4;
    }

    int m_width;
    Bytes m_bytes;
};

/// A tall page seen through a window, between a header and a footer that stay.
struct FramedPage {
    PixelRows header;
    PixelRows page;
    PixelRows footer;
    int height; ///< of the window, with header and footer

    [[nodiscard]] int viewRows() const { return height - header.rows() - footer.rows(); }
    [[nodiscard]] PixelRows frame(int offset) const { return until(offset, viewRows()); }
    /// What scrolling down to there shows, all of it.
    [[nodiscard]] PixelRows stitched(int offset) const { return until(0, offset + viewRows()); }

private:
    [[nodiscard]] PixelRows until(int from, int count) const
    {
        PixelRows made = header;
        made.append(page.cut(from, count));
        made.append(footer);
        return made;
    }
};

inline PixelRows pictureOf(const Stitcher& stitcher)
{
    const auto picture = stitcher.makeImage();
    if (!picture)
        return PixelRows(stitcher.width());
    const std::uint8_t* const bytes = picture->bytes.get();
    return PixelRows(picture->width, {bytes, bytes + picture->width * picture->height * 4});
}

/// A stitcher for frames like this one, which has taken it.
inline std::unique_ptr<Stitcher> begun(const PixelRows& frame, int maxRows = 20000)
{
    auto stitcher = Stitcher::create(frame.width(), frame.rows(), maxRows);
    if (stitcher)
        stitcher->add(frame.bytes());
    return stitcher;
}

} // namespace brindlecam::test
