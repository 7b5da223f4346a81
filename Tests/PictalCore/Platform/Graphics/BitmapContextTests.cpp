#include "PictalCore/Platform/Graphics/BitmapContext.h"
#include "Tests/Support/PictureProbe.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace pictal {
namespace {

using kernels::pixelOf;

constexpr CGColor red{1, 0, 0, 1};

BitmapContext canvas(std::int64_t width, std::int64_t height) {
    return BitmapContext::make(width, height, CGColorSpace::sRGB()).value();
}

PictureProbe finished(BitmapContext& context) {
    return PictureProbe(std::move(context).makeImage());
}

TEST(BitmapContext, RefusesSizesThatAreNoPictureOrDoNotFit) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    const std::pair<std::int64_t, std::int64_t> sizes[] = {
        {0, 5}, {5, -1}, {8'000'001, 1}, {100'000, 100'000}, {most, most}};
    for (const auto& [width, height] : sizes)
        EXPECT_FALSE(BitmapContext::make(width, height, CGColorSpace::sRGB())) << width;
    EXPECT_TRUE(BitmapContext::make(8'000'000, 1, CGColorSpace::sRGB()));
}

TEST(BitmapContext, StartsTransparentAndCountsYFromTheBottom) {
    BitmapContext context = canvas(4, 3);
    context.setFillColor(red);
    context.fill(CGRect(1, 0, 2, 1));
    const PictureProbe probe = finished(context);
    EXPECT_EQ(probe.extents(), (detail::PixelRect{1, 2, 3, 3}));
    EXPECT_EQ(probe.pixel(1, 2), pixelOf(255, 0, 0, 255));
    BitmapContext full = canvas(4, 3);
    full.fill(CGRect(0, 0, 4, 3));
    EXPECT_TRUE(std::move(full).makeImage().isOpaque());
}

TEST(BitmapContext, TransformsComposeAndStatesReturn) {
    BitmapContext context = canvas(20, 20);
    context.saveGState();
    context.concatenate(AffineTransform::translation(4, 2));
    context.concatenate(AffineTransform::scale(2, 3));
    context.fill(CGRect(1, 1, 2, 2));  // (6, 5)…(10, 11)
    for (int i = 0; i < 3; ++i)
        context.restoreGState();
    context.fill(CGRect(0, 19, 1, 1));
    const PictureProbe probe = finished(context);
    EXPECT_EQ(probe.alpha(6, 14) + probe.alpha(9, 9) + probe.alpha(0, 0), 3 * 255);
    EXPECT_EQ(probe.coverage(), 4 * 6 + 1);
}

TEST(BitmapContext, BlendModes) {
    // Red at alpha 128 over opaque blue, for a whole pixel and for half of one.
    const auto check = [](BlendMode mode, std::uint32_t whole, std::uint32_t halfCovered) {
        for (const bool isImage : {false, true}) {
            BitmapContext context = canvas(4, 1);
            context.setFillColor({0, 0, 1, 1});
            context.fill(CGRect(0, 0, 4, 1));
            context.setBlendMode(mode);
            context.setFillColor({1, 0, 0, 128 / 255.0});
            if (isImage)
                context.draw(pictureOf({pixelOf(128, 0, 0, 128)}, 1), CGRect(0, 0, 1.5, 1));
            else
                context.fill(CGRect(0, 0, 1.5, 1));
            const PictureProbe probe = finished(context);
            const auto name = ::testing::Message() << static_cast<int>(mode) << ", " << isImage;
            EXPECT_EQ(pixelText(probe.pixel(0, 0)), pixelText(whole)) << name;
            EXPECT_LE(levelsBetween(probe.pixel(1, 0), halfCovered), 1)
                << name << pixelText(probe.pixel(1, 0));
            EXPECT_EQ(probe.pixel(2, 0), pixelOf(0, 0, 255, 255)) << name;
        }
    };
    check(BlendMode::normal, pixelOf(128, 0, 127, 255), pixelOf(64, 0, 191, 255));
    check(BlendMode::copy, pixelOf(128, 0, 0, 128), pixelOf(64, 0, 127, 191));
    check(BlendMode::clear, 0, pixelOf(0, 0, 127, 127));
    check(BlendMode::destinationOut, pixelOf(0, 0, 127, 127), pixelOf(0, 0, 191, 191));
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
    const auto check = [](const char* name, const CGRect& rect, CGFloat lineWidth) {
        BitmapContext context = canvas(100, 100), segments = canvas(100, 100);
        Path ellipse;
        ellipse.addEllipse(rect);
        segments.setLineWidth(lineWidth);
        segments.stroke(ellipse);
        context.setLineWidth(lineWidth);
        context.strokeEllipse(rect);
        // A stroke may be off by 1.7 levels, a fill by 1.
        EXPECT_TRUE(
            picturesAgree(std::move(context).makeImage(), std::move(segments).makeImage(), 3))
            << name;
    };
    check("circle", {20.3, 20.7, 60, 60}, 7);
    check("flat", {5, 30, 90, 40}, 12);
    check("hair", {10, 10, 80, 50}, 0.5);
    check("nearly a line", {5, 45, 90, 9}, 6);
    check("wider than itself", {30, 30, 40, 30}, 30);
}

TEST(BitmapContext, PensStayRoundWhereTheTransformStretches) {
    // Twice as wide is √2 times the pen, which keeps its area.
    const double pen = 4 * std::numbers::sqrt2;
    BitmapContext context = canvas(120, 60);
    context.concatenate(AffineTransform::scale(2, 1));
    context.setLineWidth(4);
    Path line;
    line.moveTo({10, 30});
    line.lineTo({50, 30});
    context.stroke(line);
    EXPECT_NEAR(finished(context).coverage(), 80 * pen + std::numbers::pi * pen * pen / 4, 1);

    BitmapContext ellipse = canvas(120, 60);
    ellipse.concatenate(AffineTransform::scale(2, 1));
    ellipse.setLineWidth(4);
    ellipse.strokeEllipse(CGRect(10, 10, 40, 40));
    const PictureProbe ring = finished(ellipse);
    const double a = 40, b = 20;
    const double perimeter =
        std::numbers::pi * (3 * (a + b) - std::sqrt((3 * a + b) * (a + 3 * b)));
    EXPECT_NEAR(ring.coverage(), perimeter * pen, 2);
    // 20 − 2.83 and 100 + 2.83 across, 10 − 2.83 and 50 + 2.83 down.
    EXPECT_EQ(ring.extents(), (detail::PixelRect{17, 7, 103, 53}));
    EXPECT_EQ(ring.alpha(23, 30), 0) << "inside, by as much";
}

TEST(BitmapContext, DrawsImagesUprightAndNearest) {
    const CGImage image = pictureOf({0xFF000001, 0xFF000002, 0xFF000003, 0xFF000004}, 2);
    using Corners = std::array<int, 4>;  // upper left, upper right, lower left, lower right
    const auto check = [&](const char* name, AffineTransform transform, CGRect place,
                           Corners corners) {
        BitmapContext context = canvas(4, 4);
        context.concatenate(transform);
        context.draw(image, place);
        const PictureProbe probe = finished(context);
        EXPECT_EQ((Corners{probe.red(0, 0), probe.red(3, 0), probe.red(0, 3), probe.red(3, 3)}),
                  corners)
            << name;
        EXPECT_EQ(probe.coverage(), 16) << name;
    };
    check("as it is", {}, {0, 0, 4, 4}, {1, 2, 3, 4});
    check("negative size", {}, {4, 4, -4, -4}, {1, 2, 3, 4});
    check("y downward", {1, 0, 0, -1, 0, 4}, {0, 0, 4, 4}, {3, 4, 1, 2});
    check("mirrored", {-1, 0, 0, 1, 4, 0}, {0, 0, 4, 4}, {2, 1, 4, 3});
    check("a quarter turn", {0, 1, -1, 0, 4, 0}, {0, 0, 4, 4}, {2, 4, 1, 3});
    check("beyond the canvas", {}, {-4, -4, 8, 8}, {2, 2, 2, 2});
}

TEST(BitmapContext, DrawsOddThingsAsNothing) {
    BitmapContext context = canvas(8, 8);
    const CGImage image = pictureOf({0xFFFFFFFF}, 1);
    Path open;
    open.moveTo({NAN, 1});
    open.lineTo({5, 5});
    context.fill(CGRect(NAN, 0, 4, 4));
    context.fill(CGRect::null());
    context.stroke(CGRect::null());
    context.stroke(open);
    context.setLineWidth(0);
    context.stroke(CGRect(1, 1, 4, 4));
    context.draw(image, CGRect(0, 0, 0, 5));
    context.draw(image, CGRect(0, 0, NAN, 5));
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
    context.setFillColor({0, 0, 0, 0.5});
    context.fill(CGRect(0, 0, 1.6, 1));
    context.fill(CGRect(2.6, 0, 2, 1));
    const CGImage have = std::move(context).makeImage();
    EXPECT_TRUE(picturesAgree(have, pictureOf({64u << 24, 64u << 24, 0, 64u << 24}, 4)));
}

TEST(BitmapContext, ClipsToRectanglesAsToTheirPaths) {
    for (const AffineTransform& t : {AffineTransform{}, AffineTransform{-2, 0, 0, 3, 20, 1},
                                     AffineTransform{0, 1, 1, 0, 0, 0}})
        for (const CGRect& rect : {CGRect(2, 1, 5, 4), CGRect(7, 5, -5, -4), CGRect(2.5, 1, 5, 4),
                                   CGRect(-9, -9, 99, 99), CGRect(3, 3, 0, 2),
                                   CGRect(1e300, 0, 1, 1), CGRect(NAN, 0, 1, 1), CGRect::null()}) {
            const auto clipped = [&](bool asPath) {
                BitmapContext context = canvas(24, 18);
                Path path, circle;
                path.addRect(rect);
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
    EXPECT_NEAR(probe.coverage(), 100 + 50 + 1, 0.5) << "no shadow once it is removed";

    BitmapContext faint = canvas(20, 10);
    faint.setFillColor({1, 0, 0, 0.5});
    faint.setShadow({10, 0}, 0, {0, 0, 1, 0.5});
    faint.fill(CGRect(0, 0, 10, 10));
    EXPECT_EQ(finished(faint).pixel(15, 5), pixelOf(0, 0, 64, 64)) << "half of a half";

    BitmapContext blurred = canvas(100, 100);
    blurred.setShadow({200, 0}, 12, {0, 0, 0, 1});
    blurred.draw(pictureOf({0x80000000}, 1), CGRect(-160, 40, 20, 20));
    EXPECT_NEAR(finished(blurred).coverage(), 400 * 128 / 255.0, 3) << "as much as the image has";
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
            for (double at = left + 0.125; at < left + 1; at += 0.25)
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

}  // namespace
}  // namespace pictal
