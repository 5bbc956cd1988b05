#pragma once

#include "Picture.h"

#include <QRect>
#include <QString>

#include <vector>

namespace brindlecam::soak {

/// The drawer as it stands on the screen, and what is known of it. Native pixels.
struct Drawer {
    struct Tile {
        QString path; ///< of the history's file
        Picture picture{};
    };

    Picture below{};           ///< what a capture shows: the screen without it
    QRect monitor{};           ///< on which it stands
    std::vector<Tile> tiles{}; ///< newest first
    int focused = -1;          ///< which tile has the keys; -1: none
    int scrolled = 0;

    [[nodiscard]] int count() const { return static_cast<int>(tiles.size()); }
    /// How wide it is; and where it stands, with the row of tiles in it.
    [[nodiscard]] QRect place() const;
    [[nodiscard]] QRect row() const;
    /// Where this tile is, and the picture in it.
    [[nodiscard]] QRect tile(int index) const;
    [[nodiscard]] QRect thumbnail(int index) const;
    /// The tiles that can be seen whole.
    [[nodiscard]] std::vector<int> inSight() const;

    /// The keys go to this tile, or the nearest there is, which comes into sight.
    void focus(int index);
    void scrollTo(int place);
    /// This tile goes, and the rest moves up.
    void remove(int index);
};

} // namespace brindlecam::soak
