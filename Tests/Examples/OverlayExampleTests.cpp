#include "PictalCore/Platform/Foundation/Files.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace pictal {
namespace {

using nlohmann::json;

const std::filesystem::path sources = std::filesystem::path(PICTAL_SOURCE_DIR) / "Examples/overlay";

Process::Result play(const std::filesystem::path& recording,
                     const std::filesystem::path& picture = {}) {
    std::vector<std::string> arguments{recording.string()};
    if (!picture.empty()) arguments.push_back(picture.string());
    return Process{.program = PICTAL_OVERLAY_EXAMPLE, .arguments = arguments}.run();
}

std::vector<json> stepsOf(const Process::Result& result) {
    EXPECT_EQ(result.status, 0) << result.error;
    std::vector<json> steps;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);)
        steps.push_back(json::parse(line));
    return steps;
}

TEST(OverlayExample, PlaysTheRecordedGesture) {
    const auto steps = stepsOf(play(sources / "gesture.txt"));
    ASSERT_EQ(steps.size(), 12U);

    const auto check = [&](std::size_t step, const char* at, const char* want) {
        const json::json_pointer place(at);
        EXPECT_EQ(steps[step].contains(place) ? steps[step][place] : json(), json::parse(want))
            << "step " << step << ", " << at;
    };
    check(0, "/display", "1");
    check(0, "/selection", "null");
    // Drawn down to 600.25, rounded outward: locally (260, 130, 300, 350).
    check(1, "/selection", "[[1700,600],[300,350]]");
    check(1, "/panels/side", R"({"placement":"right","frame":[[574,105],[280,400]]})");
    check(1, "/window", "33");
    check(2, "/handle", R"("maxXMinY")");
    check(3, "/window", "32");
    check(4, "/display", "0");
    check(4, "/selection", "[[300,250],[700,450]]");
    // Locally (300, 200, 700, 450): 6 points on the left are too few, the right has room.
    check(4, "/panels/side", R"({"placement":"right","frame":[[1014,225],[280,400]]})");
    check(4, "/panels/bar", R"({"placement":"below","frame":[[700,664],[300,44]]})");
    // The pointer is at (920, 580) locally.
    check(4, "/panels/loupe", "[[934,594],[120,120]]");
    check(6, "/handle", R"("minX")");
    // The left edge at 400.5, rounded outward; now the left has room.
    check(8, "/selection", "[[400,250],[600,450]]");
    check(8, "/panels/side", R"({"placement":"left","frame":[[106,225],[280,400]]})");
    check(10, "/handle", R"("move")");
    check(10, "/guides", "0");
    // By (22, -24) the centre would be (722, 451); the screen's is (720, 450).
    check(11, "/selection", "[[420,225],[600,450]]");
    check(11, "/guides", "3");
}

TEST(OverlayExample, DragsBackToWhereItBegan) {
    const TemporaryFolder folder;
    std::ofstream(folder / "back.txt") << "display 0 0 1000 800\nwindow 1 350 200 200 300\n"
                                          "press 400 300\nmove 400 300\nrelease 400 300\n"
                                          "press 450 350\nmove 496 400\nmove 450 350\n"
                                          "release 450 350\npress 700 700\nmove 800 750\n"
                                          "move 700 700\n";
    const auto steps = stepsOf(play(folder / "back.txt"));
    ASSERT_EQ(steps.size(), 10U);
    const json window = json::parse("[[350,200],[200,300]]");
    EXPECT_EQ(steps[2]["selection"], window) << "a press that never moved";
    EXPECT_EQ(steps[4]["selection"], json::parse("[[400,250],[200,300]]")) << "snapped";
    EXPECT_EQ(steps[4]["guides"], 3);
    EXPECT_EQ(steps[5]["selection"], window);
    EXPECT_EQ(steps[5]["guides"], 0);
    EXPECT_EQ(steps[8]["selection"], json::parse("[[700,700],[100,50]]"));
    EXPECT_FALSE(steps[9].contains("selection")) << "drawn, and drawn back to nothing";
}

TEST(OverlayExample, DrawsTheLastState) {
    const TemporaryFolder folder;
    ASSERT_EQ(play(sources / "gesture.txt", folder / "last.png").status, 0);
    const auto image = PNG::read(readFile(folder / "last.png").value());
    ASSERT_TRUE(image && image->width() == 1440 && image->height() == 900);
    const PictureProbe probe(*image);
    const auto check = [&](const char* name, std::int64_t x, std::int64_t y, std::uint32_t want) {
        EXPECT_LE(levelsBetween(probe.pixel(x, y), want), 1)
            << name << pixelText(probe.pixel(x, y));
    };
    // Below the rows are half of the desktop's 51, 102, 153 and of the window's 245.
    check("the desktop, dimmed", 50, 50, 0xFF4D331A);
    check("the desktop, in the selection", 1010, 600, 0xFF996633);
    check("the window, in the selection", 500, 600, 0xFFF5F5F5);
    check("the window, dimmed", 410, 600, 0xFF7B7B7B);
    check("nine points from a region's corner", 420, 234, 0xFFF5F5F5);
    check("the accent stroke", 419, 300, 0xFFFF9900);
    check("a handle", 420, 225, 0xFFFFFFFF);
    check("a guide line", 719, 20, 0xFF9933FF);
}

TEST(OverlayExample, RoundsAWindowMoreThanARegion) {
    const TemporaryFolder folder;
    // The display cuts off the window's own corner, so that the selection's lies on its body.
    std::ofstream(folder / "window.txt") << "display 0 0 1440 900\nwindow 1 -50 -50 450 350\n"
                                            "press 200 200\n";
    ASSERT_EQ(play(folder / "window.txt", folder / "window.png").status, 0);
    const auto image = PNG::read(readFile(folder / "window.png").value());
    ASSERT_TRUE(image.has_value());
    const PictureProbe probe(*image);
    // From the centre of a corner of 22 the pixel is more than 24 away, behind the stroke.
    EXPECT_LE(levelsBetween(probe.pixel(0, 890), 0xFF7B7B7B), 1) << pixelText(probe.pixel(0, 890));
    EXPECT_LE(levelsBetween(probe.pixel(0, 876), 0xFFF5F5F5), 1) << pixelText(probe.pixel(0, 876));
}

TEST(OverlayExample, SaysWhatItCannotRead) {
    const TemporaryFolder folder;
    std::ofstream(folder / "bad.txt") << "display 0 0 10 10\n\npress 1\n";
    const auto bad = play(folder / "bad.txt");
    EXPECT_EQ(bad.status, 2);
    EXPECT_NE(bad.error.find("bad.txt, line 3: "), std::string::npos) << bad.error;
    EXPECT_EQ(play(folder / "missing.txt").status, 2);
    EXPECT_EQ(play(sources).status, 2) << "a folder";
}

std::string withoutSpaces(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    return text;
}

TEST(OverlayExample, TheGuideShowsWhatIsThere) {
    const std::string guide = contents(sources / "../../docs/geometry.md");
    const std::string there = withoutSpaces(contents(sources / "Overlay.cpp")) +
                              withoutSpaces(play(sources / "gesture.txt").output);
    int blocks = 0;
    for (const std::string fence : {"```cpp\n", "```json\n"})
        for (auto begin = guide.find(fence); begin != std::string::npos; ++blocks) {
            begin += fence.size();
            const std::string block = guide.substr(begin, guide.find("```", begin) - begin);
            EXPECT_NE(there.find(withoutSpaces(block)), std::string::npos) << block;
            begin = guide.find(fence, begin);
        }
    EXPECT_EQ(blocks, 3);
}

}  // namespace
}  // namespace pictal
