#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <array>
#include <charconv>
#include <initializer_list>
#include <limits>
#include <string>

/// Geometry as text, so that a failed comparison can be read: EXPECT_EQ(text(got), text(want)).
/// Numbers are written exactly, hence equal texts are equal values; a rectangle is standardised.
namespace pictal {

inline constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
inline constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();

inline std::string text(std::initializer_list<CGFloat> numbers) {
    std::string result;
    for (const CGFloat number : numbers) {
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.begin(), digits.end(), number + 0.0).ptr;
        result += (result.empty() ? "(" : ", ") + std::string(digits.data(), end);
    }
    return result + ")";
}
inline std::string text(CGPoint point) {
    return text({point.x, point.y});
}
inline std::string text(CGSize size) {
    return text({size.width, size.height});
}
inline std::string text(const CGRect& rect) {
    if (rect.isNull()) return "null";
    return text({rect.minX(), rect.minY(), rect.width(), rect.height()});
}

}  // namespace pictal
