#include "PictalCore/Platform/Graphics/detail/CoverageMask.h"

#include <algorithm>

namespace pictal::detail {

CoverageMask::CoverageMask(const PixelRect& area) : area_(area) {
    if (!area.isEmpty()) coverage_.resize(static_cast<std::size_t>(area.width() * area.height()));
}

std::span<std::uint8_t> CoverageMask::span(std::int64_t row, std::int64_t left,
                                           std::int64_t right) {
    const auto start = (row - area_.top) * area_.width() + (left - area_.left);
    return std::span(coverage_).subspan(static_cast<std::size_t>(start),
                                        static_cast<std::size_t>(right - left));
}

std::span<const std::uint8_t> CoverageMask::span(std::int64_t row, std::int64_t left,
                                                 std::int64_t right) const {
    return const_cast<CoverageMask*>(this)->span(row, left, right);
}

void CoverageMask::solid(std::int64_t row, std::int64_t left, std::int64_t right) {
    std::ranges::fill(span(row, left, right), std::uint8_t{255});
}

void CoverageMask::varied(std::int64_t row, std::int64_t left,
                          std::span<const std::uint8_t> coverage) {
    const auto right = left + static_cast<std::int64_t>(coverage.size());
    std::ranges::copy(coverage, span(row, left, right).begin());
}

}  // namespace pictal::detail
