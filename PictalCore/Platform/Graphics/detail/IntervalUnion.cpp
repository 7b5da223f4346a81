#include "PictalCore/Platform/Graphics/detail/IntervalUnion.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace pictal::detail {
namespace {

constexpr CGFloat nowhere = std::numeric_limits<CGFloat>::infinity();

}  // namespace

void IntervalUnion::reset(std::span<const CGFloat> lines) {
    lines_ = lines;
    lows_.assign(lines.size(), nowhere);
    highs_.assign(lines.size(), nowhere);
    newLows_.resize(lines.size());
    newHighs_.resize(lines.size());
    leftBehind_.clear();
}

void IntervalUnion::add(const Capsule& capsule, CGFloat row) {
    const auto count = static_cast<CGFloat>(lines_.size());
    const auto firstLineFrom = [&](CGFloat y) {
        return static_cast<std::size_t>(std::ceil(std::clamp(y * count - 0.5, 0.0, count)));
    };
    const std::size_t first = firstLineFrom(capsule.top() - row);
    const std::size_t end = firstLineFrom(capsule.bottom() - row);
    if (first >= end) return;
    capsule.intersect(row, lines_.subspan(first, end - first),
                      std::span(newLows_).first(end - first),
                      std::span(newHighs_).first(end - first));
    grow(first, end - first);
}

void IntervalUnion::grow(std::size_t firstLine, std::size_t count) {
    CGFloat* const lows = lows_.data() + firstLine;
    CGFloat* const highs = highs_.data() + firstLine;
    const CGFloat* const newLows = newLows_.data();
    const CGFloat* const newHighs = newHighs_.data();

    // One sign bit is set where an interval is apart from the open run.
    std::int64_t apart = 0;
    for (std::size_t i = 0; i < count; ++i)
        apart |= std::bit_cast<std::int64_t>(highs[i] - newLows[i]) |
                 std::bit_cast<std::int64_t>(newHighs[i] - lows[i]);
    if (apart < 0) {
        for (std::size_t i = 0; i < count; ++i) {
            if (newLows[i] <= highs[i] && newHighs[i] >= lows[i]) continue;
            if (lows[i] != nowhere) leftBehind_.push_back({firstLine + i, {lows[i], highs[i]}});
            lows[i] = newLows[i];
            highs[i] = newHighs[i];
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        lows[i] = newLows[i] < lows[i] ? newLows[i] : lows[i];
        highs[i] = newHighs[i] > highs[i] ? newHighs[i] : highs[i];
    }
}

void IntervalUnion::flush(CoverageRow& row) {
    const Fixed height = fixedOne / static_cast<Fixed>(lines_.size());
    if (!leftBehind_.empty()) {
        sortRuns();
        lows_.clear();
        highs_.clear();
        for (const Run& run : leftBehind_) {
            lows_.push_back(run.interval.low);
            highs_.push_back(run.interval.high);
        }
    }
    row.addUprights(lows_, height);
    row.addUprights(highs_, -height);
}

/// Makes `leftBehind_` the whole union: runs by line, from left to right, apart from one another.
void IntervalUnion::sortRuns() {
    for (std::size_t line = 0; line < lines_.size(); ++line)
        if (lows_[line] != nowhere) leftBehind_.push_back({line, {lows_[line], highs_[line]}});
    std::sort(leftBehind_.begin(), leftBehind_.end(), [](const Run& a, const Run& b) {
        return a.line != b.line ? a.line < b.line : a.interval.low < b.interval.low;
    });
    auto last = leftBehind_.begin();
    for (auto run = last + 1; run != leftBehind_.end(); ++run) {
        if (run->line == last->line && run->interval.low <= last->interval.high) {
            last->interval.high = std::max(last->interval.high, run->interval.high);
        } else {
            *++last = *run;
        }
    }
    leftBehind_.erase(last + 1, leftBehind_.end());
}

}  // namespace pictal::detail
