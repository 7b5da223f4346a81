#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace pictal {

/// The words as a picture; `width` pixels a row.
[[nodiscard]] inline CGImage pictureOf(const std::vector<std::uint32_t>& pixels, std::int64_t width,
                                       const CGColorSpace& space = CGColorSpace::sRGB()) {
    const auto height = static_cast<std::int64_t>(pixels.size()) / width;
    return CGImage::fromBytes(std::as_bytes(std::span(pixels)), {width, height, width * 4}, space)
        .value();
}

/// A picture whose pixel (x, y) is what the function says: a premultiplied word.
[[nodiscard]] inline CGImage pictureOf(
    std::int64_t width, std::int64_t height,
    const std::function<std::uint32_t(std::int64_t, std::int64_t)>& pixelAt,
    const CGColorSpace& space = CGColorSpace::sRGB()) {
    std::vector<std::uint32_t> pixels;
    for (std::int64_t y = 0; y < height; ++y)
        for (std::int64_t x = 0; x < width; ++x)
            pixels.push_back(pixelAt(x, y));
    return pictureOf(pixels, width, space);
}

/// #RRGGBBAA, premultiplied.
[[nodiscard]] inline std::string pixelText(std::uint32_t pixel) {
    char text[16];
    std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", kernels::redOf(pixel),
                  kernels::greenOf(pixel), kernels::blueOf(pixel), kernels::alphaOf(pixel));
    return text;
}

/// The greatest difference of two pixels in one of their components.
[[nodiscard]] inline int levelsBetween(std::uint32_t a, std::uint32_t b) {
    int most = 0;
    for (int shift = 0; shift < 32; shift += 8)
        most = std::max(most, std::abs(static_cast<int>((a >> shift) & 255) -
                                       static_cast<int>((b >> shift) & 255)));
    return most;
}

/// Measures a picture, its upper left pixel being (0, 0).
class PictureProbe {
  public:
    explicit PictureProbe(CGImage image) : image_(std::move(image)) {}

    [[nodiscard]] std::uint32_t pixel(std::int64_t x, std::int64_t y) const {
        return image_.row(y)[static_cast<std::size_t>(x)];
    }
    [[nodiscard]] int red(std::int64_t x, std::int64_t y) const { return component(x, y, 0); }
    [[nodiscard]] int green(std::int64_t x, std::int64_t y) const { return component(x, y, 8); }
    [[nodiscard]] int blue(std::int64_t x, std::int64_t y) const { return component(x, y, 16); }
    [[nodiscard]] int alpha(std::int64_t x, std::int64_t y) const { return component(x, y, 24); }

    /// The alphas along a row, and down a column.
    [[nodiscard]] std::vector<int> alphaRow(std::int64_t y) const {
        std::vector<int> alphas;
        for (std::int64_t x = 0; x < image_.width(); ++x)
            alphas.push_back(alpha(x, y));
        return alphas;
    }
    [[nodiscard]] std::vector<int> alphaColumn(std::int64_t x) const {
        std::vector<int> alphas;
        for (std::int64_t y = 0; y < image_.height(); ++y)
            alphas.push_back(alpha(x, y));
        return alphas;
    }

    /// The painted area in pixels: the sum of all alphas / 255.
    [[nodiscard]] double coverage() const {
        double sum = 0;
        for (std::int64_t y = 0; y < image_.height(); ++y)
            for (const std::uint32_t word : image_.row(y))
                sum += kernels::alphaOf(word);
        return sum / 255;
    }

    /// The smallest rectangle around everything with an alpha of at least `least`; empty for none.
    [[nodiscard]] detail::PixelRect extents(int least = 1) const {
        detail::PixelRect rect{image_.width(), image_.height(), 0, 0};
        for (std::int64_t y = 0; y < image_.height(); ++y)
            for (std::int64_t x = 0; x < image_.width(); ++x)
                if (alpha(x, y) >= least)
                    rect = {std::min(rect.left, x), std::min(rect.top, y),
                            std::max(rect.right, x + 1), std::max(rect.bottom, y + 1)};
        return rect;
    }

  private:
    [[nodiscard]] int component(std::int64_t x, std::int64_t y, int shift) const {
        return static_cast<int>((pixel(x, y) >> shift) & 255);
    }

    CGImage image_;
};

/// Whether two pictures agree to within so many levels a component. A failure tells the sizes, or
/// the greatest difference and the first four pixels that are too far apart.
[[nodiscard]] inline ::testing::AssertionResult picturesAgree(const CGImage& have,
                                                              const CGImage& want, int levels = 0) {
    if (have.width() != want.width() || have.height() != want.height())
        return ::testing::AssertionFailure() << "have " << have.width() << " × " << have.height()
                                             << ", want " << want.width() << " × " << want.height();
    const PictureProbe haveProbe(have), wantProbe(want);
    std::ostringstream list;
    std::int64_t count = 0;
    int most = 0;
    for (std::int64_t y = 0; y < have.height(); ++y)
        for (std::int64_t x = 0; x < have.width(); ++x) {
            const std::uint32_t a = haveProbe.pixel(x, y), b = wantProbe.pixel(x, y);
            most = std::max(most, levelsBetween(a, b));
            if (levelsBetween(a, b) <= levels || ++count > 4) continue;
            list << "\n(" << x << ", " << y << ") have " << pixelText(a) << " want "
                 << pixelText(b);
        }
    if (count == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << count << " pixels are more than " << levels
                                         << " levels apart, " << most << " at most:" << list.str();
}

}  // namespace pictal
