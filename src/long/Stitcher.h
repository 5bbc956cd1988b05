#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace brindlecam {

class TallBody;
struct Displacement;

/// Makes one tall picture of frames that show the same rectangle while the content under it is
/// scrolled down: finds by how many rows it moved since the last frame accepted, and appends the
/// rows that came into view. What does not move at the top (a header) stays as the first frame has
/// it, what does not at the bottom (a footer) is shown once, as the last frame accepted has it.
///
/// A frame is `width` × `height` pixels, rows from the top without gaps, 4 bytes each: the second
/// one green, the fourth ignored, red and blue in either order, which the picture has, too. One
/// stitcher serves one capture, on any thread, one at a time.
class Stitcher final {
public:
    struct Step {
        enum class Kind : std::uint8_t {
            added, ///< the content moved by `rows`, which were appended
            still, ///< nothing changed, or it was the first frame
            lost,  ///< no credible displacement; the next frame is held against the same one again
            full,  ///< no more rows fit: the capture is over
        };
        Kind kind = Kind::still;
        int rows = 0;

        bool operator==(const Step&) const = default;
    };

    /// Opaque pixels without gaps between the rows; the fourth byte of each is 255.
    struct Picture {
        std::shared_ptr<const std::uint8_t> bytes; ///< of the stitcher's memory, which it keeps
        int width = 0;
        int height = 0;
    };

    /// `maxRows` is the most that the body may hold, which is the picture without its footer; the
    /// first frame is taken whole in any case. Null when there is no memory for that.
    [[nodiscard]] static std::unique_ptr<Stitcher> create(int width, int height, int maxRows);

    /// Frames of another size end the process; so does a frame after a picture was made, while that
    /// lives. Where memory runs out the stitcher is full.
    Step add(std::span<const std::uint8_t> frame);

    /// What was stitched so far, without a copy; nothing before the first frame.
    [[nodiscard]] std::optional<Picture> makeImage() const;

    /// Of the body.
    [[nodiscard]] int rows() const { return m_rows; }
    /// Known from the first displacement on.
    [[nodiscard]] std::optional<int> footerRows() const { return m_footerRows; }
    /// The height that makeImage() would answer with; 0 before the first frame.
    [[nodiscard]] int pictureRows() const { return m_rows + m_footerRows.value_or(0); }

    [[nodiscard]] int maxRows() const { return m_maxRows; }
    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }

    /// For diagnosis: hears a line about each frame but the first.
    std::function<void(const std::string&)> trace;

private:
    Stitcher(int width, int height, int maxRows, std::shared_ptr<TallBody> body);

    Step append(std::span<const std::uint8_t> frame, const Displacement& moved);
    void put(int at, std::span<const std::uint8_t> frame, int first, int count);
    [[nodiscard]] std::size_t bytesOf(int rows) const;

    const int m_width;
    const int m_height;
    const int m_maxRows;
    /// The body, and right behind it the footer of the last frame accepted.
    const std::shared_ptr<TallBody> m_body;
    std::vector<std::uint8_t> m_lastSignature; ///< of the last frame accepted
    std::vector<std::uint8_t> m_signature;     ///< of the frame at hand
    std::optional<int> m_footerRows;
    int m_rows = 0;
};

} // namespace brindlecam
