#include "PictalCore/Styling/RGBAColor.h"
#include "Tests/Support/JSONChecks.h"

#include <cmath>

namespace pictal {
namespace {

using enum DecodingError::Kind;

TEST(RGBAColor, InitialiserClampsAndDecodingDoesNot) {
    EXPECT_EQ(RGBAColor(1.5, -0.2, 0.5, HUGE_VAL).cgColor(), (CGColor{1, 0, 0.5, 1}));
    EXPECT_TRUE(std::isnan(RGBAColor(0, 0, 0, NAN).alpha));
    const auto color =
        decodeJSON<RGBAColor>(R"({"red": 1.5, "green": -0.2, "blue": 0.5, "alpha": 2, "x": 1})");
    ASSERT_TRUE(color);
    EXPECT_EQ(color->cgColor(), (CGColor{1.5, -0.2, 0.5, 2}));
    expectRoundTrip(*color);
}

TEST(RGBAColor, NeedsItsFourNumbers) {
    const std::string good = R"({"red": 0, "green": 1, "blue": 0.5, "alpha": 1})";
    expectDecodingErrors<RGBAColor>({
        {patched(good, "alpha", "a"), keyNotFound, R"(The key "alpha" is missing.)"},
        {patched(good, "0.5", "true"), typeMismatch,
         "blue: Expected a number but found a boolean."},
    });
    EXPECT_EQ(encodeJSON(RGBAColor(0, 0, NAN, 1)).error().codingPath,
              std::vector<std::string>{"blue"});
}

}  // namespace
}  // namespace pictal
