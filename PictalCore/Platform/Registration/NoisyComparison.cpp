#include "PictalCore/Platform/Registration/NoisyComparison.h"

#include "PictalCore/Platform/Registration/SegmentRows.h"

#include <algorithm>

namespace pictal::detail {

SumTable::SumTable(const CGImage& image, const SegmentGrid& grid)
    : rows_(image.height()),
      columns_(grid.columns()),
      sums_(std::make_unique_for_overwrite<kernels::SegmentSums[]>(static_cast<std::size_t>(rows_) *
                                                                   columns_)) {
    const std::vector<std::uint32_t> starts = grid.shiftedStarts(0);
    SegmentRows source(image);
    for (std::int64_t y = 0; y < rows_; ++y)
        kernels::segmentKernels().sumSegments(source.row(y), starts,
                                              sums_.get() + static_cast<std::size_t>(y) * columns_);
}

std::uint16_t SumTable::noise() const {
    std::vector<std::uint16_t> differences;
    for (std::int64_t y = 4; y < rows_; y += 8)
        for (std::size_t column = 0; column < columns_; column += 3) {
            const kernels::SegmentSums& here = row(y)[column];
            const kernels::SegmentSums& above = row(y - 1)[column];
            std::uint16_t most = 0;
            for (std::size_t i = 0; i < here.size(); ++i)
                most = std::max(most, static_cast<std::uint16_t>(std::max(here[i], above[i]) -
                                                                 std::min(here[i], above[i])));
            differences.push_back(most);
        }
    if (differences.empty()) return 0;
    const auto tenth = differences.begin() + std::ssize(differences) / 10;
    std::ranges::nth_element(differences, tenth);
    return *tenth;
}

NoisyComparison::NoisyComparison(const SegmentGrid& grid, const SumTable& reference,
                                 const SumTable& target, std::uint16_t noise)
    : reference_(reference),
      target_(target),
      columns_(grid.inside(0)),
      tolerance_(std::clamp<std::uint16_t>(static_cast<std::uint16_t>(4 * noise), 12, 96)),
      // Sums seldom cross a step by noise alone, and most segments keep all eight.
      step_(static_cast<std::uint16_t>(3 * tolerance_)),
      referenceTestable_(testable(reference)),
      targetTestable_(testable(target)) {}

std::uint32_t NoisyComparison::key(const kernels::SegmentSums& sums) const {
    std::uint32_t hash = 0;
    for (const std::uint16_t sum : sums)
        hash = (hash ^ (sum / step_ + 1U)) * 0x9E3779B1U;
    return hash ^ (hash >> 15);
}

RowBits NoisyComparison::testable(const SumTable& table) const {
    const std::uint16_t texture = static_cast<std::uint16_t>(48 + 4 * tolerance_);
    RowBits result(static_cast<std::size_t>(table.rows()));
    for (std::int64_t y = 1; y < table.rows(); ++y) {
        std::uint64_t textured = 0;
        for (std::size_t s = 0; s < table.columns(); ++s) {
            const auto [least, most] = std::ranges::minmax(table.row(y)[s]);
            textured |= std::uint64_t{most - least > texture} << kernels::segmentBit(s);
        }
        result[static_cast<std::size_t>(y)] =
            textured & ~kernel_.alikeSegments(table.row(y), table.row(y - 1), table.columns(),
                                              static_cast<std::uint16_t>(2 * tolerance_));
    }
    return result;
}

}  // namespace pictal::detail
