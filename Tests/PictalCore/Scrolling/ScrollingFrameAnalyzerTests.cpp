#include "PictalCore/Scrolling/ScrollingFrameAnalyzer.h"
#include "Tests/Support/PageFrames.h"
#include "Tests/Support/PictureProbe.h"

#include <cmath>

#include <gtest/gtest.h>

namespace pictal {

namespace {

using Analysis = ScrollingFrameAnalysis;

ScrollingFrameMeasurement measured(const CGImage& previous, const CGImage& current) {
    return ScrollingFrameAnalyzer().measure(previous, current).value();
}

/// "-120", "unchanged" or "none".
std::string answer(const CGImage& previous, const CGImage& current) {
    const auto analysis = ScrollingFrameAnalyzer().analyze(previous, current).value();
    if (const auto* shifted = analysis.as<Analysis::Shifted>())
        return std::to_string(shifted->verticalOffset);
    return analysis.as<Analysis::Unchanged>() ? "unchanged" : "none";
}

}  // namespace

TEST(ScrollingFrameAnalyzer, MeasuresWhatMoved) {
    const PageFrames page(900, 600, 1);
    const auto check = [&](const char* name, std::int64_t from, std::int64_t to, const char* want) {
        EXPECT_EQ(answer(page.frame(from), page.frame(to)), want) << name;
    };
    check("down the page", 100, 220, "-120");
    check("up the page", 220, 100, "120");
    check("by more than the bands see", 100, 550, "-450");
    check("a little", 100, 104, "-4");
    check("three pixels are none", 100, 103, "unchanged");
    check("not at all", 100, 100, "unchanged");
    check("out of sight", 100, 690, "none");
    check("to another part of the page", 100, 1500, "none");
}

TEST(ScrollingFrameAnalyzer, IsSureOfACleanMatch) {
    const PageFrames page(900, 600, 2);
    const auto measurement = measured(page.frame(100), page.frame(160));
    ASSERT_EQ(measurement.bands.size(), 5U);
    for (const auto& band : measurement.bands) {
        ASSERT_TRUE(band.translation.has_value());
        EXPECT_EQ(band.translation->x, 0);
        EXPECT_EQ(band.translation->y, -60);
        EXPECT_GE(band.translation->confidence, 0.95F);
    }
    EXPECT_GE(measurement.wholeFrame.value().confidence, 0.95F);
    EXPECT_EQ(measurement.accepted.value().y, -60);
}

TEST(ScrollingFrameAnalyzer, IgnoresWhatStandsStill) {
    PageFrames page(900, 600, 3);
    page.header = 70;
    page.footer = 40;
    page.sidebar = 200;
    const auto measurement = measured(page.frame(100), page.frame(230));
    EXPECT_EQ(measurement.accepted.value().y, -130);
    // Blank rows beside the bars stand still as well: fewer than a line's gap and the text above.
    EXPECT_GE(measurement.stillRowsAtTop, 70);
    EXPECT_LE(measurement.stillRowsAtTop, 70 + 24);
    EXPECT_GE(measurement.stillRowsAtBottom, 40);
    EXPECT_LE(measurement.stillRowsAtBottom, 40 + 24);
}

TEST(ScrollingFrameAnalyzer, DoesNotGuess) {
    const PageFrames page(900, 600, 4), other(900, 600, 5);
    EXPECT_EQ(answer(page.frame(0), other.frame(0)), "none");
    PageFrames framed = page, otherFramed = other;
    framed.header = otherFramed.header = 80;
    framed.sidebar = otherFramed.sidebar = 250;
    EXPECT_EQ(answer(framed.frame(0), otherFramed.frame(0)), "none") << "new under the same bars";
    PageFrames rows = page;
    rows.repeatEvery = 1;
    EXPECT_EQ(answer(rows.frame(0), rows.frame(30)), "none") << "every line is the same";
    const CGImage blank = pictureOf(900, 600, [](auto, auto) { return 0xFFFFFFFF; });
    const CGImage grey = pictureOf(900, 600, [](auto, auto) { return 0xFF808080; });
    EXPECT_EQ(answer(blank, grey), "none");
    EXPECT_EQ(measured(blank, grey).wholeFrame, std::nullopt);
}

TEST(ScrollingFrameAnalyzer, TellsIdenticalFrames) {
    const CGImage blank = pictureOf(300, 200, [](auto, auto) { return 0xFFFFFFFF; });
    const CGImage again = pictureOf(300, 200, [](auto, auto) { return 0xFFFFFFFF; });
    const auto measurement = measured(blank, again);
    EXPECT_EQ(measurement.wholeFrame, (ImageTranslation{0, 0, 1}));
    ASSERT_EQ(measurement.bands.size(), 5U);
    for (const auto& band : measurement.bands)
        EXPECT_EQ(band.translation, (ImageTranslation{0, 0, 1}));
    EXPECT_EQ(answer(blank, again), "unchanged");
}

TEST(ScrollingFrameAnalyzer, TellsRepeatedLinesApartByWhatDiffers) {
    PageFrames page(900, 600, 6);
    page.repeatEvery = 1;
    page.numbered = true;
    EXPECT_EQ(answer(page.frame(0), page.frame(150)), "-150");
    EXPECT_EQ(answer(page.frame(333), page.frame(200)), "133");
}

TEST(ScrollingFrameAnalyzer, FollowsContentThatAlsoMovesSideways) {
    const PageFrames page(900, 600, 7);
    const auto measurement = measured(page.frame(100, 8), page.frame(160, 10));
    ASSERT_TRUE(measurement.accepted.has_value());
    EXPECT_EQ(measurement.accepted->x, -2);
    EXPECT_EQ(measurement.accepted->y, -60);
    EXPECT_EQ(answer(page.frame(100, 0), page.frame(160, 5)), "none") << "too far for a scroll";
}

TEST(ScrollingFrameAnalyzer, SeesThroughNoise) {
    PageFrames page(900, 600, 11);
    page.noise = 2;
    EXPECT_EQ(answer(page.frame(100), page.frame(230)), "-130");
    EXPECT_EQ(answer(page.frame(100, 8), page.frame(160, 6)), "-60") << "and sideways";
    EXPECT_EQ(answer(page.frame(100), page.frame(100)), "unchanged");
    PageFrames other(900, 600, 12);
    other.noise = 2;
    EXPECT_EQ(answer(page.frame(100), other.frame(100)), "none");
    page.repeatEvery = 1;
    EXPECT_EQ(answer(page.frame(0), page.frame(30)), "none");
}

TEST(ScrollingFrameAnalyzer, TakesFramesOfAnySize) {
    for (const std::int64_t width : {1, 63, 64, 65, 130, 4097, 4500})
        for (const std::int64_t height : {2, 3, 60, 120}) {
            const PageFrames page(width, height, 8);
            EXPECT_EQ(answer(page.frame(40), page.frame(40)), "unchanged")
                << width << " × " << height;
            // A column of pixels tells little; whatever is answered has to be true.
            const std::string moved = answer(page.frame(40), page.frame(60));
            EXPECT_TRUE(moved == "none" || moved == "-20" || (moved == "unchanged" && height < 60))
                << width << " × " << height << ": " << moved;
        }
    const PageFrames page(130, 120, 8);
    EXPECT_EQ(answer(page.frame(40), page.frame(60)), "-20");
}

TEST(ScrollingFrameAnalyzer, FailsByName) {
    const auto failure = [](const CGImage& previous, const CGImage& current,
                            const std::stop_token& token = {}) {
        return ScrollingFrameAnalyzer().analyze(previous, current, token).error();
    };
    const OrCancelled<ScrollingFrameAnalyzerError> sizes =
        ScrollingFrameAnalyzerError::incompatibleFrameSizes;
    const PageFrames page(50, 40, 9);
    const CGImage frame = page.frame(0);
    EXPECT_EQ(failure(frame, *frame.cropping({0, 0, 49, 40})), sizes);
    EXPECT_EQ(failure(*frame.cropping({0, 0, 50, 39}), frame), sizes);
    const CGImage line = *frame.cropping({0, 0, 50, 1});
    EXPECT_EQ(failure(line, line), sizes);
    EXPECT_EQ(failure({}, {}), sizes);
    std::stop_source source;
    source.request_stop();
    EXPECT_TRUE(std::holds_alternative<CancellationError>(failure({}, frame, source.get_token())));
}

}  // namespace pictal
