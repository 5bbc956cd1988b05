#pragma once

#include "reading/StopRequest.h"

#include <QImage>
#include <QRect>

#include <utility>
#include <vector>

namespace brindlecam {

/// Areas of one colour: 4-connected pixels whose neighbours differ little, so that a gradient is
/// one area. Pixels, origin top-left. Any thread.
class ColourRegions final {
public:
    /// What a pixel belongs to when its area is too small to be told apart.
    static constexpr int kNone = -1;

    struct Region {
        int area = 0;    ///< pixels
        QRect box = {};  ///< bounding box
        int square = 0;  ///< side of the largest square inside
        int contact = 0; ///< pixels on the picture's edge
        int first = 0;   ///< index of its first pixel, row by row
    };

    /// `picture` is a 32-bit picture; its alpha is not looked at. Areas smaller than a background
    /// can be are left out, but the largest is always there.
    explicit ColourRegions(const QImage& picture, StopRequest stop = {});

    [[nodiscard]] const std::vector<Region>& regions() const { return m_regions; }

    /// For each pixel, row by row: the index of its region or kNone.
    [[nodiscard]] const std::vector<int>& labels() const { return m_labels; }

    /// The labels, taken out of the object.
    [[nodiscard]] std::vector<int> takeLabels() { return std::move(m_labels); }

    /// Pixels inside the region's outline that are not its own.
    [[nodiscard]] int holes(int region) const;

private:
    void connect(const QImage& picture, StopRequest stop);
    void number();
    void measure(StopRequest stop);

    int m_width = 0;
    int m_height = 0;
    std::vector<int> m_labels; ///< while connecting: provisional numbers
    std::vector<int> m_parent; ///< of provisional numbers; a root is its own
    std::vector<Region> m_regions;
};

} // namespace brindlecam
