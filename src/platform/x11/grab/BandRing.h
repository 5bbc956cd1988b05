#pragma once

#include <QtGlobal>

#include <cstddef>
#include <functional>

namespace brindlecam {

/// One horizontal band of a picture.
struct Band {
    int firstRow = 0;
    int rows = 0;
    std::size_t slot = 0; ///< where in the ring its first byte is, in bytes
};

/// Who is at the other end of a ring: fills or empties its slots when asked to, one after the other
/// in the order it was asked.
class BandPeer {
public:
    virtual ~BandPeer() = default;

    /// Asks it to fill or to empty this band's slot. Nothing waits.
    virtual void ask(const Band& band) = 0;
    /// Sends what was asked for on its way.
    virtual void send() = 0;
    /// Waits until it is through with the oldest band it was asked for. False: it never will be.
    [[nodiscard]] virtual bool await() = 0;
};

/// Hands a picture over through a small buffer shared with another process. Pages shared with one
/// cost both of them dearly when they are touched for the first time; so only these few are shared,
/// used again and again, and each band is copied while it is still in the cache.
namespace BandRing {

/// Small enough to be read again from the cache, large enough for the answers not to count.
inline constexpr std::size_t kSlotBytes = 512 * 1024;
/// One is copied while the peer works on the others.
inline constexpr std::size_t kSlots = 4;
inline constexpr std::size_t kBytes = kSlotBytes * kSlots;

/// Copies `height` rows of `bytesPerLine` each, no more than kSlotBytes, from the ring of kBytes
/// into `target`. False when the peer fails on the way; nothing more is asked for then.
[[nodiscard]] bool read(BandPeer& peer, const uchar* ring, int height, qsizetype bytesPerLine,
                        uchar* target);

/// Writes a band's rows to where its first byte goes.
using Fill = std::function<void(const Band& band, uchar* target)>;

/// The way back: fills the bands and hands them over. On return the peer is through with all of
/// them. False when it fails on the way.
[[nodiscard]] bool write(BandPeer& peer, uchar* ring, int height, qsizetype bytesPerLine,
                         const Fill& fill);

} // namespace BandRing

} // namespace brindlecam
