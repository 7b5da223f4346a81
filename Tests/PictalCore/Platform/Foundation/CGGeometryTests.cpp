#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();

TEST(CGRect, ReadsTheStandardisedRectangle) {
    constexpr CGRect rect{50, 40, -20, -10};
    static_assert(rect.minX() == 30 && rect.maxX() == 50 && rect.midX() == 40);
    static_assert(rect.minY() == 30 && rect.maxY() == 40 && rect.midY() == 35);
    static_assert(rect.width() == 20 && rect.height() == 10 && rect.size.width == -20);
    EXPECT_EQ(rect, CGRect(30, 30, 20, 10));
    EXPECT_EQ(rect.standardized().size.width, 20);
}

TEST(CGRect, IntegralRoundsOutward) {
    struct Case {
        const char* name;
        CGRect rect, want;
    };
    for (const Case& c : {Case{"fractions", {5.2, 20.6, 5.2, 9.5}, {5, 20, 6, 11}},
                          Case{"negative coordinates", {-1.5, -0.5, 1, 0.25}, {-2, -1, 2, 1}},
                          Case{"negative size", {3.5, 3.5, -2, -2}, {1, 1, 3, 3}},
                          Case{"whole", {1, 2, 3, 4}, {1, 2, 3, 4}},
                          Case{"empty between", {0.5, 0.5, 0, 0}, {0, 0, 1, 1}},
                          Case{"empty on the grid", {2, 2, 0, 0}, {2, 2, 0, 0}},
                          Case{"huge", {1e300, 0.5, 1e300, 0.25}, {1e300, 0, 1e300, 1}},
                          Case{"null", CGRect::null(), CGRect::null()}})
        EXPECT_EQ(c.rect.integral(), c.want) << c.name;
}

TEST(CGRect, IntersectionKeepsTheCommonPart) {
    struct Case {
        const char* name;
        CGRect a, b, want;
    };
    for (const Case& c : {Case{"overlap", {0, 0, 10, 10}, {5, 6, 10, 10}, {5, 6, 5, 4}},
                          Case{"unstandardised", {10, 10, -10, -10}, {5, 6, 10, 10}, {5, 6, 5, 4}},
                          Case{"inside", {0, 0, 10, 10}, {2, 3, 4, 5}, {2, 3, 4, 5}},
                          Case{"touching", {0, 0, 10, 10}, {10, 0, 5, 10}, {10, 0, 0, 10}},
                          Case{"apart", {0, 0, 10, 10}, {11, 0, 5, 10}, CGRect::null()},
                          Case{"NaN", {nan, 0, 10, 10}, {5, 0, nan, 10}, CGRect::null()},
                          Case{"null", CGRect::null(), {0, 0, 1, 1}, CGRect::null()}}) {
        EXPECT_EQ(c.a.intersection(c.b), c.want) << c.name;
        EXPECT_EQ(c.b.intersection(c.a), c.want) << c.name << ", swapped";
    }
}

TEST(CGRect, NullIsNothing) {
    constexpr CGRect rect{1, 2, 3, 4};
    EXPECT_EQ(CGRect::null().unionOf(rect), rect);
    EXPECT_EQ(rect.unionOf(CGRect::null()), rect);
    EXPECT_EQ(rect.unionOf({10, -2, 1, 1}), CGRect(1, -2, 10, 8));
    EXPECT_TRUE(CGRect::null().offsetBy(5, 5).isNull());
    EXPECT_TRUE(CGRect::null().insetBy(-5, -5).isNull());
    EXPECT_TRUE(rect.insetBy(1.6, 0).isNull());
    EXPECT_EQ(rect.insetBy(1.5, 1), CGRect(2.5, 3, 0, 2));
    EXPECT_TRUE(rect.insetBy(nan, 0).isNull());
    EXPECT_TRUE(CGRect(0, 0, nan, 1).isEmpty());
    EXPECT_NE(rect, CGRect::null());
}

TEST(CGRect, ContainmentIsHalfOpen) {
    constexpr CGRect rect{0, 0, 10, 10};
    EXPECT_TRUE(rect.contains({0, 0}));
    EXPECT_FALSE(rect.contains({10, 5}));
    EXPECT_FALSE(rect.contains({5, 10}));
    EXPECT_FALSE(rect.contains({nan, 5}));
    EXPECT_FALSE(CGRect::null().contains({infinity, infinity}));
    EXPECT_TRUE(CGRect(10, 10, -10, -10).contains({0, 0}));
}

}  // namespace
}  // namespace pictal
