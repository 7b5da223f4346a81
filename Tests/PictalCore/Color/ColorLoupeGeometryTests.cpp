#include "PictalCore/Color/ColorLoupeGeometry.h"
#include "Tests/Support/GeometryText.h"

#include <cmath>

#include <gtest/gtest.h>

namespace pictal {
namespace {

TEST(ColorLoupeGeometry, FindsTheImagePositionBelowThePointer) {
    const CGRect view(0, 0, 100, 50);
    const CGSize image{200, 100};
    struct Case {
        const char* name;
        CGPoint point;
        CGRect rect;
        CGSize size;
        CGPoint want;
    };
    for (const auto& [name, point, rect, size, want] : {
             Case{"middle", {50, 25}, view, image, {100, 50}},
             {"top left", {0, 50}, view, image, {0, 0}},
             {"bottom right", {100, 0}, view, image, {199, 99}},
             {"between pixels", {10.25, 40.25}, view, image, {20.5, 19.5}},
             {"outside, left and above", {-5, 90}, view, image, {0, 0}},
             {"outside, right and below", {1e300, -1e300}, view, image, {199, 99}},
             {"negative sides", {20, 30}, {110, 60, -100, -50}, image, {20, 60}},
             {"no width", {50, 25}, {0, 0, 0, 50}, image, {}},
             {"no rows", {50, 25}, view, {200, 0}, {}},
             {"no number", {NAN, 25}, view, image, {0, 50}},
             {"half a pixel", {100, 25}, view, {0.5, 100}, {0, 50}},
         })
        EXPECT_EQ(ColorLoupeGeometry::imagePoint(point, rect, size), want) << name;
}

TEST(ColorLoupeGeometry, CropsASquareThatStaysInside) {
    const CGSize image{100, 100};
    struct Case {
        const char* name;
        CGPoint center;
        CGSize size;
        std::int64_t side;
        CGRect want;
    };
    for (const auto& [name, center, size, side, want] : {
             Case{"odd", {10.7, 10.2}, image, 9, {6, 6, 9, 9}},
             {"even", {10.7, 10.2}, image, 10, {5, 5, 10, 10}},
             {"first corner", {1, 1}, image, 9, {0, 0, 9, 9}},
             {"last corner", {99, 99}, image, 9, {91, 91, 9, 9}},
             {"larger than the image", {2, 2}, {5, 3}, 9, {0, 0, 5, 3}},
             {"one", {7.9, 200}, image, 1, {7, 99, 1, 1}},
             {"none", {7.9, 3}, image, 0, {7, 3, 1, 1}},
             {"negative", {7.9, 3}, image, INT64_MIN, {7, 3, 1, 1}},
             {"huge", {7.9, 3}, image, INT64_MAX, {0, 0, 100, 100}},
             {"no number", {NAN, 50}, image, 9, {0, 46, 9, 9}},
             {"no image", {1, 1}, {0, 100}, 9, {}},
         })
        EXPECT_EQ(ColorLoupeGeometry::cropRect(center, size, side), want) << name;
}

}  // namespace
}  // namespace pictal
