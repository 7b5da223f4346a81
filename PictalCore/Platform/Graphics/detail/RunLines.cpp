#include "PictalCore/Platform/Graphics/detail/RunLines.h"

#include "PictalCore/Platform/Graphics/detail/Fixed.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {
namespace {

/// A level of 1/256 of a row; the share of the row of a line between fine ones.
constexpr std::int32_t fineShare = 1;
constexpr std::int32_t coarseShare = 4;
constexpr std::int64_t shares = 256;
constexpr int quarters = 4;
constexpr std::size_t block = kernels::lineBlock;

/// Lines in the middles of equal shares of a row.
template <class T, std::size_t count>
constexpr auto linesOf = [] {
    std::array<T, count> ys{};
    for (std::size_t i = 0; i < count; ++i)
        ys[i] = (static_cast<T>(i) + T{0.5}) / count;
    return ys;
}();

/// A piece of an outline that rises less per pixel than two coarse lines is nearly level.
constexpr CGFloat levelRise = 2.0 * coarseShare / shares;

/// Steeper is horizontal; products of this and of places still fit a float.
constexpr CGFloat steepest = 1e15;
/// Left and right of every run.
constexpr auto nowhere = 1e30F;

/// The capsule seen from the start of the run. Its sides are anchored inside the run, if they reach
/// it, so that their places are small numbers there.
template <class T>
kernels::CapsuleInRow<T> inRow(const Capsule& capsule, const Run& run) {
    const auto t = [](CGFloat number) { return static_cast<T>(number); };
    const CGFloat slope = std::clamp(capsule.slope(), -steepest, steepest);
    const CGFloat middle = run.left + static_cast<CGFloat>(run.width) / 2;
    const auto straight = [&](Side side) -> typename kernels::CapsuleInRow<T>::Straight {
        const CGPoint begin = capsule.sideBegin(side);
        const CGFloat end = capsule.sideEnd(side).y;
        const CGFloat crossing = slope == 0 ? begin.y : begin.y + (middle - begin.x) / slope;
        const CGFloat y =
            std::max(std::max(begin.y, run.row), std::min(std::min(end, run.row + 1), crossing));
        return {t(begin.x + (y - begin.y) * slope - run.left), t(y - run.row), t(begin.y - run.row),
                t(end - run.row)};
    };
    const CGPoint upper = capsule.upper();
    const CGPoint lower = capsule.lower();
    return {.radius = t(capsule.radius()),
            .slope = t(slope),
            .upperX = t(upper.x - run.left),
            .upperY = t(upper.y - run.row),
            .lowerX = t(lower.x - run.left),
            .lowerY = t(lower.y - run.row),
            .top = t(capsule.top() - run.row),
            .bottom = t(capsule.bottom() - run.row),
            .left = straight(Side::left),
            .right = straight(Side::right)};
}

// An interval that was left behind: 8 bits of line, 24 of each end.
constexpr int endBits = 24;
constexpr std::uint64_t endMask = (std::uint64_t{1} << endBits) - 1;
constexpr std::size_t firstMostLeftBehind = std::size_t{1} << 14;

constexpr std::uint64_t lineOf(std::uint64_t interval) {
    return interval >> (2 * endBits);
}
constexpr std::uint64_t lowOf(std::uint64_t interval) {
    return (interval >> endBits) & endMask;
}
constexpr std::uint64_t highOf(std::uint64_t interval) {
    return interval & endMask;
}

}  // namespace

template <class T>
void RunLines<T>::reset(const Run& run) {
    run_ = run;
    fineQuarters_ = 0;
    fromLeft_.clear();
    fromRight_.clear();
    between_.clear();
    const auto columns = static_cast<std::size_t>(run.width) + 2;
    std::fill_n(partly_.begin(), columns, 0);
    std::fill_n(wholly_.begin(), columns, 0);
}

template <class T>
void RunLines<T>::add(const StrokeCapsule& capsule) {
    between_.push_back(inRow<T>(capsule.capsule, run_));
    noteLevelPieces(capsule);
}

template <class T>
void RunLines<T>::addEnd(Side side, const StrokeCapsule& capsule) {
    (side == Side::left ? fromRight_ : fromLeft_).push_back(inRow<T>(capsule.capsule, run_));
    noteLevelPieces(capsule);
}

/// Notes the quarters of the row in which a nearly level piece of the outline may lie in the run: a
/// side, or the tip of a cap.
template <class T>
void RunLines<T>::noteLevelPieces(const StrokeCapsule& at) {
    const Capsule& capsule = at.capsule;
    const auto note = [&](CGFloat top, CGFloat bottom) {
        for (int quarter = 0; quarter < quarters; ++quarter) {
            const CGFloat y = run_.row + quarter * 0.25;
            if (top < y + 0.25 && bottom > y) fineQuarters_ |= 1U << quarter;
        }
    };
    if (capsule.along().y < levelRise * capsule.radius()) {
        const CGFloat drop = std::abs(capsule.along().x);
        note(capsule.top(), capsule.lower().y - drop);
        note(capsule.upper().y + drop, capsule.bottom());
        return;
    }
    const CGFloat reach = capsule.radius() * levelRise;
    const auto isHere = [&](CGFloat x) {
        return x > run_.left - reach && x < run_.right() + reach;
    };
    if (at.topShows && isHere(capsule.upper().x))
        note(capsule.top(), capsule.top() + reach * levelRise);
    if (at.bottomShows && isHere(capsule.lower().x))
        note(capsule.bottom() - reach * levelRise, capsule.bottom());
}

template <class T>
void RunLines<T>::cover(std::span<std::uint8_t> levels) {
    static constexpr auto coarse = linesOf<T, shares / coarseShare>;
    static constexpr auto fine = linesOf<T, shares / fineShare>;
    for (std::size_t quarter = 0; quarter < quarters; ++quarter) {
        const bool isFine = (fineQuarters_ >> quarter & 1) != 0;
        const std::span<const T> lines = isFine ? std::span<const T>(fine) : coarse;
        const std::size_t count = lines.size() / quarters;
        for (std::size_t i = 0; i < count; i += block)
            coverBlock(&lines[quarter * count + i], isFine ? fineShare : coarseShare);
    }
    constexpr std::int64_t whole = shares * fixedOne;
    std::int64_t cover = 0;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        cover += wholly_[i];
        levels[i] = static_cast<std::uint8_t>(((cover + partly_[i]) * 255 + whole / 2) / whole);
    }
}

template <class T>
void RunLines<T>::coverBlock(const T* lines, std::int32_t share) {
    const auto& kernels = kernels::capsuleLineKernels<T>();
    alignas(64) std::array<T, block> ends;
    std::array<std::int32_t, block> lows;
    std::array<std::int32_t, block> highs;
    if (between_.empty()) {
        // Covered up to `highs` and again from `lows` on.
        lows.fill(static_cast<std::int32_t>(run_.width * fixedOne));
        if (!fromRight_.empty()) {
            kernels.leftEnds(fromRight_, lines, ends.data());
            kernels.toFixed(ends.data(), width(), lows.data());
            addEdges(lows, share);
        }
        if (!fromLeft_.empty()) {
            kernels.rightEnds(fromLeft_, lines, ends.data());
            kernels.toFixed(ends.data(), width(), highs.data());
            for (std::size_t i = 0; i < block; ++i)
                highs[i] = std::min(highs[i], lows[i]);
            addEdges(highs, -share);
            wholly_[0] += static_cast<std::int32_t>(block * fixedOne) * share;
        }
        return;
    }
    uniteBetween(lines);
    if (!leftBehind_.empty()) {
        leaveBehind();
        uniteLeftBehind();
        for (const std::uint64_t interval : leftBehind_) {
            addEdge(static_cast<std::int64_t>(lowOf(interval)), share);
            addEdge(static_cast<std::int64_t>(highOf(interval)), -share);
        }
        return;
    }
    for (std::size_t k = 0; k < intervals_.used; ++k) {
        kernels.toFixed(intervals_.low[k], width(), lows.data());
        kernels.toFixed(intervals_.high[k], width(), highs.data());
        for (std::size_t i = 0; i < block; ++i)
            highs[i] = std::max(highs[i], lows[i]);  // where there is none
        addEdges(lows, share);
        addEdges(highs, -share);
    }
}

/// Unites all capsules on the lines of a block.
template <class T>
void RunLines<T>::uniteBetween(const T* lines) {
    const auto& kernels = kernels::capsuleLineKernels<T>();
    alignas(64) std::array<T, block> ends;
    alignas(64) std::array<T, block> far;
    intervals_.used = 0;
    leftBehind_.clear();
    mostLeftBehind_ = firstMostLeftBehind;
    if (!fromLeft_.empty()) {
        far.fill(-T{nowhere});
        kernels.rightEnds(fromLeft_, lines, ends.data());
        kernels.uniteIntervals(far.data(), ends.data(), intervals_);
    }
    if (!fromRight_.empty()) {
        far.fill(T{nowhere});
        kernels.leftEnds(fromRight_, lines, ends.data());
        kernels.uniteIntervals(ends.data(), far.data(), intervals_);
    }
    const std::span<const kernels::CapsuleInRow<T>> all(between_);
    for (std::size_t done = 0; done < all.size();) {
        if (done > 0) leaveBehind();
        done += kernels.unite(all.subspan(done), lines, width(), intervals_);
    }
}

/// Moves all intervals to where there is room.
template <class T>
void RunLines<T>::leaveBehind() {
    const auto& kernels = kernels::capsuleLineKernels<T>();
    std::array<std::int32_t, block> lows;
    std::array<std::int32_t, block> highs;
    for (std::size_t k = 0; k < intervals_.used; ++k) {
        kernels.toFixed(intervals_.low[k], width(), lows.data());
        kernels.toFixed(intervals_.high[k], width(), highs.data());
        for (std::size_t i = 0; i < block; ++i)
            if (lows[i] < highs[i])
                leftBehind_.push_back(std::uint64_t{i} << (2 * endBits) |
                                      static_cast<std::uint64_t>(lows[i]) << endBits |
                                      static_cast<std::uint64_t>(highs[i]));
    }
    intervals_.used = 0;
    if (leftBehind_.size() < mostLeftBehind_) return;
    uniteLeftBehind();
    mostLeftBehind_ = std::max(mostLeftBehind_, 2 * leftBehind_.size());
}

/// Leaves the union: intervals by line, from left to right, apart from one another.
template <class T>
void RunLines<T>::uniteLeftBehind() {
    if (leftBehind_.empty()) return;
    std::ranges::sort(leftBehind_);
    auto last = leftBehind_.begin();
    for (auto next = last + 1; next != leftBehind_.end(); ++next) {
        if (lineOf(*next) == lineOf(*last) && lowOf(*next) <= highOf(*last))
            *last = (*last & ~endMask) | std::max(highOf(*last), highOf(*next));
        else
            *++last = *next;
    }
    leftBehind_.erase(last + 1, leftBehind_.end());
}

/// A line is covered from x on; a negative share takes that away.
template <class T>
void RunLines<T>::addEdge(std::int64_t x, std::int32_t share) {
    const auto column = static_cast<std::size_t>(x >> fixedBits);
    const auto inside = static_cast<std::int32_t>(fixedOne - (x & (fixedOne - 1)));
    partly_[column] += share * inside;
    wholly_[column + 1] += share * static_cast<std::int32_t>(fixedOne);
}

template <class T>
void RunLines<T>::addEdges(std::span<const std::int32_t, block> xs, std::int32_t share) {
    // Mostly all are in one column.
    const std::int32_t column = xs[0] >> fixedBits;
    std::int32_t elsewhere = 0;
    std::int32_t fractions = 0;
    for (const std::int32_t x : xs) {
        elsewhere |= (x >> fixedBits) ^ column;
        fractions += x & static_cast<std::int32_t>(fixedOne - 1);
    }
    if (elsewhere != 0) {
        for (const std::int32_t x : xs)
            addEdge(x, share);
        return;
    }
    constexpr auto whole = static_cast<std::int32_t>(block * fixedOne);
    const auto index = static_cast<std::size_t>(column);
    partly_[index] += share * (whole - fractions);
    wholly_[index + 1] += share * whole;
}

template class RunLines<float>;
template class RunLines<double>;

}  // namespace pictal::detail
