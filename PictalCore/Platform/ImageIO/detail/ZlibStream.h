#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>

/// Zlib streams that are whole in memory.
namespace pictal::detail {

/// Bytes that a vector would clear first.
struct ByteBuffer {
    std::unique_ptr<std::byte[]> bytes;
    std::size_t size = 0;

    [[nodiscard]] std::span<const std::byte> span() const { return {bytes.get(), size}; }
};

/// @param level  1 (fast) to 12 (small)
/// @return nothing when there is not enough memory
[[nodiscard]] std::optional<ByteBuffer> compressed(std::span<const std::byte> bytes, int level);

struct Inflation {
    enum class Status { done, roomTooSmall, damaged };
    Status status = Status::damaged;
    /// Bytes of the stream, and what they became. Only of use when it is done.
    std::size_t taken = 0;
    std::size_t made = 0;
};

/// Unpacks a stream, which may end before its bytes do. What is in `room` afterwards is only of use
/// when it is done. Not enough memory for the work counts as damage.
[[nodiscard]] Inflation inflate(std::span<const std::byte> stream, std::span<std::byte> room);

}  // namespace pictal::detail
