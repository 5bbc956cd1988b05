#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace brindlecam {

/// A stream in the zlib format at the end of some bytes. Its data is put piece by piece where the
/// stream says, and compressed on the way where that can be done. One thread at a time.
class ZlibStream {
public:
    enum class Effort {
        quick, ///< somebody waits; by ISA-L where we are built with it
        small, ///< written once, kept long
    };
    /// What the data is like. Much effort is wasted on photographs.
    enum class Content { drawn, photographed };

    /// A stream of `size` bytes of data that ends up behind what is in `bytes`, which stays the
    /// caller's and may not be touched before finish(); dropped before that, it leaves more bytes
    /// there. Null when it might take more than `most`.
    [[nodiscard]] static std::unique_ptr<ZlibStream> onto(QByteArray& bytes, std::size_t size,
                                                          Effort effort, std::size_t most);
    virtual ~ZlibStream() = default;
    ZlibStream(const ZlibStream&) = delete;
    ZlibStream& operator=(const ZlibStream&) = delete;

    /// Where the next so many bytes of data are to be put before the next call.
    [[nodiscard]] virtual std::uint8_t* room(std::size_t count) = 0;

    /// Ends the stream, once; false, with `bytes` as they were, when memory runs out.
    [[nodiscard]] virtual bool finish(Content content) = 0;

protected:
    ZlibStream() = default;
};

} // namespace brindlecam
