#include "PictalCore/Platform/Graphics/CGImage.h"
#include "Tests/Support/PictureProbe.h"

#include <cmath>
#include <limits>

namespace pictal {
namespace {

using Alpha = CGImage::Alpha;
using kernels::pixelOf;

TEST(CGImage, TakesBytesInWhateverTheirAlphaMeans) {
    const std::uint32_t pixels[]{pixelOf(200, 100, 50, 128), 0, pixelOf(1, 2, 3, 255), 9};
    const auto first = [&](Alpha alpha) {
        const auto image = CGImage::fromBytes(std::as_bytes(std::span(pixels)), {1, 2, 8, alpha},
                                              CGColorSpace::sRGB());
        return std::pair(pixelText(image->row(0)[0]), image->isOpaque());
    };
    EXPECT_EQ(first(Alpha::straight), std::pair(std::string("#64321980"), false));
    EXPECT_EQ(first(Alpha::premultiplied), std::pair(std::string("#C8643280"), false));
    EXPECT_EQ(first(Alpha::ignored), std::pair(std::string("#C86432FF"), true));
}

TEST(CGImage, RefusesLayoutsThatDoNotFit) {
    const std::vector<std::byte> bytes(40);
    const auto fits = [&](std::int64_t width, std::int64_t height, std::int64_t bytesPerRow) {
        return CGImage::fromBytes(bytes, {width, height, bytesPerRow}, {}).has_value();
    };
    EXPECT_TRUE(fits(2, 5, 8));
    EXPECT_TRUE(fits(1, 4, 12)) << "the last row is short";
    EXPECT_FALSE(fits(2, 6, 8)) << "a row too many";
    EXPECT_FALSE(fits(2, 2, 7)) << "rows that overlap";
    EXPECT_FALSE(fits(0, 5, 8));
    EXPECT_FALSE(fits(2, -5, 8));
    EXPECT_FALSE(fits(2, 5, std::numeric_limits<std::int64_t>::max()));
    EXPECT_FALSE(fits(1, 8'000'000, 4));
}

TEST(CGImage, CropsAreViewsOfWholePixels) {
    const CGImage image = pictureOf(10, 8, [](auto x, auto y) { return pixelOf(x, y, 0, 255); });
    const auto crop = image.cropping(CGRect(2.5, 3.2, 3, 2));
    ASSERT_TRUE(crop && crop->width() == 4 && crop->height() == 3);
    EXPECT_EQ(crop->row(1)[2], pixelOf(4, 4, 0, 255));
    EXPECT_EQ(crop->row(0).data(), image.row(3).data() + 2);
    EXPECT_TRUE(crop->isOpaque());
    EXPECT_TRUE(crop->cropping(CGRect(0, 0, 4, 3))->isSameImage(*crop));
    for (const CGRect& other : {CGRect(0, 0, 3, 3), CGRect(0, 0, 4, 2), CGRect(1, 0, 3, 3)})
        EXPECT_FALSE(crop->isSameImage(*crop->cropping(other)));
    EXPECT_FALSE(crop->cropping(CGRect(0, 0, 2, 2))->isSameImage(*crop->cropping({1, 1, 2, 2})));

    EXPECT_EQ(image.cropping(CGRect(-5, -5, 1e300, 1e300))->width(), 10);
    for (const CGRect& outside : {CGRect(10, 0, 5, 5), CGRect(0, 8, 1, 1), CGRect(0, 0, 0, 5),
                                  CGRect(NAN, 0, 5, 5), CGRect(0, 0, NAN, 5), CGRect::null()})
        EXPECT_FALSE(image.cropping(outside));
    EXPECT_FALSE(CGImage().cropping(CGRect(0, 0, 1, 1)));
}

}  // namespace
}  // namespace pictal
