#include "PictalCore/Platform/Graphics/detail/Painter.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
#include "PictalCore/Platform/Graphics/Kernels/Blend.h"

#include <algorithm>

namespace pictal::detail {

namespace {

const kernels::BlendKernels& blend() {
    static const kernels::BlendKernels& best = kernels::blendKernels();
    return best;
}

}  // namespace

void Painter::solid(std::int64_t row, std::int64_t left, std::int64_t right) {
    const auto size = static_cast<std::size_t>(right - left);
    if (options_.alpha == 255 && !clip_.weights(row, left, right)) {
        paint(target(row, left, size));
        return;
    }
    const std::span<std::uint8_t> coverage = scratch(size);
    std::ranges::fill(coverage, std::uint8_t{255});
    paintScratch(row, left, coverage);
}

void Painter::varied(std::int64_t row, std::int64_t left, std::span<const std::uint8_t> coverage) {
    const auto right = left + static_cast<std::int64_t>(coverage.size());
    if (options_.antialias && options_.alpha == 255 && !clip_.weights(row, left, right)) {
        paint(target(row, left, coverage.size()), coverage);
        return;
    }
    const std::span<std::uint8_t> weighted = scratch(coverage.size());
    const auto aliased = [](std::uint8_t value) -> std::uint8_t { return value < 128 ? 0 : 255; };
    if (options_.antialias)
        std::ranges::copy(coverage, weighted.begin());
    else
        std::ranges::transform(coverage, weighted.begin(), aliased);
    paintScratch(row, left, weighted);
}

void Painter::paintScratch(std::int64_t row, std::int64_t left, std::span<std::uint8_t> coverage) {
    const auto right = left + static_cast<std::int64_t>(coverage.size());
    if (options_.alpha != 255) blend().scaleCoverage(coverage, options_.alpha);
    if (const auto weights = clip_.weights(row, left, right))
        blend().multiplyCoverage(coverage, *weights);
    paint(target(row, left, coverage.size()), coverage);
}

std::span<std::uint8_t> Painter::scratch(std::size_t size) {
    scratch_.resize(std::max(scratch_.size(), size));
    return std::span(scratch_).first(size);
}

Painter::Target Painter::target(std::int64_t row, std::int64_t left, std::size_t size) {
    return {row, left, canvas_.row(row).subspan(static_cast<std::size_t>(left), size)};
}

void ColorPainter::paint(const Target& target) {
    switch (options_.mode) {
        case BlendMode::normal:
            if (kernels::alphaOf(color_) == 255)
                std::ranges::fill(target.pixels, color_);
            else
                blend().blendColor(target.pixels, color_);
            break;
        case BlendMode::copy:
            std::ranges::fill(target.pixels, kernels::premultiplied(color_));
            break;
        case BlendMode::clear:
            std::ranges::fill(target.pixels, 0U);
            break;
        case BlendMode::destinationOut:
            blend().erase(target.pixels, kernels::alphaOf(color_));
            break;
    }
}

void ColorPainter::paint(const Target& target, std::span<const std::uint8_t> coverage) {
    switch (options_.mode) {
        case BlendMode::normal:
            blend().blendColorCovered(target.pixels, color_, coverage);
            break;
        case BlendMode::copy:
            blend().copyColorCovered(target.pixels, kernels::premultiplied(color_), coverage);
            break;
        case BlendMode::clear:
            blend().eraseCovered(target.pixels, 255, coverage);
            break;
        case BlendMode::destinationOut:
            blend().eraseCovered(target.pixels, kernels::alphaOf(color_), coverage);
            break;
    }
}

void ImagePainter::paint(const Target& target) {
    const auto pixels =
        source_.pixels(target.row, target.left, static_cast<std::int64_t>(target.pixels.size()));
    switch (options_.mode) {
        case BlendMode::normal:
            if (source_.isOpaque())
                std::ranges::copy(pixels, target.pixels.begin());
            else
                blend().blendPixels(target.pixels, pixels);
            break;
        case BlendMode::copy:
            std::ranges::copy(pixels, target.pixels.begin());
            break;
        case BlendMode::clear:
            std::ranges::fill(target.pixels, 0U);
            break;
        case BlendMode::destinationOut:
            blend().erasePixels(target.pixels, pixels);
            break;
    }
}

void ImagePainter::paint(const Target& target, std::span<const std::uint8_t> coverage) {
    const auto pixels =
        source_.pixels(target.row, target.left, static_cast<std::int64_t>(target.pixels.size()));
    switch (options_.mode) {
        case BlendMode::normal:
            blend().blendPixelsCovered(target.pixels, pixels, coverage);
            break;
        case BlendMode::copy:
            blend().copyPixelsCovered(target.pixels, pixels, coverage);
            break;
        case BlendMode::clear:
            blend().eraseCovered(target.pixels, 255, coverage);
            break;
        case BlendMode::destinationOut:
            blend().erasePixelsCovered(target.pixels, pixels, coverage);
            break;
    }
}

}  // namespace pictal::detail
