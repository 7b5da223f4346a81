#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/LibPNGDecoder.h"

#include <gtest/gtest.h>

namespace pictal {
namespace {

void expectSamePixels(const CGImage& image, const CGImage& other, const std::string& what) {
    ASSERT_EQ(image.width(), other.width()) << what;
    ASSERT_EQ(image.height(), other.height()) << what;
    for (std::int64_t y = 0; y < image.height(); ++y)
        for (std::size_t x = 0; x < image.row(y).size(); ++x)
            ASSERT_EQ(image.row(y)[x], other.row(y)[x]) << what << " at (" << x << ", " << y << ")";
}

TEST(PNGWrite, TranslucentPixelsComeBackAsTheSameBytes) {
    // Every pair of a component and an alpha that it can have.
    std::vector<std::uint32_t> words;
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha)
        for (std::uint32_t c = 0; c < 256; ++c) {
            const std::uint32_t bounded = std::min(c, alpha);
            words.push_back(bounded | bounded << 8 | bounded << 16 | alpha << 24);
        }
    const auto image =
        CGImage::fromBytes(std::as_bytes(std::span(words)), {256, 256, 1024}, CGColorSpace::sRGB());
    for (const auto compression : allCases<PNG::Compression>()) {
        const std::string name(rawValue(compression));
        const auto bytes = PNG::write(*image, compression);
        ASSERT_TRUE(bytes) << name;
        expectSamePixels(*PNG::read(*bytes), *image, name);
        expectSamePixels(*decodedByLibPNG(*bytes), *image, name + ", by libpng");
    }
}

}  // namespace
}  // namespace pictal
