#include "PictalCore/Styling/detail/CardShadow.h"

#include "PictalCore/Platform/Foundation/Clamping.h"
#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Kernels/GaussianBlur.h"
#include "PictalCore/Styling/detail/ShadowLayers.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

namespace {

constexpr std::int64_t ringWidth = 2;

/// As a colour is drawn: into 0…1, NaN as 0.
float drawnComponent(CGFloat value) {
    return static_cast<float>(clampedToUnit(clampedToNonNegative(value)));
}

RoundedMask ringAround(const CardOutline& outline) {
    return {outline.width + 2 * ringWidth, outline.height + 2 * ringWidth,
            outline.radius > 0 ? outline.radius + ringWidth : 0};
}

}  // namespace

CardShadow::CardShadow(const ShadowStyle& style, const CardOutline& outline)
    : outline_(outline),
      ring_(ringAround(outline)),
      color_{drawnComponent(style.color.red), drawnComponent(style.color.green),
             drawnComponent(style.color.blue)} {
    struct Drawn {
        float opacity;
        BlurredCard::Placement placement;
    };
    std::vector<Drawn> drawn;
    const auto layers = shadowLayers(style);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const auto& [x, y, blur] = layers[i];
        const float opacity =
            drawnComponent(style.opacity * shadowLayerOpacities[i] * style.color.alpha);
        if (!(style.opacity > 0) || !(opacity > 0) || blur < 0) continue;
        const double deviation = kernels::gaussianDeviation(blur);
        drawn.push_back({opacity, {x, y, deviation}});
        columns_ = std::max(columns_, BlurredCard::settledAfter(outline, x, deviation));
        rows_ = std::max(rows_, BlurredCard::settledAfter(outline, y, deviation));
    }
    const std::int64_t width = outline.canvasWidth();
    columns_ = std::min(columns_, (width + 1) / 2);
    for (const auto& [opacity, placement] : drawn) {
        leftLayers_.push_back({opacity, BlurredCard(outline, placement, {0, columns_})});
        if (placement.offsetX != 0)
            rightLayers_.push_back(
                {opacity, BlurredCard(outline, placement, {width - columns_, columns_})});
    }
}

CardShadow::Row CardShadow::row(std::int64_t y) {
    if (leftLayers_.empty()) return {};
    // Between the corners all rows are alike.
    const bool settled = y >= rows_ && y < outline_.canvasHeight() - rows_;
    const std::int64_t wanted = settled ? rows_ : y;
    if (wanted != computedRow_) computeRow(wanted);
    computedRow_ = wanted;
    return computed_;
}

void CardShadow::computeRow(std::int64_t y) {
    computeRing(y);
    left_.resize(outsideRing_.size());
    compose(leftLayers_, y, 0, left_);
    if (rightLayers_.empty()) {
        right_.assign(left_.rbegin(), left_.rend());
    } else {
        std::ranges::reverse(outsideRing_);
        right_.resize(outsideRing_.size());
        compose(rightLayers_, y, columns_ - std::ssize(right_), right_);
    }
    const bool aboveOrBelow = std::ssize(left_) == columns_;
    computed_ = {left_, aboveOrBelow ? left_.back() : 0, right_};
}

void CardShadow::computeRing(std::int64_t y) {
    outsideRing_.assign(static_cast<std::size_t>(columns_), 1.0F);
    const std::int64_t top = outline_.padding - ringWidth;
    if (y < top || y >= top + ring_.height()) return;
    const RoundedMask::Row ring = ring_.row(y - top);
    const std::int64_t inside = outline_.padding - ringWidth + ring.inside();
    outsideRing_.resize(static_cast<std::size_t>(std::clamp(inside, std::int64_t{0}, columns_)));
    for (std::int64_t i = 0; i < std::ssize(ring.edge); ++i) {
        const std::int64_t x = inside - std::ssize(ring.edge) + i;
        if (x < 0 || x >= std::ssize(outsideRing_)) continue;
        outsideRing_[static_cast<std::size_t>(x)] = 1 - ring.edge[static_cast<std::size_t>(i)];
    }
}

void CardShadow::compose(const std::vector<Layer>& layers, std::int64_t y, std::int64_t begin,
                         std::span<std::uint32_t> pixels) {
    const std::size_t count = pixels.size();
    through_.assign(count, 1.0F);
    coverage_.resize(count);
    for (const Layer& layer : layers) {
        layer.blurred.row(y, begin, coverage_);
        for (std::size_t x = 0; x < count; ++x)
            through_[x] *= 1 - layer.opacity * coverage_[x];
    }
    const auto [red, green, blue] = color_;
    for (std::size_t x = 0; x < count; ++x) {
        const float levels = 255 * (1 - through_[x]) * outsideRing_[x];
        const auto component = [levels](float share) {
            return kernels::nearestLevel(levels * share);
        };
        pixels[x] =
            kernels::pixelOf(component(red), component(green), component(blue), component(1));
    }
}

}  // namespace pictal::detail
