#include "Benchmarks/PNGPictures.h"

#include "Benchmarks/DrawnPictures.h"
#include "Tests/Support/SampleScreenshot.h"

namespace pictal {

namespace {

/// A picture whose pixel (x, y) is what the function says.
template <class PixelAt>
CGImage pictureOf(PixelAt pixelAt) {
    Canvas canvas;
    for (std::int64_t y = 0; y < Canvas::height; ++y)
        for (std::int64_t x = 0; x < Canvas::width; ++x)
            canvas.at(x, y) = pixelAt(x, y);
    return canvas.image();
}

std::uint32_t samplePixel(std::int64_t x, std::int64_t y) {
    return sampleScreenshot().row(y)[static_cast<std::size_t>(x)];
}

/// The sample without its photographs: blank, the large one with its strip, and those of the list.
std::uint32_t interfacePixel(std::int64_t x, std::int64_t y) {
    const bool isLarge = x >= 514 && x < 1440 && y >= 270 && y < 1000;
    const bool isInList = x >= 544 && x < 640 && y >= 1180 && y < 1740;
    return isLarge || isInList ? 0xFFDDDDDD : samplePixel(x, y);
}

/// The large photograph beside itself, mirrored so that no seam stands out, each copy a third of
/// its height lower than the one on its left: no row that the compressor still remembers holds the
/// same pixels twice.
std::uint32_t photographPixel(std::int64_t x, std::int64_t y) {
    const auto mirrored = [](std::int64_t i, std::int64_t size) {
        return i / size % 2 == 0 ? i % size : size - 1 - i % size;
    };
    constexpr std::int64_t width = 900, height = 530;
    return samplePixel(522 + mirrored(x, width), 284 + mirrored(y + x / width * 177, height));
}

std::uint32_t greyOf(std::uint32_t pixel) {
    const std::uint32_t sum = (pixel & 255) + (pixel >> 8 & 255) * 2 + (pixel >> 16 & 255);
    return 0xFF000000 | sum / 4 * 0x010101;
}

}  // namespace

const std::vector<NamedPicture>& pngPictures() {
    static const std::vector<NamedPicture> pictures{
        {"screenshot", [] { return sampleScreenshot(); }},
        {"interface", [] { return pictureOf(interfacePixel); }},
        // Eight levels of red and green and four of blue.
        {"palette",
         [] {
             return pictureOf(
                 [](std::int64_t x, std::int64_t y) { return interfacePixel(x, y) | 0xFF3F1F1F; });
         }},
        {"photograph", [] { return pictureOf(photographPixel); }},
        {"grey photograph",
         [] {
             return pictureOf(
                 [](std::int64_t x, std::int64_t y) { return greyOf(photographPixel(x, y)); });
         }},
        {"terminal", terminalPicture},
        {"article", articlePicture},
        {"map", mapPicture},
    };
    return pictures;
}

}  // namespace pictal
