#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace pictal {
namespace {

using nlohmann::json;

const std::filesystem::path sources = std::filesystem::path(PICTAL_SOURCE_DIR) / "Examples/overlay";

Process::Result play(const std::filesystem::path& recording) {
    return Process{.program = PICTAL_OVERLAY_EXAMPLE, .arguments = {recording.string()}}.run();
}

TEST(OverlayExample, PlaysTheRecordedGesture) {
    const auto result = play(sources / "gesture.txt");
    ASSERT_EQ(result.status, 0) << result.error;
    std::vector<json> steps;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);)
        steps.push_back(json::parse(line));
    ASSERT_EQ(steps.size(), 13U);

    struct Case {
        std::size_t step;
        const char* place;
        const char* want;
    };
    constexpr Case cases[] = {
        {0, "/window", "32"},
        {0, "/selection", "null"},
        {1, "/selection", "[[300,250],[700,450]]"},
        // Locally (300, 200, 700, 450): 6 points on the left are too few, the right has room.
        {1, "/panels/side", R"({"placement":"right","frame":[[1014,225],[280,400]]})"},
        {1, "/panels/bar", R"({"placement":"below","frame":[[700,664],[300,44]]})"},
        // The pointer is at (920, 580) locally.
        {1, "/panels/loupe", "[[934,594],[120,120]]"},
        {3, "/handle", "\"minX\""},
        // The left edge at 400.5, rounded outward; now the left has room.
        {5, "/selection", "[[400,250],[600,450]]"},
        {5, "/panels/side", R"({"placement":"left","frame":[[106,225],[280,400]]})"},
        {7, "/handle", "\"move\""},
        // By (22, -24) the centre would be (722, 451); the screen's is (720, 450).
        {8, "/selection", "[[420,225],[600,450]]"},
        {8, "/guides", "3"},
        {9, "/guides", "0"},
        {10, "/display", "1"},
        {10, "/selection", "null"},
        // Drawn down to 600.25, rounded outward: locally (260, 130, 300, 350).
        {11, "/selection", "[[1700,600],[300,350]]"},
        {11, "/panels/side", R"({"placement":"right","frame":[[574,105],[280,400]]})"},
        {11, "/window", "33"},
        {12, "/handle", "\"maxXMinY\""},
    };
    for (const Case& c : cases) {
        const json::json_pointer place(c.place);
        EXPECT_EQ(steps[c.step].contains(place) ? steps[c.step][place] : json(),
                  json::parse(c.want))
            << "step " << c.step << ", " << c.place;
    }
}

TEST(OverlayExample, SaysWhatItCannotRead) {
    const TemporaryFolder folder;
    std::ofstream(folder / "bad.txt") << "display 0 0 10 10\n\npress 1\n";
    const auto bad = play(folder / "bad.txt");
    EXPECT_EQ(bad.status, 2);
    EXPECT_NE(bad.error.find("bad.txt, line 3: "), std::string::npos) << bad.error;
    EXPECT_EQ(play(folder / "missing.txt").status, 2);
}

std::string contents(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
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
