#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace pictal::detail {

inline constexpr std::string_view pngSignature = "\x89PNG\r\n\x1A\n";

/// Whether bytes and signature agree as far as both go.
[[nodiscard]] bool startsAs(std::span<const std::byte> bytes, std::string_view signature);

/// What the bytes are instead, in one line for people.
[[nodiscard]] std::string whyNotPNG(std::span<const std::byte> bytes);

}  // namespace pictal::detail
