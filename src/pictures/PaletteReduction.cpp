#include "pictures/PaletteReduction.h"

#include <QRgb>

#include <algorithm>

namespace brindlecam {

namespace {

constexpr std::uint32_t kOpaqueAlpha = 0xff000000U;
constexpr std::array kDepths{1, 2, 4, 8};

bool isOpaqueGrey(std::uint32_t colour)
{
    return qAlpha(colour) == 0xff && qRed(colour) == qGreen(colour) &&
           qGreen(colour) == qBlue(colour);
}

/// Distance between neighbouring greys of a depth: 255 at 1 bit, 1 at 8 bits.
int greyStep(int depth)
{
    return 255 / ((1 << depth) - 1);
}

} // namespace

std::optional<PaletteReduction> PaletteReduction::of(const QImage& picture)
{
    PaletteReduction reduction(picture.format() == QImage::Format_RGB32 ? kOpaqueAlpha : 0);
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(picture.constScanLine(y));
        if (!reduction.addRow(row, picture.width()))
            return std::nullopt;
    }
    reduction.chooseLayout();
    return reduction;
}

std::span<const std::uint32_t> PaletteReduction::colours() const
{
    return std::span(m_colours).first(static_cast<std::size_t>(m_count));
}

bool PaletteReduction::addRow(const std::uint32_t* pixels, int count)
{
    std::uint32_t last = ~(pixels[0] | m_alwaysSet);
    for (int x = 0; x < count; ++x) {
        const std::uint32_t colour = pixels[x] | m_alwaysSet;
        if (colour == last)
            continue;
        last = colour;
        std::int16_t& slot = m_slots[slotOf(colour)];
        if (slot != 0)
            continue;
        if (m_count == kMostColours)
            return false;
        m_colours[static_cast<std::size_t>(m_count)] = colour;
        slot = static_cast<std::int16_t>(++m_count);
    }
    return true;
}

std::size_t PaletteReduction::slotOf(std::uint32_t colour) const
{
    constexpr std::uint32_t kGoldenRatio = 2654435769U;
    constexpr int kSlotBits = 10;
    std::size_t slot = (colour * kGoldenRatio) >> (32 - kSlotBits);
    while (m_slots[slot] != 0 && m_colours[static_cast<std::size_t>(m_slots[slot] - 1)] != colour)
        slot = (slot + 1) % kSlots;
    return slot;
}

void PaletteReduction::chooseLayout()
{
    const auto all = colours();
    const int paletteDepth = *std::find_if(kDepths.begin(), kDepths.end(),
                                           [this](int depth) { return m_count <= 1 << depth; });
    const auto fitsGrey = [&all](int depth) {
        return std::all_of(all.begin(), all.end(), [depth](std::uint32_t colour) {
            return qBlue(colour) % greyStep(depth) == 0;
        });
    };

    if (std::all_of(all.begin(), all.end(), isOpaqueGrey)) {
        const int greyDepth = *std::find_if(kDepths.begin(), kDepths.end(), fitsGrey);
        if (greyDepth == paletteDepth) {
            m_layout = {PngLayout::Colour::grey, greyDepth};
            for (std::size_t i = 0; i < all.size(); ++i)
                m_samples[i] = static_cast<std::uint8_t>(qBlue(all[i]) / greyStep(greyDepth));
            return;
        }
    }
    m_layout = {PngLayout::Colour::palette, paletteDepth};
    for (std::size_t i = 0; i < all.size(); ++i)
        m_samples[i] = static_cast<std::uint8_t>(i);
}

void PaletteReduction::packRow(const std::uint32_t* pixels, int count, std::uint8_t* target) const
{
    std::uint32_t last = ~(pixels[0] | m_alwaysSet);
    std::uint8_t sample = 0;
    std::uint32_t gathered = 0;
    int gatheredBits = 0;
    for (int x = 0; x < count; ++x) {
        const std::uint32_t colour = pixels[x] | m_alwaysSet;
        if (colour != last) {
            last = colour;
            sample = m_samples[static_cast<std::size_t>(m_slots[slotOf(colour)] - 1)];
        }
        gathered = gathered << m_layout.depth | sample;
        gatheredBits += m_layout.depth;
        if (gatheredBits == 8) {
            *target++ = static_cast<std::uint8_t>(gathered);
            gatheredBits = 0;
        }
    }
    if (gatheredBits > 0)
        *target = static_cast<std::uint8_t>(gathered << (8 - gatheredBits));
}

} // namespace brindlecam
