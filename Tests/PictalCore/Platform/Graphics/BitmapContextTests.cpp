#include "PictalCore/Platform/Graphics/BitmapContext.h"
#include "Tests/Support/PictureProbe.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using kernels::pixelOf;

constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGColor red{1, 0, 0, 1};
constexpr CGColor half{0, 0, 0, 0.5};

BitmapContext canvas(std::int64_t width, std::int64_t height) {
    return BitmapContext::make(width, height, CGColorSpace::sRGB()).value();
}

PictureProbe finished(BitmapContext& context) {
    return PictureProbe(std::move(context).makeImage());
}

TEST(BitmapContext, RefusesSizesThatAreNoPictureOrDoNotFit) {
    struct Case {
        const char* name;
        std::int64_t width, height;
    };
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    for (const Case& c : {Case{"empty", 0, 5}, Case{"negative", 5, -1}, Case{"side", 8'000'001, 1},
                          Case{"bytes", 100'000, 100'000}, Case{"overflow", most, most}})
        EXPECT_FALSE(BitmapContext::make(c.width, c.height, CGColorSpace::sRGB())) << c.name;
    EXPECT_TRUE(BitmapContext::make(8'000'000, 1, CGColorSpace::sRGB()));
}

TEST(BitmapContext, StartsTransparentAndCountsYFromTheBottom) {
    BitmapContext context = canvas(4, 3);
    context.setFillColor(red);
    context.fill(CGRect(1, 0, 2, 1));
    const PictureProbe probe = finished(context);
    EXPECT_EQ(probe.extents(), (detail::PixelRect{1, 2, 3, 3}));
    EXPECT_EQ(probe.pixel(1, 2), pixelOf(255, 0, 0, 255));
    EXPECT_EQ(probe.pixel(0, 0), 0U);
}

TEST(BitmapContext, TransformsComposeAndStatesReturn) {
    BitmapContext context = canvas(20, 20);
    context.setFillColor(red);
    context.saveGState();
    context.concatenate(AffineTransform::translation(4, 2));
    context.concatenate(AffineTransform::scale(2, 3));
    context.fill(CGRect(1, 1, 2, 2));  // (6, 5)…(10, 11)
    context.restoreGState();
    context.restoreGState();
    context.restoreGState();
    context.fill(CGRect(0, 19, 1, 1));
    const PictureProbe probe = finished(context);
    EXPECT_EQ(probe.alpha(6, 14), 255);
    EXPECT_EQ(probe.alpha(9, 9), 255);
    EXPECT_EQ(probe.alpha(0, 0), 255);
    EXPECT_EQ(probe.coverage(), 4 * 6 + 1);
}

TEST(BitmapContext, BlendModes) {
    struct Case {
        const char* name;
        BlendMode mode;
        std::uint32_t whole, halfCovered;  // red at alpha 128 over opaque blue
    };
    for (const Case& c :
         {Case{"normal", BlendMode::normal, pixelOf(128, 0, 127, 255), pixelOf(64, 0, 191, 255)},
          Case{"copy", BlendMode::copy, pixelOf(128, 0, 0, 128), pixelOf(64, 0, 127, 191)},
          Case{"clear", BlendMode::clear, 0, pixelOf(0, 0, 127, 127)},
          Case{"destination out", BlendMode::destinationOut, pixelOf(0, 0, 127, 127),
               pixelOf(0, 0, 191, 191)}}) {
        const auto painted = [&](const auto& paint) {
            BitmapContext context = canvas(4, 1);
            context.setFillColor({0, 0, 1, 1});
            context.fill(CGRect(0, 0, 4, 1));
            context.setBlendMode(c.mode);
            context.setFillColor({1, 0, 0, 128 / 255.0});
            paint(context);
            return finished(context);
        };
        const CGRect place(0, 0, 1.5, 1);  // one whole pixel and half of one
        const PictureProbe fill = painted([&](BitmapContext& context) { context.fill(place); });
        const CGImage ink = pictureOf({pixelOf(128, 0, 0, 128)}, 1);
        const PictureProbe image =
            painted([&](BitmapContext& context) { context.draw(ink, place); });
        for (const auto& [probe, source] : {std::pair(fill, "colour"), std::pair(image, "image")}) {
            EXPECT_EQ(pixelText(probe.pixel(0, 0)), pixelText(c.whole)) << c.name << source;
            EXPECT_LE(levelsBetween(probe.pixel(1, 0), c.halfCovered), 1)
                << c.name << ", " << source << ": " << pixelText(probe.pixel(1, 0));
            EXPECT_EQ(probe.pixel(2, 0), pixelOf(0, 0, 255, 255)) << c.name << source;
        }
    }
}

TEST(BitmapContext, ClipsMultiplyAndReachNoFurther) {
    BitmapContext context = canvas(10, 10);
    context.setFillColor(red);
    context.clip(CGRect(0, 0, 5.5, 10));
    context.clip(CGRect(2, 0, 10, 5.5));
    context.fill(CGRect(0, 0, 10, 10));
    const PictureProbe probe = finished(context);
    EXPECT_EQ(probe.extents(), (detail::PixelRect{2, 4, 6, 10}));
    EXPECT_NEAR(probe.alpha(5, 9), 128, 1);
    EXPECT_NEAR(probe.alpha(2, 4), 128, 1);
    EXPECT_NEAR(probe.alpha(5, 4), 64, 1);
    EXPECT_NEAR(probe.coverage(), 3.5 * 5.5, 0.1);
}

TEST(BitmapContext, ClipsToPathsAndStrokes) {
    BitmapContext context = canvas(40, 40);
    Path ring;
    ring.addEllipse(CGRect(4, 4, 32, 32));
    ring.addEllipse(CGRect(12, 12, 16, 16));
    context.saveGState();
    context.clip(ring, FillRule::evenOdd);
    context.fill(CGRect(0, 0, 40, 40));
    context.restoreGState();
    Path line;
    line.moveTo({5, 20});
    line.lineTo({35, 20});
    context.setLineWidth(4);
    context.clipToStroke(line);
    context.clear(CGRect(0, 0, 40, 40));
    const PictureProbe probe = finished(context);
    const double ringArea = std::numbers::pi * (16 * 16 - 8 * 8);
    EXPECT_EQ(probe.alpha(8, 20), 0) << "cleared by the line";
    EXPECT_EQ(probe.alpha(20, 20), 0) << "the hole";
    EXPECT_EQ(probe.alpha(20, 6), 255);
    EXPECT_NEAR(probe.coverage(), ringArea - 2 * 4 * 8, 1);
}

TEST(BitmapContext, AnEllipsesOutlineIsTheUnionOfItsSegments) {
    struct Case {
        const char* name;
        CGRect rect;
        CGFloat lineWidth;
    };
    for (const Case& c :
         {Case{"circle", {20.3, 20.7, 60, 60}, 7}, Case{"flat", {5, 30, 90, 40}, 12},
          Case{"hair", {10, 10, 80, 50}, 0.5}, Case{"nearly a line", {5, 45, 90, 9}, 6},
          Case{"wider than itself", {30, 30, 40, 30}, 30}}) {
        const auto stroked = [&](bool asPath) {
            BitmapContext context = canvas(100, 100);
            context.setLineWidth(c.lineWidth);
            Path ellipse;
            ellipse.addEllipse(c.rect);
            if (asPath)
                context.stroke(ellipse);
            else
                context.strokeEllipse(c.rect);
            return std::move(context).makeImage();
        };
        // A stroke may be off by 1.7 levels, a fill by 1.
        EXPECT_TRUE(picturesAgree(stroked(false), stroked(true), 3)) << c.name;
    }
}

TEST(BitmapContext, DrawsImagesUprightAndNearest) {
    const CGImage image =
        pictureOf({1 | 0xFF000000, 2 | 0xFF000000, 3 | 0xFF000000, 4 | 0xFF000000}, 2);
    struct Case {
        const char* name;
        AffineTransform transform;
        CGRect place;
        std::array<int, 4> corners;  // upper left, upper right, lower left, lower right
    };
    for (const Case& c : {Case{"as it is", {}, {0, 0, 4, 4}, {1, 2, 3, 4}},
                          Case{"negative size", {}, {4, 4, -4, -4}, {1, 2, 3, 4}},
                          Case{"y downward", {1, 0, 0, -1, 0, 4}, {0, 0, 4, 4}, {3, 4, 1, 2}},
                          Case{"mirrored", {-1, 0, 0, 1, 4, 0}, {0, 0, 4, 4}, {2, 1, 4, 3}},
                          Case{"a quarter turn", {0, 1, -1, 0, 4, 0}, {0, 0, 4, 4}, {2, 4, 1, 3}},
                          Case{"beyond the canvas", {}, {-4, -4, 8, 8}, {2, 2, 2, 2}}}) {
        BitmapContext context = canvas(4, 4);
        context.concatenate(c.transform);
        context.draw(image, c.place);
        const PictureProbe probe = finished(context);
        const std::array corners{probe.red(0, 0), probe.red(3, 0), probe.red(0, 3),
                                 probe.red(3, 3)};
        EXPECT_EQ(corners, c.corners) << c.name;
        EXPECT_EQ(probe.coverage(), 16) << c.name;
    }
}

TEST(BitmapContext, DrawsOddThingsAsNothing) {
    BitmapContext context = canvas(8, 8);
    const CGImage image = pictureOf({0xFFFFFFFF}, 1);
    Path open;
    open.moveTo({nan, 1});
    open.lineTo({5, 5});
    context.fill(CGRect(nan, 0, 4, 4));
    context.fill(CGRect::null());
    context.stroke(CGRect::null());
    context.stroke(open);
    context.setLineWidth(0);
    context.stroke(CGRect(1, 1, 4, 4));
    context.draw(image, CGRect(0, 0, 0, 5));
    context.draw(image, CGRect(0, 0, nan, 5));
    context.draw(CGImage(), CGRect(0, 0, 5, 5));
    context.concatenate(AffineTransform::scale(0, 1));
    context.draw(image, CGRect(0, 0, 5, 5));
    context.fill(CGRect(0, 0, 5, 5));
    EXPECT_EQ(finished(context).coverage(), 0);
}

TEST(BitmapContext, AntialiasingAndAlpha) {
    BitmapContext context = canvas(4, 1);
    context.setShouldAntialias(false);
    context.setAlpha(0.5);
    context.setFillColor(half);
    context.fill(CGRect(0, 0, 1.6, 1));
    context.fill(CGRect(2.6, 0, 2, 1));
    EXPECT_EQ(finished(context).alphaRow(0), (std::vector{64, 64, 0, 64}));
}

TEST(BitmapContext, ClipsToRectanglesAsToTheirPaths) {
    for (const AffineTransform& t : {AffineTransform{}, AffineTransform{-2, 0, 0, 3, 20, 1},
                                     AffineTransform{0, 1, 1, 0, 0, 0}})
        for (const CGRect& rect : {CGRect(2, 1, 5, 4), CGRect(7, 5, -5, -4), CGRect(2.5, 1, 5, 4),
                                   CGRect(-9, -9, 99, 99), CGRect(3, 3, 0, 2),
                                   CGRect(1e300, 0, 1, 1), CGRect(nan, 0, 1, 1), CGRect::null()}) {
            const auto clipped = [&](bool asPath) {
                BitmapContext context = canvas(24, 18);
                Path path;
                path.addRect(rect);
                Path circle;
                circle.addEllipse(CGRect(1, 1, 16, 16));
                context.clip(circle);
                context.concatenate(t);
                asPath ? context.clip(path) : context.clip(rect);
                context.fill(CGRect(-99, -99, 999, 999));
                return std::move(context).makeImage();
            };
            EXPECT_TRUE(picturesAgree(clipped(false), clipped(true)))
                << t.a << ": " << rect.origin.x << ", " << rect.size.width;
        }
}

TEST(BitmapContext, ShadowsFallUnderTheShapeAndFollowItsAlpha) {
    BitmapContext context = canvas(40, 20);
    context.setFillColor(red);
    context.setShadow({20, -5}, 0, {0, 0, 1, 0.5});
    context.fill(CGRect(2, 8, 10, 10));
    context.removeShadow();
    context.fill(CGRect(0, 0, 1, 1));
    const PictureProbe probe = finished(context);
    EXPECT_EQ(probe.pixel(5, 5), pixelOf(255, 0, 0, 255));
    EXPECT_EQ(probe.pixel(22, 7), pixelOf(0, 0, 128, 128)) << "20 to the right and 5 down";
    EXPECT_EQ(probe.pixel(31, 16), pixelOf(0, 0, 128, 128));
    EXPECT_EQ(probe.alpha(21, 7), 0);
    EXPECT_EQ(probe.alpha(20, 19), 0) << "no shadow once it is removed";

    BitmapContext blurred = canvas(100, 100);
    blurred.setShadow({200, 0}, 12, {0, 0, 0, 1});
    blurred.draw(pictureOf({0x80000000, 0x80000000}, 1), CGRect(-160, 40, 20, 20));
    const PictureProbe soft = finished(blurred);
    EXPECT_NEAR(soft.coverage(), 400 * 128 / 255.0, 3) << "blurring keeps the amount";
    EXPECT_EQ(soft.alpha(50, 50), soft.alpha(49, 49));
    EXPECT_GT(soft.alpha(50, 50), soft.alpha(50, 60));
}

TEST(BitmapContext, ShadowsAreGaussiansHoweverWide) {
    for (const double blur : {10.0, 36.0, 39.0, 40.0, 100.0, 1000.0}) {
        BitmapContext context = canvas(201, 140);
        context.setShadow({1000, -20}, blur, {0, 0, 0, 1});
        context.fill(CGRect(-943, 50, 90, 61));
        const PictureProbe probe = finished(context);
        // The mean over the pixel that begins at `left` of a run's blur.
        const auto mean = [&](double left, double from, double to) {
            const double scale = blur / 2 * std::sqrt(2.0);
            double sum = 0;
            for (const double at : {left + 0.125, left + 0.375, left + 0.625, left + 0.875})
                sum += std::erf((to - at) / scale) - std::erf((from - at) / scale);
            return sum / 8;
        };
        double most = 0;
        for (std::int64_t y = 0; y < 140; ++y)
            for (std::int64_t x = 0; x < 201; ++x) {
                const double want = mean(static_cast<double>(x), 57, 147) *
                                    mean(139 - static_cast<double>(y), 30, 91);
                most = std::max(most, std::abs(probe.alpha(x, y) - 255 * want));
            }
        // Half a level is rounding, the rest what cells of a tenth of the deviation miss.
        EXPECT_LE(most, 0.7) << "blur " << blur;
    }
    // What would take hours, or tens of gigabytes, pixel by pixel.
    BitmapContext large = canvas(40'000, 300);
    large.setShadow({0, 0}, 1e9, {0, 0, 0, 1});
    large.fill(CGRect(0, 0, 40'000, 300));
}

TEST(BitmapContext, GivesItsPixelsUpWithoutACopy) {
    BitmapContext context = canvas(1000, 1000);
    context.fill(CGRect(0, 0, 1000, 1000));
    const CGImage image = std::move(context).makeImage();
    EXPECT_TRUE(image.isOpaque());
    EXPECT_EQ(image.width(), 1000);
    const CGImage copy = image;
    EXPECT_TRUE(copy.isSameImage(image));
    EXPECT_EQ(copy.row(7).data(), image.row(7).data());
}

}  // namespace
}  // namespace pictal
