#include "PictalCore/Platform/Graphics/Kernels/CapsuleLines.h"

#include <cmath>

namespace pictal::kernels {

namespace {

/// Beyond every column.
constexpr float nowhere = 1e30F;

// Both the cap's and the side's answer are computed and one is chosen, so that there is no branch.
template <class T>
PICTAL_BODY T endAt(const CapsuleInRow<T>& capsule, const typename CapsuleInRow<T>::Straight& side,
                    T sign, T y) {
    const bool isUpper = y < side.begin;
    const T distance = y - (isUpper ? capsule.upperY : capsule.lowerY);
    const T square = (capsule.radius - distance) * (capsule.radius + distance);
    const T half = std::sqrt(square > 0 ? square : 0);
    const T onCap = (isUpper ? capsule.upperX : capsule.lowerX) + sign * half;
    const T onSide = side.x + (y - side.y) * capsule.slope;
    return ((y >= side.begin) & (y < side.end)) ? onSide : onCap;
}

template <class T>
PICTAL_BODY void leftEndsBody(std::span<const CapsuleInRow<T>> capsules, const T* __restrict lines,
                              T* __restrict ends) {
    for (std::size_t i = 0; i < lineBlock; ++i)
        ends[i] = nowhere;
    for (const CapsuleInRow<T>& at : capsules) {
        const CapsuleInRow<T> capsule = at;
        for (std::size_t i = 0; i < lineBlock; ++i) {
            const T end = endAt<T>(capsule, capsule.left, -1, lines[i]);
            ends[i] = end < ends[i] ? end : ends[i];
        }
    }
}

template <class T>
PICTAL_BODY void rightEndsBody(std::span<const CapsuleInRow<T>> capsules, const T* __restrict lines,
                               T* __restrict ends) {
    for (std::size_t i = 0; i < lineBlock; ++i)
        ends[i] = -nowhere;
    for (const CapsuleInRow<T>& at : capsules) {
        const CapsuleInRow<T> capsule = at;
        for (std::size_t i = 0; i < lineBlock; ++i) {
            const T end = endAt<T>(capsule, capsule.right, 1, lines[i]);
            ends[i] = end > ends[i] ? end : ends[i];
        }
    }
}

/// Unites new intervals with those in the first place if that is all that they meet.
template <class T>
PICTAL_BODY bool growFirst(const T* __restrict lows, const T* __restrict highs,
                           LineIntervals<T>* __restrict intervals) {
    T* const firstLows = intervals->low[0];
    T* const firstHighs = intervals->high[0];
    int apart = 0;
    for (std::size_t i = 0; i < lineBlock; ++i) {
        const bool isApart = (lows[i] > firstHighs[i]) | (highs[i] < firstLows[i]);
        const bool areThere = (lows[i] <= highs[i]) & (firstLows[i] <= firstHighs[i]);
        apart |= (isApart & areThere) ? 1 : 0;
    }
    if (apart != 0) return false;
    for (std::size_t i = 0; i < lineBlock; ++i) {
        firstLows[i] = lows[i] < firstLows[i] ? lows[i] : firstLows[i];
        firstHighs[i] = highs[i] > firstHighs[i] ? highs[i] : firstHighs[i];
    }
    return true;
}

/// Takes out the intervals that the new ones meet, makes the new ones as wide, and puts them where
/// there is room first.
template <class T>
PICTAL_BODY void uniteNew(T* __restrict lows, T* __restrict highs,
                          LineIntervals<T>* __restrict intervals) {
    if (intervals->used == 1 && growFirst<T>(lows, highs, intervals)) return;
    for (std::size_t k = 0; k < intervals->used; ++k)
        for (std::size_t i = 0; i < lineBlock; ++i) {
            const T low = intervals->low[k][i];
            const T high = intervals->high[k][i];
            const bool meets = (lows[i] <= high) & (highs[i] >= low);
            const T wideLow = low < lows[i] ? low : lows[i];
            const T wideHigh = high > highs[i] ? high : highs[i];
            lows[i] = meets ? wideLow : lows[i];
            highs[i] = meets ? wideHigh : highs[i];
            intervals->low[k][i] = meets ? nowhere : low;
            intervals->high[k][i] = meets ? -nowhere : high;
        }
    for (std::size_t k = 0; k < intervals->used; ++k)
        for (std::size_t i = 0; i < lineBlock; ++i) {
            const T low = intervals->low[k][i];
            const T high = intervals->high[k][i];
            const bool isFree = low > high;
            intervals->low[k][i] = isFree ? lows[i] : low;
            intervals->high[k][i] = isFree ? highs[i] : high;
            lows[i] = isFree ? nowhere : lows[i];
            highs[i] = isFree ? -nowhere : highs[i];
        }
    int rest = 0;
    for (std::size_t i = 0; i < lineBlock; ++i)
        rest |= lows[i] <= highs[i] ? 1 : 0;
    if (rest == 0) return;
    for (std::size_t i = 0; i < lineBlock; ++i) {
        intervals->low[intervals->used][i] = lows[i];
        intervals->high[intervals->used][i] = highs[i];
    }
    ++intervals->used;
}

template <class T>
PICTAL_BODY std::size_t uniteBody(std::span<const CapsuleInRow<T>> capsules,
                                  const T* __restrict lines, T width, LineIntervals<T>& intervals) {
    alignas(64) T lows[lineBlock];
    alignas(64) T highs[lineBlock];
    for (std::size_t count = 0; count < capsules.size(); ++count) {
        const CapsuleInRow<T> capsule = capsules[count];
        for (std::size_t i = 0; i < lineBlock; ++i) {
            const T y = lines[i];
            const T low = endAt<T>(capsule, capsule.left, -1, y);
            const T high = endAt<T>(capsule, capsule.right, 1, y);
            const bool isIn =
                (y >= capsule.top) & (y <= capsule.bottom) & (low < width) & (high > 0);
            lows[i] = isIn ? low : nowhere;
            highs[i] = isIn ? high : -nowhere;
        }
        uniteNew<T>(lows, highs, &intervals);
        if (intervals.used == intervals.most) return count + 1;
    }
    return capsules.size();
}

template <class T>
PICTAL_BODY void uniteIntervalsBody(const T* lows, const T* highs, LineIntervals<T>& intervals) {
    alignas(64) T newLows[lineBlock];
    alignas(64) T newHighs[lineBlock];
    for (std::size_t i = 0; i < lineBlock; ++i) {
        newLows[i] = lows[i];
        newHighs[i] = highs[i];
    }
    uniteNew<T>(newLows, newHighs, &intervals);
}

template <class T>
PICTAL_BODY void toFixedBody(const T* ends, T width, std::int32_t* fixed) {
    for (std::size_t i = 0; i < lineBlock; ++i) {
        const T bounded = ends[i] > 0 ? (ends[i] < width ? ends[i] : width) : 0;
        // NOLINTNEXTLINE(bugprone-incorrect-roundings): right for what is not negative
        fixed[i] = static_cast<std::int32_t>(bounded * 65536 + T{0.5});
    }
}

template <class T, template <auto> class At>
constexpr CapsuleLineKernels<T> tableAt{At<leftEndsBody<T>>::run, At<rightEndsBody<T>>::run,
                                        At<uniteBody<T>>::run, At<uniteIntervalsBody<T>>::run,
                                        At<toFixedBody<T>>::run};

}  // namespace

template <class T>
const CapsuleLineKernels<T>& capsuleLineKernels(Target target) {
    return tableFor(target, tableAt<T, AtPlain>, tableAt<T, AtV3>, tableAt<T, AtV4>);
}

template const CapsuleLineKernels<float>& capsuleLineKernels(Target target);
template const CapsuleLineKernels<double>& capsuleLineKernels(Target target);

}  // namespace pictal::kernels
