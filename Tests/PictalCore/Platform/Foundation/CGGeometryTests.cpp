#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

TEST(CGRect, ReadsTheStandardisedRectangle) {
    constexpr CGRect rect{50, 40, -20, -10};
    static_assert(rect.minX() == 30 && rect.maxX() == 50 && rect.midX() == 40);
    static_assert(rect.minY() == 30 && rect.maxY() == 40 && rect.midY() == 35);
    static_assert(rect.width() == 20 && rect.height() == 10 && rect.size.width == -20);
    EXPECT_EQ(rect, CGRect(30, 30, 20, 10));
    EXPECT_EQ(rect.standardized().size.width, 20);
}

TEST(CGRect, IntegralRoundsOutward) {
    const auto integral = [](const CGRect& rect) { return text(rect.integral()); };
    EXPECT_EQ(integral({5.2, 20.6, 5.2, 9.5}), "(5, 20, 6, 11)");
    EXPECT_EQ(integral({-1.5, -0.5, 1, 0.25}), "(-2, -1, 2, 1)");
    EXPECT_EQ(integral({3.5, 3.5, -2, -2}), "(1, 1, 3, 3)");
    EXPECT_EQ(integral({0.5, 0.5, 0, 0}), "(0, 0, 1, 1)");
    EXPECT_EQ(integral({2, 2, 0, 0}), "(2, 2, 0, 0)");
    EXPECT_EQ(integral({1e300, 0.5, 1e300, 0.25}), "(1e+300, 0, 1e+300, 1)");
    EXPECT_EQ(integral(CGRect::null()), "null");
}

TEST(CGRect, IntersectionKeepsTheCommonPart) {
    const auto check = [](const CGRect& a, const CGRect& b, const char* want) {
        EXPECT_EQ(text(a.intersection(b)), want);
        EXPECT_EQ(text(b.intersection(a)), want) << "swapped";
    };
    check({0, 0, 10, 10}, {5, 6, 10, 10}, "(5, 6, 5, 4)");
    check({10, 10, -10, -10}, {5, 6, 10, 10}, "(5, 6, 5, 4)");
    check({0, 0, 10, 10}, {10, 0, 5, 10}, "(10, 0, 0, 10)");
    check({0, 0, 10, 10}, {11, 0, 5, 10}, "null");
    check({nan, 0, 10, 10}, {5, 0, nan, 10}, "null");
    check(CGRect::null(), {0, 0, 1, 1}, "null");
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
    constexpr CGRect rect{10, 10, -10, -10};
    EXPECT_TRUE(rect.contains({0, 0}));
    EXPECT_FALSE(rect.contains({10, 5}));
    EXPECT_FALSE(rect.contains({5, 10}));
    EXPECT_FALSE(rect.contains({nan, 5}));
    EXPECT_FALSE(CGRect::null().contains({infinity, infinity}));
}

}  // namespace pictal
