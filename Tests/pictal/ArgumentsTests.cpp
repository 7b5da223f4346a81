#include "pictal/Arguments.h"
#include "pictal/Color.h"

#include <gtest/gtest.h>

namespace pictal::program {

TEST(Arguments, Numbers) {
    const std::pair<const char*, double> numbers[] = {{"12", 12},    {"-.5", -0.5}, {"+3", 3},
                                                      {"1e3", 1000}, {"0", 0},      {"5.", 5}};
    for (const auto& [text, want] : numbers)
        EXPECT_EQ(parseNumber(text).value_or(-99), want) << text;
    for (const char* text : {"", "abc", "12px", "1,5", "inf", "nan", "-", "1e999", " 1", "0x10"}) {
        const auto number = parseNumber(text);
        ASSERT_FALSE(number) << text;
        EXPECT_EQ(number.error().message, "\"" + std::string(text) + "\" is not a number");
    }
}

TEST(Arguments, Points) {
    EXPECT_EQ(*parsePoint("10,20.5"), (CGPoint{10, 20.5}));
    EXPECT_EQ(*parsePoint("-5, -.5"), (CGPoint{-5, -0.5}));
    EXPECT_EQ(*parsePoint("3 4"), (CGPoint{3, 4}));
    for (const char* text : {"", "10", "10,", ",10", "1,2,3", "1,2 3,4", "a,b"})
        EXPECT_FALSE(parsePoint(text)) << text;
    EXPECT_EQ(*parsePoints(" 1,2  3,4\n-5,.5 "), (std::vector<CGPoint>{{1, 2}, {3, 4}, {-5, 0.5}}));
    EXPECT_EQ(*parsePoints(""), std::vector<CGPoint>());
    EXPECT_EQ(parsePoints("1,2 3;4 5,6").error().message,
              "\"3;4\" is not a point; write points as x,y x,y");
    EXPECT_FALSE(parsePoints("1,2,3 4"));
}

TEST(Arguments, RectanglesAndLines) {
    // Compared by what was written, not by the area that is covered.
    const auto check = [](const char* text, CGRect want) {
        const auto have = parseRect(text);
        ASSERT_TRUE(have) << text;
        EXPECT_EQ(have->origin, want.origin) << text;
        EXPECT_EQ(have->size, want.size) << text;
    };
    check("1,2,3,4", {1, 2, 3, 4});
    check("-1.5, .5 ,-3,4e1", {-1.5, 0.5, -3, 40});
    check("30x40+1+2", {1, 2, 30, 40});
    check("30x40+-1+2.5", {-1, 2.5, 30, 40});
    check("-1,2 30x40", {-1, 2, 30, 40});
    for (const char* text : {"", "1,2,3", "1,2,3,", "1,2,3,4,5", "1 2 3 4", "1,2 3,4", "30x40",
                             "-3x4+1+2", "1,2 3x-4", "1,2,3,inf", "30x40+1,2", "1,2,3,4 "})
        EXPECT_FALSE(parseRect(text)) << text;
    const std::pair<CGPoint, CGPoint> line({1, -2}, {3.5, 4});
    EXPECT_EQ(*parseLine("1,-2,3.5,4"), line);
    EXPECT_EQ(*parseLine("1,-2  3.5,4"), line);
    for (const char* text : {"1,2", "1,2,3", "1,2 3", "1 2 3 4", "1,2;3,4", "1,2,3,4,5"})
        EXPECT_FALSE(parseLine(text)) << text;
}

TEST(Arguments, ColoursAsCSSWritesThem) {
    const auto check = [](const char* text, double red, double green, double blue, double alpha) {
        const auto color = parseColor(text);
        ASSERT_TRUE(color) << text;
        EXPECT_NEAR(color->red, red, 1e-12) << text;
        EXPECT_NEAR(color->green, green, 1e-12) << text;
        EXPECT_NEAR(color->blue, blue, 1e-12) << text;
        EXPECT_NEAR(color->alpha, alpha, 1e-12) << text;
    };
    check("#f80", 1, 136 / 255.0, 0, 1);
    check("#F808", 1, 136 / 255.0, 0, 136 / 255.0);
    check("#336699", 0.2, 0.4, 0.6, 1);
    check("#33669980", 0.2, 0.4, 0.6, 128 / 255.0);
    check("rgb(51, 102, 153)", 0.2, 0.4, 0.6, 1);
    check("rgb(51 102 153 / 50%)", 0.2, 0.4, 0.6, 0.5);
    check("rgba(20%,40%,60%,.5)", 0.2, 0.4, 0.6, 0.5);
    check("hsl(210, 50%, 40%)", 0.2, 0.4, 0.6, 1);
    check("hsl(-150deg 50% 40%)", 0.2, 0.4, 0.6, 1);
    check("RebeccaPurple", 0.4, 0.2, 0.6, 1);
    check(" transparent ", 0, 0, 0, 0);
    check("tomato", 1, 99 / 255.0, 71 / 255.0, 1);
    check("yellowgreen", 154 / 255.0, 205 / 255.0, 50 / 255.0, 1);
    for (const char* text : {"", "#", "#12", "#12345", "#1234567", "#ggg", "rgb(1,2)", "rgb(1,2,3",
                             "rgb(1,2,3,4,5)", "rgb(a,b,c)", "hsl(1,2)", "cmyk(1,2,3)", "reddish"})
        EXPECT_FALSE(parseColor(text)) << text;
}

TEST(Arguments, WholeNumbersOfAnOptionAreDecimalAndInRange) {
    const auto read = [](std::string text, std::int64_t least, std::int64_t most) {
        const std::string refusal = wholeNumber(least, most)(text);
        return refusal.empty() ? text : refusal;
    };
    EXPECT_EQ(read("010", 1, 10), "10");
    EXPECT_EQ(read("-3", -3, 10), "-3");
    EXPECT_EQ(read("9223372036854775807", 0, INT64_MAX), "9223372036854775807");
    for (const char* text : {"0", "11", "0x2", "2.5", "1e0", "", " 2", "9223372036854775808"})
        EXPECT_EQ(read(text, 1, 10),
                  "\"" + std::string(text) + "\" is not a whole number from 1 to 10");
    EXPECT_EQ(read("0", 1, INT64_MAX), "\"0\" is not a whole number from 1 up");
}

}  // namespace pictal::program
