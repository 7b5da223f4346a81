#include "PictalCore/Styling/RGBAColor.h"
#include "Tests/Support/JSONChecks.h"

#include <cmath>
#include <limits>

namespace pictal {
namespace {

constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();

TEST(RGBAColor, InitialiserClampsAndAssignmentDoesNot) {
    RGBAColor color(1.5, -0.2, 0.5, infinity);
    EXPECT_EQ(color.cgColor(), (CGColor{1, 0, 0.5, 1}));
    color.red = 7;
    EXPECT_EQ(color.cgColor().red, 7);
    EXPECT_TRUE(std::isnan(RGBAColor(0, 0, 0, nan).alpha));
    EXPECT_FALSE(std::signbit(RGBAColor(-0.0, 0, 0, 1).red));
}

TEST(RGBAColor, DecodingStoresWhatItReads) {
    const auto color = decodeJSON<RGBAColor>(
        R"({"red": 1.5, "green": -0.2, "blue": 0.5, "alpha": 2, "name": "none"})");
    ASSERT_TRUE(color);
    EXPECT_EQ(color->cgColor(), (CGColor{1.5, -0.2, 0.5, 2}));
    expectRoundTrip(*color, "beyond 0...1");
}

TEST(RGBAColor, NeedsItsFourNumbers) {
    using Kind = DecodingError::Kind;
    const std::string good = R"({"red": 0, "green": 1, "blue": 0.5, "alpha": 1})";
    expectDecodingError<RGBAColor>(patched(good, "alpha", "opacity"), Kind::keyNotFound,
                                   "The key \"alpha\" is missing.", "other key");
    expectDecodingError<RGBAColor>(patched(good, "0.5", "null"), Kind::valueNotFound,
                                   "blue: Expected a value but found null.", "null");
    expectDecodingError<RGBAColor>(patched(good, "0.5", "true"), Kind::typeMismatch,
                                   "blue: Expected a number but found a boolean.", "boolean");
    const auto refused = encodeJSON(RGBAColor(0, 0, nan, 1));
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().codingPath, std::vector<std::string>{"blue"});
}

}  // namespace
}  // namespace pictal
