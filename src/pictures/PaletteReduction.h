#pragma once

#include "pictures/PngChunks.h"

#include <QImage>

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace brindlecam {

/// The few colours of a picture, and the smallest PNG layout that can hold them: grey samples where
/// all are opaque greys, else indices into a palette.
class PaletteReduction final {
public:
    static constexpr int kMostColours = 256;

    /// None as soon as a 257th colour turns up. `picture` is a plainPicture().
    [[nodiscard]] static std::optional<PaletteReduction> of(const QImage& picture);

    [[nodiscard]] PngLayout layout() const { return m_layout; }
    /// The colours in the order of their indices (ARGB, not premultiplied).
    [[nodiscard]] std::span<const std::uint32_t> colours() const;

    /// Writes one row of the picture as samples of layout(), packed from the high bits on.
    void packRow(const std::uint32_t* pixels, int count, std::uint8_t* target) const;

private:
    // Open addressing, never more than a quarter full.
    static constexpr std::size_t kSlots = 1024;

    explicit PaletteReduction(std::uint32_t alwaysSet)
        : m_alwaysSet(alwaysSet)
    {
    }

    [[nodiscard]] bool addRow(const std::uint32_t* pixels, int count);
    [[nodiscard]] std::size_t slotOf(std::uint32_t colour) const;
    void chooseLayout();

    std::uint32_t m_alwaysSet; ///< bits that count as set in every pixel: alpha of opaque pictures
    int m_count = 0;
    std::array<std::uint32_t, kMostColours> m_colours{};
    std::array<std::int16_t, kSlots> m_slots{};         ///< index of the colour + 1; 0: free
    std::array<std::uint8_t, kMostColours> m_samples{}; ///< what stands in the file for each index
    PngLayout m_layout;
};

} // namespace brindlecam
