#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// Numbers as the format stores them: the most significant byte comes first.
namespace pictal::detail {

[[nodiscard]] inline std::uint32_t bigEndian16(const std::byte* bytes) {
    return std::to_integer<std::uint32_t>(bytes[0]) << 8 | std::to_integer<std::uint32_t>(bytes[1]);
}

[[nodiscard]] inline std::uint32_t bigEndian32(const std::byte* bytes) {
    return bigEndian16(bytes) << 16 | bigEndian16(bytes + 2);
}

inline void appendBigEndian32(std::vector<std::byte>& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::byte>(number >> shift & 255));
}

}  // namespace pictal::detail
