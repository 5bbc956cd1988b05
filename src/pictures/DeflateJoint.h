#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace brindlecam {

/// Joins deflate streams (RFC 1951) end to end, of an encoder that knows nothing of what follows.
/// Any thread.
namespace DeflateJoint {

/// The most bytes that a joint takes behind a stream.
constexpr std::size_t kBytes = 5;

/// Takes from the stream, the first `size` bytes of the room, the mark that its last block is the
/// last of all, and fills it up so that the next stream can begin with a byte. Answers with its new
/// size; nothing where it is no stream, there is no room or no memory.
[[nodiscard]] std::optional<std::size_t> letGoOn(std::span<std::uint8_t> room, std::size_t size);

} // namespace DeflateJoint

} // namespace brindlecam
