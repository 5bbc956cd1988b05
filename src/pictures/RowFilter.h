#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace brindlecam {

/// The samples of a row beside those a PNG filter predicts them from, each `rowBytes` long.
struct RowNeighbours {
    const std::uint8_t* row;
    const std::uint8_t* left;
    const std::uint8_t* above;
    const std::uint8_t* aboveLeft;
};

/// Chooses the PNG filter of each row and applies it. Text and flat surfaces are best left as they
/// are, photographs need prediction: the choice is made on every fourth row and holds for the three
/// after it. Rows are handed in from the top; one object serves one picture.
class RowFilter final {
public:
    enum class Kind : std::uint8_t { none = 0, sub = 1, up = 2, paeth = 4 };

    /// `bytesPerPixel` is 1, 3 or 4.
    RowFilter(std::size_t rowBytes, std::size_t bytesPerPixel);

    /// Where the caller writes the samples of the next row.
    [[nodiscard]] std::uint8_t* nextRow();
    /// Writes the filter byte and the filtered row, 1 + rowBytes bytes in all, to `target`.
    void write(std::uint8_t* target);

private:
    [[nodiscard]] Kind chosenKind() const;
    [[nodiscard]] RowNeighbours neighbours() const;

    std::size_t m_rowBytes;
    std::size_t m_bytesPerPixel;
    // Both rows begin with one pixel of zeros: what the filters read left of the first pixel.
    std::vector<std::uint8_t> m_row;
    std::vector<std::uint8_t> m_above;
    Kind m_kind = Kind::none;
    std::size_t m_rowNumber = 0;
};

} // namespace brindlecam
