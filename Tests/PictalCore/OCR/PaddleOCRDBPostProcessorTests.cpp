#include "PictalCore/OCR/PaddleOCRDBPostProcessor.h"
#include "PictalCore/OCR/detail/ReadingOrder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Boxes = std::vector<PaddleOCRDetectionBox>;
constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinite = std::numeric_limits<float>::infinity();

struct Map {
    std::int64_t width, height;
    std::vector<float> cells = std::vector<float>(static_cast<std::size_t>(width * height));

    Map& block(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h, float value) {
        for (std::int64_t j = y; j < y + h; ++j)
            for (std::int64_t i = x; i < x + w; ++i)
                cells[static_cast<std::size_t>(j * width + i)] = value;
        return *this;
    }
    Boxes boxes(const PaddleOCRDBPostProcessor& processor, std::int64_t pixelsACell) const {
        return processor.process(cells, width, height, width * pixelsACell, height * pixelsACell);
    }
};

const PaddleOCRDBPostProcessor usual{PaddleOCRDetectionConfig{}};

PaddleOCRDetectionBox boxOf(float left, float top, float right, float bottom, float score) {
    return {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}, score};
}

TEST(PaddleOCRDBPostProcessor, TakesTheConfiguration) {
    const PaddleOCRDBPostProcessor processor(PaddleOCRDetectionConfig{
        .threshold = 0.1F, .boxThreshold = 0.2F, .maxCandidates = 7, .unclipRatio = 3});
    EXPECT_EQ(processor.threshold, 0.1F);
    EXPECT_EQ(processor.boxThreshold, 0.2F);
    EXPECT_EQ(processor.maxCandidates, 7);
    EXPECT_EQ(processor.unclipRatio, 3);
    EXPECT_EQ(processor.minimumSideLength, 3);
}

TEST(PaddleOCRDBPostProcessor, BoxesByHand) {
    // 3 × 3 cells: a margin of one; 10 × 20 cells at a ratio of 2: of five.
    Boxes found = Map{10, 10}.block(3, 4, 3, 3, 0.5F).boxes(usual, 10);
    EXPECT_EQ(found, (Boxes{boxOf(20, 30, 60, 70, 0.5F)}));
    PaddleOCRDBPostProcessor wide = usual;
    wide.unclipRatio = 2;
    EXPECT_EQ(Map({40, 40}).block(10, 10, 20, 10, 1).boxes(wide, 2),
              (Boxes{boxOf(10, 10, 68, 48, 1)}));
    // The far limit is the last cell, not the map's edge.
    EXPECT_EQ(Map({10, 10}).block(0, 7, 10, 3, 1).boxes(usual, 1), (Boxes{boxOf(0, 6, 9, 9, 1)}));
    // Cells need not be square in the original.
    EXPECT_EQ(usual.process(Map({5, 5}).block(1, 1, 3, 3, 1).cells, 5, 5, 10, 1),
              (Boxes{boxOf(0, 0, 8, 4 * (1 / 5.0F), 1)}));
}

TEST(PaddleOCRDBPostProcessor, WhatCountsAsText) {
    EXPECT_TRUE(Map({10, 10}).boxes(usual, 1).empty());
    EXPECT_TRUE(Map({10, 10}).block(5, 5, 1, 1, 1).boxes(usual, 1).empty());
    EXPECT_TRUE(Map({10, 10}).block(2, 5, 8, 2, 1).boxes(usual, 1).empty());
    // At the threshold it is no text; a mean at the threshold of boxes is a box.
    EXPECT_TRUE(Map({10, 10}).block(2, 2, 4, 4, usual.threshold).boxes(usual, 1).empty());
    EXPECT_EQ(Map({10, 10}).block(2, 2, 4, 4, 0.25F).boxes({0.2F, 0.25F, 9, 1, 3}, 1).size(), 1U);
    EXPECT_TRUE(Map({10, 10}).block(2, 2, 4, 4, 0.25F).boxes({0.2F, 0.26F, 9, 1, 3}, 1).empty());
    // Corners do not touch; sides do.
    EXPECT_EQ(Map({9, 9}).block(1, 1, 3, 3, 1).block(4, 4, 3, 3, 1).boxes(usual, 1).size(), 2U);
    EXPECT_EQ(Map({9, 9}).block(1, 1, 3, 3, 1).block(4, 3, 3, 3, 1).boxes(usual, 1).size(), 1U);
    const Map three = Map{20, 20}.block(12, 2, 4, 4, 1).block(1, 4, 4, 4, 1).block(1, 12, 4, 4, 1);
    for (const auto& [most, count] :
         {std::pair{-1, 1U}, {0, 1U}, {1, 1U}, {2, 2U}, {3, 3U}, {9, 3U}})
        EXPECT_EQ(three.boxes({0.2F, 0.4F, most, 1, 3}, 1).size(), count) << most;
    EXPECT_EQ(three.boxes({0.2F, 0.4F, 1, 1, 3}, 1)[0].minX(), 11);  // the first one scanned
}

TEST(PaddleOCRDBPostProcessor, UnusableSizesHaveNoBoxes) {
    const std::vector<float> map(100, 1.0F);
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    for (const auto& [w, h, ow, oh] : {std::array<std::int64_t, 4>{0, 10, 9, 9},
                                       {10, -1, 9, 9},
                                       {10, 10, 0, 9},
                                       {10, 10, 9, 0},
                                       {10, 11, 9, 9},
                                       {101, 1, 9, 9},
                                       {most, most, 9, 9},
                                       {most / 2 + 1, 4, 9, 9}})
        EXPECT_TRUE(usual.process(map, w, h, ow, oh).empty()) << w << ' ' << h;
    EXPECT_EQ(usual.process(map, 9, 9, 9, 9).size(), 1U);  // more values do not matter
}

TEST(PaddleOCRDBPostProcessor, NumbersThatAreNone) {
    Map map{12, 5};
    map.block(1, 1, 4, 3, infinite).block(2, 2, 1, 1, nan).block(7, 1, 4, 3, nan);
    const Boxes found = map.boxes(usual, 1);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].confidence, infinite);
    EXPECT_TRUE(Map({9, 9}).block(1, 1, 5, 5, -infinite).boxes(usual, 1).empty());
}

/// Region by region as the rules are told, with a set for what was visited.
Boxes plainBoxes(const Map& map, const PaddleOCRDBPostProcessor& p, float scaleX, float scaleY) {
    Boxes boxes;
    std::set<std::pair<std::int64_t, std::int64_t>> visited;
    const auto isText = [&](std::int64_t x, std::int64_t y) {
        return x >= 0 && y >= 0 && x < map.width && y < map.height &&
               map.cells[static_cast<std::size_t>(y * map.width + x)] > p.threshold;
    };
    for (std::int64_t y = 0; y < map.height; ++y)
        for (std::int64_t x = 0; x < map.width; ++x) {
            if (!isText(x, y) || !visited.insert({x, y}).second) continue;
            std::vector<std::pair<std::int64_t, std::int64_t>> stack{{x, y}};
            std::int64_t left = x, top = y, right = x, bottom = y;
            float sum = 0, count = 0;
            while (!stack.empty()) {
                const auto [cx, cy] = stack.back();
                stack.pop_back();
                left = std::min(left, cx), right = std::max(right, cx);
                top = std::min(top, cy), bottom = std::max(bottom, cy);
                sum += map.cells[static_cast<std::size_t>(cy * map.width + cx)];
                count += 1;
                for (const auto& next :
                     {std::pair{cx - 1, cy}, {cx + 1, cy}, {cx, cy - 1}, {cx, cy + 1}})
                    if (isText(next.first, next.second) && visited.insert(next).second)
                        stack.push_back(next);
            }
            const std::int64_t shorter = std::min(right - left, bottom - top) + 1;
            if (shorter < p.minimumSideLength || sum / count < p.boxThreshold) continue;
            float d = static_cast<float>(shorter) * (p.unclipRatio > 1 ? p.unclipRatio - 1 : 0);
            d = d * 0.5F > 1 ? d * 0.5F : 1;
            const auto near = [=](std::int64_t side) {
                return std::max(static_cast<float>(side) - d, 0.0F);
            };
            const auto far = [=](std::int64_t side, std::int64_t size) {
                return std::min(static_cast<float>(side) + d, static_cast<float>(size - 1));
            };
            boxes.push_back(boxOf(scaleX * near(left), scaleY * near(top),
                                  scaleX * far(right, map.width), scaleY * far(bottom, map.height),
                                  sum / count));
            if (static_cast<std::int64_t>(boxes.size()) >= p.maxCandidates) return boxes;
        }
    return boxes;
}

TEST(PaddleOCRDBPostProcessor, IsThePlainComputationToTheBit) {
    std::mt19937 random{5};
    for (int round = 0; round < 60; ++round) {
        Map map{static_cast<std::int64_t>(1 + random() % 40),
                static_cast<std::int64_t>(1 + random() % 40)};
        for (float& cell : map.cells)
            cell = random() % 50 == 0 ? nan : static_cast<float>(random() % 1'000) / 999;
        const PaddleOCRDBPostProcessor processor{
            static_cast<float>(random() % 10) / 20, 0.3F, static_cast<std::int64_t>(random() % 12),
            1 + static_cast<float>(random() % 20) / 10, static_cast<std::int64_t>(random() % 4)};
        const std::int64_t width = 1 + static_cast<std::int64_t>(random() % 3'000);
        Boxes found = processor.process(map.cells, map.width, map.height, width, 777);
        Boxes expected =
            plainBoxes(map, processor, static_cast<float>(width) / static_cast<float>(map.width),
                       777 / static_cast<float>(map.height));
        const auto order = [](const PaddleOCRDetectionBox& a, const PaddleOCRDetectionBox& b) {
            return std::tuple(a.minY(), a.minX(), a.maxY(), a.maxX(), a.confidence) <
                   std::tuple(b.minY(), b.minX(), b.maxY(), b.maxX(), b.confidence);
        };
        std::ranges::sort(found, order);
        std::ranges::sort(expected, order);
        EXPECT_EQ(found, expected) << round;
    }
}

PaddleOCRDetectionBox at(float left, float top, float height) {
    return boxOf(left, top, left + 10, top + height, 1);
}

TEST(ReadingOrder, LinesFromTheTopAndBoxesFromTheLeft) {
    using detail::isReadBefore;
    EXPECT_TRUE(isReadBefore(at(10, 5, 10), at(20, 0, 40)));  // tolerance 8
    EXPECT_TRUE(isReadBefore(at(10, 8, 10), at(20, 0, 10)));
    EXPECT_FALSE(isReadBefore(at(10, 8.5F, 10), at(20, 0, 10)));
    EXPECT_TRUE(isReadBefore(at(20, 0, 10), at(10, 8.5F, 10)));
    EXPECT_TRUE(isReadBefore(at(10, 30, 100), at(20, 0, 100)));  // tolerance 50
    EXPECT_FALSE(isReadBefore(at(10, 30, 100), at(20, 0, 20)));
    EXPECT_FALSE(isReadBefore(at(10, 0, 10), at(10, 3, 10)));
    EXPECT_FALSE(isReadBefore(at(10, 3, 10), at(10, 0, 10)));
    Boxes page{at(200, 3, 12), at(5, 40, 12), at(100, 0, 12), at(1, 5, 12), at(5, 41, 12)};
    Boxes expected{page[3], page[2], page[0], page[1], page[4]};
    detail::sortIntoReadingOrder(page);
    EXPECT_EQ(page, expected);
}

TEST(ReadingOrder, EndsWithAllBoxesWhateverTheRelation) {
    // Steps of 6 pixels down and to the left: each is on its neighbour's line, none on the next.
    for (const std::size_t count : {0U, 1U, 2U, 3U, 5U, 64U, 1'000U}) {
        Boxes boxes;
        for (std::size_t i = 0; i < count; ++i)
            boxes.push_back(at(static_cast<float>((count - i * 7 % count) * 5),
                               i % 11 == 3 ? nan : static_cast<float>(i * 6 % 400), 10));
        const auto bits = [](const Boxes& all) {
            std::multiset<float> lefts;
            for (const auto& box : all)
                lefts.insert(box.points[0].x);
            return lefts;
        };
        const auto before = bits(boxes);
        detail::sortIntoReadingOrder(boxes);
        EXPECT_EQ(bits(boxes), before) << count;
    }
}

TEST(PaddleOCRDetectionBox, Extents) {
    const PaddleOCRDetectionBox box{{{3, 9}, {-1, 4}, {2, 12}}, 1};
    EXPECT_EQ(box.minX(), -1);
    EXPECT_EQ(box.maxX(), 3);
    EXPECT_EQ(box.minY(), 4);
    EXPECT_EQ(box.maxY(), 12);
    EXPECT_EQ(PaddleOCRDetectionBox{}.maxX() + PaddleOCRDetectionBox{}.minY(), 0);
}

}  // namespace
}  // namespace pictal
