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

/// The sample without its photographs: blank, the large one with its strip, and those of the list.
[[nodiscard]] inline std::uint32_t interfacePixel(const CGImage& sample, std::int64_t x,
                                                  std::int64_t y) {
    const bool isLarge = x >= 514 && x < 1440 && y >= 270 && y < 1000;
    const bool isInList = x >= 544 && x < 640 && y >= 1180 && y < 1740;
    return isLarge || isInList ? 0xFFDDDDDD : sample.row(y)[static_cast<std::size_t>(x)];
}

/// The large photograph beside itself, mirrored so that no seam stands out.
[[nodiscard]] inline std::uint32_t photographPixel(const CGImage& sample, std::int64_t x,
                                                   std::int64_t y) {
    const auto mirrored = [](std::int64_t i, std::int64_t size) {
        return i / size % 2 == 0 ? i % size : size - 1 - i % size;
    };
    return sample.row(270 + mirrored(y, 590))[static_cast<std::size_t>(514 + mirrored(x, 916))];
}

using NamedPicture = std::pair<std::string, std::function<CGImage()>>;

/// What the benchmarks of PNG work on.
[[nodiscard]] inline std::vector<NamedPicture> pngPictures() {
    return {
        {"screenshot", [] { return sampleScreenshot(); }},
        {"interface", [] { return sampleLikePicture(interfacePixel); }},
        // Eight levels of red and green and four of blue.
        {"palette",
         [] {
             return sampleLikePicture([](const CGImage& sample, std::int64_t x, std::int64_t y) {
                 return interfacePixel(sample, x, y) | 0xFF3F1F1F;
             });
         }},
        {"photograph", [] { return sampleLikePicture(photographPixel); }},
    };
}

}  // namespace pictal
