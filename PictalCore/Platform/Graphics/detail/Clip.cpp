#include "PictalCore/Platform/Graphics/detail/Clip.h"

#include "PictalCore/Platform/Graphics/Kernels/Blend.h"

#include <algorithm>
#include <utility>

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

std::optional<std::span<const std::uint8_t>> Clip::weights(std::int64_t row, std::int64_t left,
                                                           std::int64_t right) const {
    if (!mask_) return std::nullopt;
    return mask_->span(row, left, right);
}

void Clip::intersect(const PixelRect& bounds) {
    bounds_ = bounds_.intersection(bounds);
}

void Clip::intersect(CoverageMask&& mask) {
    bounds_ = bounds_.intersection(mask.area());
    if (mask_ && !bounds_.isEmpty())
        for (std::int64_t row = bounds_.top; row < bounds_.bottom; ++row)
            kernels::blendKernels().multiplyCoverage(
                mask.span(row, bounds_.left, bounds_.right),
                std::as_const(*mask_).span(row, bounds_.left, bounds_.right));
    mask_ = std::make_shared<const CoverageMask>(std::move(mask));
}

}  // namespace pictal::detail
