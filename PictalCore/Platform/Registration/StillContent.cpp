#include "PictalCore/Platform/Registration/StillContent.h"

#include <algorithm>
#include <array>
#include <bit>

namespace pictal::detail {

namespace {

/// Columns at the left and the right whose content stands still, nine tenths of it.
std::uint64_t stillColumns(const RowBits& testable, const RowBits& still, std::uint64_t columns) {
    std::array<std::uint32_t, kernels::maximumSegments> tests{}, stands{};
    for (std::size_t y = 0; y < testable.size(); ++y)
        for (std::uint64_t bits = testable[y]; bits != 0; bits &= bits - 1) {
            const auto bit = static_cast<std::size_t>(std::countr_zero(bits));
            ++tests[bit];
            stands[bit] += static_cast<std::uint32_t>(still[y] >> bit & 1);
        }
    std::uint64_t result = 0;
    const auto stop = [&](std::size_t column) {
        const std::size_t bit = kernels::segmentBit(column);
        if (columns >> bit & 1 && stands[bit] * 10 < tests[bit] * 9) return true;
        result |= std::uint64_t{1} << bit;
        return false;
    };
    for (std::size_t i = 0; i < kernels::maximumSegments && !stop(i); ++i) {
    }
    for (std::size_t i = kernels::maximumSegments; i > 0 && !stop(i - 1); --i) {
    }
    return result;
}

}  // namespace

StillContent::StillContent(const Comparison& frames) {
    const std::int64_t rows = frames.rows();
    const auto count = static_cast<std::size_t>(rows);
    const std::uint64_t columns = frames.columns();
    RowBits equal(count), testable(count);
    for (std::size_t y = 0; y < count; ++y) {
        const auto row = static_cast<std::int64_t>(y);
        equal[y] = frames.still(row) & columns;
        testable[y] = (frames.referenceTestable(row) | frames.targetTestable(row)) & columns;
    }
    const RowBits still = runsOfThree(equal);

    const auto all = static_cast<int>(std::popcount(columns));
    const auto stands = [&](std::int64_t y) {
        return std::popcount(still[static_cast<std::size_t>(y)]) >= all - all / 16;
    };
    while (rowsAtTop_ < rows && stands(rowsAtTop_))
        ++rowsAtTop_;
    while (rowsAtBottom_ < rows - rowsAtTop_ && stands(rows - 1 - rowsAtBottom_))
        ++rowsAtBottom_;

    const std::uint64_t sides = stillColumns(testable, still, columns);
    RowBits stillTestable(count), changed(count);
    mobile_.resize(count);
    for (std::size_t y = 0; y < count; ++y) {
        const auto row = static_cast<std::int64_t>(y);
        const bool chrome = row < rowsAtTop_ || row >= rows - rowsAtBottom_;
        mobile_[y] = chrome ? 0 : columns & ~sides & ~still[y];
        stillTestable[y] = testable[y] & still[y];
        changed[y] = testable[y] & ~still[y];
    }
    testable_ = BitCounts(testable);
    still_ = BitCounts(stillTestable);
    changedLines_ = BitCounts(shortRuns(changed));
}

double StillContent::share(const RowRange& rows) const {
    const double tests = testable_.in(rows);
    return tests > 0 ? still_.in(rows) / tests : 0;
}

double StillContent::writingShare(const RowRange& rows) const {
    const double still = still_.in(rows);
    return still > 0 ? still / (still + changedLines_.in(rows)) : 0;
}

}  // namespace pictal::detail
