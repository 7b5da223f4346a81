#include "PictalCore/Platform/Registration/NoisyComparison.h"

#include "PictalCore/Platform/Registration/SegmentRows.h"

#include <algorithm>
#include <cstdlib>

namespace pictal::detail {

std::uint16_t noiseOf(const CGImage& image, const SegmentGrid& grid) {
    const std::vector<std::uint32_t> starts = grid.shiftedStarts(0);
    std::vector<kernels::SegmentSums> above(starts.size()), here(starts.size());
    std::vector<std::uint16_t> differences;
    SegmentRows source(image);
    for (std::int64_t y = 4; y < image.height(); y += 16) {
        kernels::segmentKernels().sumSegments(source.row(y - 1), starts, above.data());
        kernels::segmentKernels().sumSegments(source.row(y), starts, here.data());
        for (std::size_t s = 0; s < starts.size(); ++s) {
            int most = 0;
            for (std::size_t i = 0; i < here[s].size(); ++i)
                most = std::max(most, std::abs(here[s][i] - above[s][i]));
            differences.push_back(static_cast<std::uint16_t>(most));
        }
    }
    if (differences.empty()) return 0;
    const auto tenth = differences.begin() + std::ssize(differences) / 10;
    std::ranges::nth_element(differences, tenth);
    return *tenth;
}

SumTable::SumTable(const CGImage& image, const SegmentGrid& grid, std::int64_t shift)
    : rows_(image.height()),
      columns_(grid.columns()),
      sums_(std::make_unique_for_overwrite<kernels::SegmentSums[]>(static_cast<std::size_t>(rows_) *
                                                                   columns_)) {
    const std::vector<std::uint32_t> starts = grid.shiftedStarts(shift);
    SegmentRows source(image);
    for (std::int64_t y = 0; y < rows_; ++y)
        kernels::segmentKernels().sumSegments(source.row(y), starts,
                                              sums_.get() + static_cast<std::size_t>(y) * columns_);
}

NoisyComparison::NoisyComparison(const SegmentGrid& grid, const SumTable& reference,
                                 const SumTable& target, const SumTable& unmoved,
                                 std::int64_t shift, std::uint16_t noise)
    : reference_(reference),
      target_(target),
      unmoved_(unmoved),
      columns_(grid.inside(shift)),
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
