#include "PictalCore/Platform/Graphics/BitmapContext.h"
#include "PictalCore/Scrolling/ScrollingPainter.h"
#include "PictalCore/Scrolling/ScrollingStitcher.h"
#include "Tests/Support/PictureProbe.h"

#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace pictal {

namespace {

using Frames = std::vector<ScrollingStitchFrame>;
using Error = ScrollingStitcherError;
constexpr std::int64_t anyHeight = std::numeric_limits<std::int64_t>::max();

/// A frame whose pixels tell the seed, the row and the column.
CGImage frameOf(std::int64_t width, std::int64_t height, std::uint32_t seed,
                std::uint32_t alpha = 255, const CGColorSpace& space = CGColorSpace::sRGB()) {
    const auto pixel = [=](std::uint32_t x, std::uint32_t y) {
        return kernels::premultiplied(
            kernels::pixelOf(seed * 40 % 256, y * 7 % 256, x * 13 % 256, alpha));
    };
    return pictureOf(width, height, pixel, space);
}

/// The same by the drawing surface: every frame over the ones before.
CGImage drawn(Frames frames) {
    std::ranges::stable_sort(frames, {}, &ScrollingStitchFrame::verticalPosition);
    std::int64_t top = frames.front().verticalPosition, bottom = top, width = 0;
    for (const auto& [image, position] : frames) {
        bottom = std::max(bottom, position + image.height());
        width = std::max(width, image.width());
    }
    auto context = BitmapContext::make(width, bottom - top, CGColorSpace::sRGB()).value();
    for (const auto& [image, position] : frames)
        context.draw(image,
                     {0, static_cast<CGFloat>(bottom - position - image.height()),
                      static_cast<CGFloat>(image.width()), static_cast<CGFloat>(image.height())});
    return std::move(context).makeImage();
}

Error errorOf(const ScrollingStitcher::Result& result) {
    return std::get<Error>(result.error());
}

}  // namespace

TEST(ScrollingStitcher, PutsALongPictureTogetherAgain) {
    const CGImage tall = frameOf(70, 1700, 3);
    const auto cut = [&](CGFloat y, CGFloat height) { return *tall.cropping({0, y, 70, height}); };
    const Frames frames{{cut(700, 1000), 500}, {cut(0, 1000), -200}, {cut(300, 400), 100}};
    const auto result = ScrollingStitcher().stitch(frames, 1700);
    ASSERT_TRUE(result.has_value());
    EXPECT_TRUE(picturesAgree(*result, tall));
    EXPECT_TRUE(result->isOpaque());
    EXPECT_EQ(errorOf(ScrollingStitcher().stitch(frames, 1699)), Error::outputTooTall(1699));
}

TEST(ScrollingStitcher, LaterFramesCoverEarlierOnes) {
    const Frames frames{{frameOf(8, 10, 1), 7}, {frameOf(8, 10, 2), 0}, {frameOf(8, 10, 3), 7}};
    const PictureProbe probe(ScrollingStitcher().stitch(frames, 17).value());
    EXPECT_EQ(probe.red(0, 6), 80);
    EXPECT_EQ(probe.red(0, 7), 120) << "of equal positions the later in the list";
    EXPECT_EQ(probe.green(0, 7), 0) << "its first row";
    EXPECT_EQ(probe.green(0, 16), 63);
}

TEST(ScrollingStitcher, LeavesTransparentWhatNoFrameCovers) {
    const Frames frames{{frameOf(10, 5, 1), 8}, {frameOf(8, 5, 2), 0}};
    const PictureProbe probe(ScrollingStitcher().stitch(frames, 13).value());
    EXPECT_EQ(probe.coverage(), 8 * 5 + 10 * 5);
    EXPECT_EQ(probe.pixel(8, 4), 0U);
    EXPECT_EQ(probe.pixel(7, 5), 0U);
    EXPECT_EQ(probe.alpha(9, 12), 255);
}

TEST(ScrollingStitcher, AgreesWithTheDrawingSurface) {
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        Frames frames;
        for (std::uint32_t i = 0; i < 2 + random() % 5; ++i) {
            const std::uint32_t alpha = random() % 3 == 0 ? 100 : 255;
            const std::int64_t width = random() % 3 == 0 ? 5 : 9;
            frames.push_back(
                {frameOf(width, 1 + static_cast<std::int64_t>(random() % 12), i, alpha),
                 static_cast<std::int64_t>(random() % 20) - 10});
        }
        const auto result = ScrollingStitcher().stitch(frames, anyHeight);
        ASSERT_TRUE(result.has_value());
        EXPECT_TRUE(picturesAgree(*result, drawn(frames))) << "round " << round;
    }
}

TEST(ScrollingStitcher, ReturnsOneFrameAsItIs) {
    const CGImage image = frameOf(3, 4, 1, 90, CGColorSpace::deviceRGB());
    const Frames frames{{image, -50}};
    EXPECT_TRUE(ScrollingStitcher().stitch(frames, 4)->isSameImage(image));
    EXPECT_EQ(errorOf(ScrollingStitcher().stitch(frames, 3)), Error::outputTooTall(3));
}

TEST(ScrollingStitcher, FailsByName) {
    const auto stitch = [](const Frames& frames, std::int64_t maximum = anyHeight) {
        return errorOf(ScrollingStitcher().stitch(frames, maximum));
    };
    const CGImage image = frameOf(3, 4, 1);
    constexpr std::int64_t last = anyHeight;
    constexpr std::int64_t first = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(stitch({}), Error::noFrames());
    EXPECT_EQ(stitch({{image, last - 3}, {image, 0}}), Error::outputTooTall(anyHeight));
    EXPECT_EQ(stitch({{image, first}, {image, 0}}), Error::outputTooTall(anyHeight));
    EXPECT_EQ(stitch({{image, 0}, {image, std::int64_t{1} << 40}}), Error::cannotCreateContext());
    EXPECT_EQ(stitch({{image, last - 4}, {image, last - 8}}, 7), Error::outputTooTall(7));
    EXPECT_EQ(stitch({{CGImage(), 0}, {CGImage(), 2}}), Error::cannotCreateContext());
    EXPECT_EQ(stitch({{image, 0}, {image, 2}}, -1), Error::outputTooTall(-1));
}

TEST(ScrollingStitcher, PlacesFramesAtTheEndsOf64Bits) {
    const Frames frames{{frameOf(3, 4, 1), anyHeight - 4}, {frameOf(3, 4, 2), anyHeight - 8}};
    EXPECT_EQ(ScrollingStitcher().stitch(frames, 8)->height(), 8);
}

TEST(ScrollingStitcher, StopsWhenAsked) {
    std::stop_source source;
    source.request_stop();
    const CGImage image = frameOf(3, 4, 1);
    const Frames frames{{image, 0}, {image, 2}};
    const auto isStopped = [](const ScrollingStitcher::Result& result) {
        return !result && std::holds_alternative<CancellationError>(result.error());
    };
    EXPECT_TRUE(isStopped(ScrollingStitcher().stitch(frames, 6, source.get_token())));
    EXPECT_TRUE(isStopped(ScrollingStitcher::copyNewContent(image, 2, source.get_token())));
    EXPECT_EQ(errorOf(ScrollingStitcher().stitch(frames, 5, source.get_token())),
              Error::outputTooTall(5));
    EXPECT_EQ(errorOf(ScrollingStitcher::copyNewContent(image, 5, source.get_token())),
              Error::invalidVerticalOffset(5));
}

TEST(ScrollingStitcher, CopiesStrips) {
    const CGImage image = frameOf(5, 9, 2, 77);
    const auto bottom = ScrollingStitcher::copyNewContent(image, 4);
    const auto top = ScrollingStitcher::copyNewContentFromTop(image, 4);
    EXPECT_TRUE(picturesAgree(*bottom, *image.cropping({0, 5, 5, 4})));
    EXPECT_TRUE(picturesAgree(*top, *image.cropping({0, 0, 5, 4})));
    const auto whole = ScrollingStitcher::copyNewContent(image, 9);
    EXPECT_TRUE(picturesAgree(*whole, image));
    EXPECT_FALSE(whole->isSameImage(image));
    for (const std::int64_t height : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{10}}) {
        EXPECT_EQ(errorOf(ScrollingStitcher::copyNewContent(image, height)),
                  Error::invalidVerticalOffset(height));
        EXPECT_EQ(errorOf(ScrollingStitcher::copyNewContentFromTop(image, height)),
                  Error::invalidVerticalOffset(height));
    }
}

TEST(ScrollingPainter, LetsRowsOutAsSoonAsTheyAreFinal) {
    std::vector<std::uint32_t> reds;
    ScrollingPainter painter(4, [&](std::span<const std::uint32_t> row) {
        reds.push_back(row[0] & 255);
        return reds.size() < 9;
    });
    EXPECT_TRUE(painter.add({frameOf(4, 5, 1), 10}).has_value());
    EXPECT_EQ(reds.size(), 0U);
    EXPECT_TRUE(painter.add({frameOf(4, 5, 2), 13}).has_value());
    EXPECT_EQ(reds, (std::vector<std::uint32_t>{40, 40, 40}));
    EXPECT_EQ(painter.add({frameOf(4, 5, 2), 12}).error(), ScrollingPainterError::wrongFrame);
    EXPECT_EQ(painter.add({frameOf(5, 5, 2), 20}).error(), ScrollingPainterError::wrongFrame);
    EXPECT_EQ(painter.add({frameOf(4, 5, 2), anyHeight - 4}).error(),
              ScrollingPainterError::wrongFrame);
    EXPECT_TRUE(painter.isOpaque());
    EXPECT_EQ(painter.add({frameOf(4, 5, 3), 19}).error(), ScrollingPainterError::sinkFailed);
    EXPECT_EQ(reds, (std::vector<std::uint32_t>{40, 40, 40, 80, 80, 80, 80, 80, 0}));
    EXPECT_FALSE(painter.isOpaque());
}

}  // namespace pictal
