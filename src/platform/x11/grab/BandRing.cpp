#include "platform/x11/grab/BandRing.h"

#include <algorithm>
#include <cstring>

namespace brindlecam::BandRing {

namespace {

constexpr int kMostUnderWay = static_cast<int>(kSlots);

/// How a picture parts into bands.
struct Bands {
    const int height;
    const int rowsEach;

    Bands(int pictureHeight, qsizetype bytesPerLine)
        : height(pictureHeight)
        , rowsEach(static_cast<int>(static_cast<qsizetype>(kSlotBytes) / bytesPerLine))
    {
    }

    [[nodiscard]] int count() const { return (height + rowsEach - 1) / rowsEach; }
    [[nodiscard]] Band at(int index) const
    {
        const int firstRow = index * rowsEach;
        return {firstRow, std::min(rowsEach, height - firstRow),
                static_cast<std::size_t>(index) % kSlots * kSlotBytes};
    }
};

} // namespace

bool read(BandPeer& peer, const uchar* ring, int height, qsizetype bytesPerLine, uchar* target)
{
    const Bands bands(height, bytesPerLine);
    int asked = 0;
    while (asked < std::min(bands.count(), kMostUnderWay))
        peer.ask(bands.at(asked++));
    peer.send();
    for (int copied = 0; copied < bands.count(); ++copied) {
        if (!peer.await())
            return false;
        const Band band = bands.at(copied);
        std::memcpy(target + band.firstRow * bytesPerLine, ring + band.slot,
                    static_cast<std::size_t>(band.rows * bytesPerLine));
        if (asked == bands.count())
            continue;
        peer.ask(bands.at(asked++));
        peer.send();
    }
    return true;
}

bool write(BandPeer& peer, uchar* ring, int height, qsizetype bytesPerLine, const Fill& fill)
{
    const Bands bands(height, bytesPerLine);
    for (int filled = 0; filled < bands.count(); ++filled) {
        // The band whose slot this one takes.
        if (filled >= kMostUnderWay && !peer.await())
            return false;
        const Band band = bands.at(filled);
        fill(band, ring + band.slot);
        peer.ask(band);
        peer.send();
    }
    for (int left = std::min(bands.count(), kMostUnderWay); left > 0; --left) {
        if (!peer.await())
            return false;
    }
    return true;
}

} // namespace brindlecam::BandRing
