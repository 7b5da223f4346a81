#include "PictalCore/Platform/Graphics/detail/Clip.h"

#include "PictalCore/Platform/Graphics/Kernels/Blend.h"

#include <utility>

namespace pictal::detail {

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
