#pragma once

#include "Tests/Support/SampleScreenshot.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace pictal {

/// A picture of 2880 × 1800 whose pixel (x, y) is what the function makes of those of the sample.
template <class PixelAt>
[[nodiscard]] CGImage sampleLikePicture(PixelAt pixelAt) {
    const std::int64_t width = 2880, height = 1800;
    std::vector<std::uint32_t> words;
    words.reserve(static_cast<std::size_t>(width * height));
    for (std::int64_t y = 0; y < height; ++y)
        for (std::int64_t x = 0; x < width; ++x)
            words.push_back(pixelAt(sampleScreenshot(), x, y));
    return CGImage::fromBytes(std::as_bytes(std::span(words)), {width, height, width * 4},
                              CGColorSpace::sRGB())
        .value();
}

using NamedPicture = std::pair<std::string, std::function<CGImage()>>;

/// What the benchmarks of PNG work on.
[[nodiscard]] inline std::vector<NamedPicture> pngPictures() {
    const auto at = [](const CGImage& image, std::int64_t x, std::int64_t y) {
        return image.row(y)[static_cast<std::size_t>(x)];
    };
    return {
        {"screenshot", [] { return sampleScreenshot(); }},
        // The photographs are blank; the rest is the page.
        {"interface",
         [=] {
             return sampleLikePicture([=](const CGImage& image, std::int64_t x, std::int64_t y) {
                 const bool isPhotograph = x >= 514 && x < 1430 && y >= 270 && y < 874;
                 return isPhotograph ? 0xFFDDDDDD : at(image, x, y);
             });
         }},
        // Eight levels of red and green and four of blue.
        {"palette",
         [=] {
             return sampleLikePicture([=](const CGImage& image, std::int64_t x, std::int64_t y) {
                 return at(image, x, y) | 0xFF3F1F1F;
             });
         }},
        // The photograph beside itself, mirrored so that no seam stands out.
        {"photograph",
         [=] {
             return sampleLikePicture([=](const CGImage& image, std::int64_t x, std::int64_t y) {
                 const auto mirrored = [](std::int64_t i, std::int64_t size) {
                     return i / size % 2 == 0 ? i % size : size - 1 - i % size;
                 };
                 return at(image, 514 + mirrored(x, 916), 270 + mirrored(y, 604));
             });
         }},
    };
}

}  // namespace pictal
