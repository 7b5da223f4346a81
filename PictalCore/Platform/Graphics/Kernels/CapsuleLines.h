#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Targets.h"

#include <cstddef>
#include <cstdint>
#include <span>

/// Where lines that divide a pixel row cross capsules, 16 lines at a time, near one place, in
/// numbers that are small there. T is float, or double for large radii.
namespace pictal::kernels {

/// A capsule seen from a place in a row: y from the row's top, x from a column.
template <class T>
struct CapsuleInRow {
    /// A side: from y `begin` to `end` it is the line through (x, y).
    struct Straight {
        T x, y, begin, end;
    };
    T radius, slope, upperX, upperY, lowerX, lowerY, top, bottom;
    Straight left, right;
};

inline constexpr std::size_t lineBlock = 16;

/// Intervals on each of 16 lines, apart from one another: in the first `used` places, where a line
/// may have none (`high` < `low`) before others.
template <class T>
struct LineIntervals {
    static constexpr std::size_t most = 8;
    std::size_t used = 0;
    alignas(64) T low[most][lineBlock];
    alignas(64) T high[most][lineBlock];
};

template <class T>
struct CapsuleLineKernels {
    using Capsules = std::span<const CapsuleInRow<T>>;

    /// The leftmost of the left ends of capsules, and the rightmost of the right ones, on each
    /// line. All lines cross all capsules.
    void (*leftEnds)(Capsules capsules, const T* lines, T* ends);
    void (*rightEnds)(Capsules capsules, const T* lines, T* ends);
    /// Unites the parts of capsules in 0 < x < width with the intervals until all places are used.
    /// @return how many capsules
    std::size_t (*unite)(Capsules capsules, const T* lines, T width, LineIntervals<T>& intervals);
    /// Unites one interval a line with the others, of which there is room for one more.
    void (*uniteIntervals)(const T* lows, const T* highs, LineIntervals<T>& intervals);
    /// Ends, kept in 0…width, in 1/65536.
    void (*toFixed)(const T* ends, T width, std::int32_t* fixed);
};

template <class T>
[[nodiscard]] const CapsuleLineKernels<T>& capsuleLineKernels(Target target = bestTarget());

}  // namespace pictal::kernels
