#include "pictal/ocr/Tiles.h"

#include <gtest/gtest.h>

namespace pictal::program {
namespace {

PaddleOCRDetectionBox boxOf(float left, float top, float right, float bottom) {
    return {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}, 1};
}

TEST(Tiles, CoverThePictureAndOverlap) {
    for (const auto& [width, height, limit] : {std::array<std::int64_t, 3>{2880, 1800, 1920},
                                               {1000, 1920, 1920},
                                               {1000, 1921, 1920},
                                               {1440, 20'000, 960},
                                               {100, 5'000, 32},
                                               {3'000, 3'001, 100},
                                               {10, 8'000'000, 1920}}) {
        const auto tiles = tilesOf(width, height, limit);
        EXPECT_EQ(tiles.front().top, 0);
        EXPECT_EQ(tiles.back().bottom, height);
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            EXPECT_LE(tiles[i].bottom - tiles[i].top, std::max({width, limit, std::int64_t{512}}));
            if (i == 0) continue;
            EXPECT_GE(tiles[i - 1].bottom - tiles[i].top, 128) << height;
        }
    }
    EXPECT_EQ(tilesOf(2880, 2880, 1920).size(), 1U);
    EXPECT_EQ(tilesOf(1440, 3'000, 1440).size(), 3U);  // 1440 + 1296 < 3000
}

TEST(Tiles, EachTextIsKeptOnce) {
    const std::vector<Tile> tiles{{0, 1000}, {800, 1800}};  // the seam is at 900
    const auto merged = mergedBoxes(
        tiles, {{boxOf(0, 10, 50, 30), boxOf(0, 820, 50, 840), boxOf(0, 890, 50, 912),
                 boxOf(60, 894, 90, 904), boxOf(0, 950, 50, 970), boxOf(0, 985, 50, 1000)},
                {boxOf(0, 0, 50, 12), boxOf(0, 20, 50, 40), boxOf(1, 88, 51, 110),
                 boxOf(100, 90, 150, 108), boxOf(0, 151, 50, 170), boxOf(0, 180, 60, 220)}});
    const std::vector<PaddleOCRDetectionBox> expected{
        boxOf(0, 10, 50, 30),    boxOf(0, 820, 50, 840),    boxOf(0, 890, 50, 912),
        boxOf(60, 894, 90, 904), boxOf(100, 890, 150, 908), boxOf(0, 951, 50, 970),
        boxOf(0, 980, 60, 1020)};
    EXPECT_EQ(merged, expected);
}

TEST(Tiles, NeighbouringLinesAtTheSeamAreBothKept) {
    const auto merged =
        mergedBoxes({{0, 1000}, {800, 1800}}, {{boxOf(0, 884, 50, 900)}, {boxOf(0, 99, 50, 113)}});
    EXPECT_EQ(merged.size(), 2U);
}

}  // namespace
}  // namespace pictal::program
