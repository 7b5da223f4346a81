#include "PictalCore/Platform/Graphics/AffineTransform.h"
#include "PictalCore/Platform/Graphics/Path.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace pictal {
namespace {

TEST(AffineTransform, ConcatenatesInReadingOrder) {
    constexpr auto moveThenScale =
        AffineTransform::translation(1, 2).concatenated(AffineTransform::scale(10, -10));
    static_assert(moveThenScale.applied({3, 4}) == CGPoint{40, -60});
    constexpr AffineTransform turn{0, 1, -1, 0, 5, 0};  // x to y, y to -x
    static_assert(turn.applied({2, 3}) == CGPoint{2, 2});
    static_assert(moveThenScale.concatenated(turn).applied({3, 4}) == turn.applied({40, -60}));
}

TEST(Path, BoundsHoldAllPoints) {
    Path path;
    EXPECT_TRUE(path.isEmpty());
    EXPECT_TRUE(path.boundingBox().isNull());
    path.addEllipse({30, 40, -20, -10});
    EXPECT_EQ(path.boundingBox(), CGRect(10, 30, 20, 10));
    path.addRoundedRect({0, 0, 8, 8}, 100);
    EXPECT_EQ(path.boundingBox(), CGRect(0, 0, 30, 40));
    path.lineTo({std::nan(""), 0});
    EXPECT_TRUE(path.boundingBox().isNull());
}

TEST(Path, LeavesOutNullRectanglesAndRadii) {
    Path path, plain;
    path.addRect(CGRect::null());
    path.addEllipse(CGRect::null());
    path.addRoundedRect(CGRect::null(), 3);
    path.close();
    EXPECT_TRUE(path.isEmpty());
    plain.addRect({1, 2, 30, 40});
    for (const CGFloat radius : {0.0, -3.0, std::nan("")}) {
        Path rounded;
        rounded.addRoundedRect({1, 2, 30, 40}, radius);
        EXPECT_TRUE(std::ranges::equal(rounded.points(), plain.points())) << radius;
    }
}

TEST(Path, StartsWhereItsFirstSegmentLeads) {
    const auto check = [](const char* name, auto add) {
        Path path;
        add(path);
        EXPECT_EQ(path.verbs().front(), Path::Verb::move) << name;
        EXPECT_EQ(path.points().front(), (CGPoint{3, 4})) << name;
        EXPECT_EQ(path.points()[1], (CGPoint{3, 4})) << name;
    };
    check("line", [](Path& path) { path.lineTo({3, 4}); });
    check("quadratic", [](Path& path) { path.quadCurveTo({3, 4}, {9, 9}); });
    check("cubic", [](Path& path) { path.curveTo({3, 4}, {5, 6}, {9, 9}); });
    check("quarter", [](Path& path) { path.quarterTo({3, 4}, {9, 9}); });
}

TEST(Path, ContinuesAtTheStartOfAClosedContour) {
    Path path;
    path.addRect({1, 2, 3, 4});
    path.lineTo({9, 9});
    EXPECT_EQ(path.points()[path.points().size() - 2], (CGPoint{1, 2}));

    const std::size_t verbs = path.verbs().size();
    path.addPath(path);
    EXPECT_EQ(path.verbs().size(), 2 * verbs);
    path.close();
    path.lineTo({0, 0});
    EXPECT_EQ(path.points()[path.points().size() - 2], (CGPoint{1, 2}));
}

}  // namespace
}  // namespace pictal
