#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
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
inline CGImage pictureOf(const std::vector<std::uint32_t>& pixels, std::int64_t width,
                         const CGColorSpace& space = CGColorSpace::sRGB()) {
    const auto height = static_cast<std::int64_t>(pixels.size()) / width;
    return CGImage::fromBytes(std::as_bytes(std::span(pixels)), {width, height, width * 4}, space)
        .value();
}

/// A picture whose pixel (x, y) is what the function says: a premultiplied word.
inline CGImage pictureOf(
    std::int64_t width, std::int64_t height,
    const std::function<std::uint32_t(std::uint32_t x, std::uint32_t y)>& pixelAt,
    const CGColorSpace& space = CGColorSpace::sRGB()) {
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t y = 0; y < height; ++y)
        for (std::uint32_t x = 0; x < width; ++x)
            pixels.push_back(pixelAt(x, y));
    return pictureOf(pixels, width, space);
}

/// #RRGGBBAA, premultiplied.
inline std::string pixelText(std::uint32_t pixel) {
    char text[16];
    std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", kernels::redOf(pixel),
                  kernels::greenOf(pixel), kernels::blueOf(pixel), kernels::alphaOf(pixel));
    return text;
}

/// The greatest difference of two pixels in one of their components.
inline int levelsBetween(std::uint32_t a, std::uint32_t b) {
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

    std::uint32_t pixel(std::int64_t x, std::int64_t y) const {
        return image_.row(y)[static_cast<std::size_t>(x)];
    }
    int red(std::int64_t x, std::int64_t y) const { return component(x, y, 0); }
    int green(std::int64_t x, std::int64_t y) const { return component(x, y, 8); }
    int blue(std::int64_t x, std::int64_t y) const { return component(x, y, 16); }
    int alpha(std::int64_t x, std::int64_t y) const { return component(x, y, 24); }

    /// The painted area in pixels: the sum of all alphas / 255.
    double coverage() const {
        double sum = 0;
        for (std::int64_t y = 0; y < image_.height(); ++y)
            for (const std::uint32_t word : image_.row(y))
                sum += kernels::alphaOf(word);
        return sum / 255;
    }
    /// The smallest rectangle around everything that is not transparent.
    detail::PixelRect extents() const {
        detail::PixelRect rect{image_.width(), image_.height(), 0, 0};
        for (std::int64_t y = 0; y < image_.height(); ++y)
            for (std::int64_t x = 0; x < image_.width(); ++x)
                if (alpha(x, y) > 0)
                    rect = {std::min(rect.left, x), std::min(rect.top, y),
                            std::max(rect.right, x + 1), std::max(rect.bottom, y + 1)};
        return rect;
    }

  private:
    int component(std::int64_t x, std::int64_t y, int shift) const {
        return static_cast<int>((pixel(x, y) >> shift) & 255);
    }

    CGImage image_;
};

/// Whether two pictures agree to within so many levels a component. A failure tells the sizes, or
/// the greatest difference and the first four pixels that are too far apart.
inline ::testing::AssertionResult picturesAgree(const CGImage& have, const CGImage& want,
                                                int levels = 0) {
    std::ostringstream list;
    std::int64_t count = 0;
    int most = 0;
    if (have.width() != want.width() || have.height() != want.height())
        return ::testing::AssertionFailure() << "have " << have.width() << " × " << have.height()
                                             << ", want " << want.width() << " × " << want.height();
    for (std::int64_t y = 0; y < have.height(); ++y)
        for (std::size_t x = 0; x < have.row(y).size(); ++x) {
            const std::uint32_t a = have.row(y)[x], b = want.row(y)[x];
            most = std::max(most, levelsBetween(a, b));
            if (levelsBetween(a, b) > levels && ++count <= 4)
                list << "\n(" << x << ", " << y << ") " << pixelText(a) << " not " << pixelText(b);
        }
    return (count == 0 ? ::testing::AssertionSuccess() : ::testing::AssertionFailure())
           << count << " pixels differ, by " << most << " levels at most:" << list.str();
}

}  // namespace pictal
