#pragma once

#include "PictalCore/Platform/Graphics/Kernels/Segments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace pictal::detail {

/// A word a row, a bit a column.
using RowBits = std::vector<std::uint64_t>;

/// A half-open range of rows.
struct RowRange {
    std::int64_t first = 0;
    std::int64_t last = 0;

    [[nodiscard]] bool isEmpty() const { return first >= last; }
    [[nodiscard]] RowRange intersected(const RowRange& other) const {
        return {std::max(first, other.first), std::min(last, other.last)};
    }
    [[nodiscard]] RowRange moved(std::int64_t rows) const { return {first + rows, last + rows}; }
};

/// What is left where three rows running have the bit: one row alone agrees by chance.
[[nodiscard]] inline RowBits runsOfThree(const RowBits& rows) {
    RowBits runs(rows.size());
    for (std::size_t y = 1; y + 1 < rows.size(); ++y) {
        const std::uint64_t run = rows[y - 1] & rows[y] & rows[y + 1];
        runs[y - 1] |= run;
        runs[y] |= run;
        runs[y + 1] |= run;
    }
    return runs;
}

/// What belongs to runs of fewer than 48 rows: lines of text, not pictures.
[[nodiscard]] inline RowBits shortRuns(const RowBits& bits) {
    constexpr std::array<std::size_t, 6> steps{1, 2, 4, 8, 16, 16};  // 1 + these: 48 rows
    RowBits runs = bits;
    // The rows where a long run begins, and then all that it covers.
    for (const std::size_t step : steps)
        for (std::size_t y = 0; y < runs.size(); ++y)
            runs[y] &= y + step < runs.size() ? runs[y + step] : 0;
    for (const std::size_t step : steps)
        for (std::size_t y = runs.size(); y-- > step;)
            runs[y] |= runs[y - step];
    for (std::size_t y = 0; y < bits.size(); ++y)
        runs[y] = bits[y] & ~runs[y];
    return runs;
}

/// How many bits are set in any range of rows.
class BitCounts {
  public:
    BitCounts() = default;
    explicit BitCounts(const RowBits& rows) : counts_(rows.size() + 1) {
        kernels::segmentKernels().addUp(rows, counts_.data());
    }
    [[nodiscard]] double in(const RowRange& range) const {
        if (range.isEmpty()) return 0;
        return static_cast<double>(counts_[static_cast<std::size_t>(range.last)] -
                                   counts_[static_cast<std::size_t>(range.first)]);
    }

  private:
    std::vector<std::uint32_t> counts_;
};

/// In how many places bits are set: a place is a column of so many rows, about a line of text,
/// since the rows of one word are one coincidence.
class PlaceCounts {
  public:
    PlaceCounts() = default;
    explicit PlaceCounts(const RowBits& rows) {
        RowBits places((rows.size() + rowsOfPlace - 1) / rowsOfPlace);
        for (std::size_t y = 0; y < rows.size(); ++y)
            places[y / rowsOfPlace] |= rows[y];
        counts_ = BitCounts(places);
    }
    [[nodiscard]] double in(const RowRange& range) const {
        constexpr auto step = static_cast<std::int64_t>(rowsOfPlace);
        if (range.isEmpty()) return 0;
        return counts_.in({range.first / step, (range.last + step - 1) / step});
    }

  private:
    static constexpr std::size_t rowsOfPlace = 24;

    BitCounts counts_;
};

}  // namespace pictal::detail
