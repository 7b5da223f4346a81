#include "PictalCore/Styling/RGBAColor.h"
#include "pictal/JSONOutput.h"

#include <limits>

#include <gtest/gtest.h>

namespace pictal::program {

TEST(JSONOutput, PutsDocumentsTogether) {
    const auto color = JSONText::of(RGBAColor(1, 0.5, 0, 1));
    ASSERT_TRUE(color);
    const JSONText document =
        JSONText::object({{"te\"xt", "a{,:[\\\"\n\xFF"},
                          {"whole", INT64_MIN},
                          {"flag", true},
                          {"none", nullptr},
                          {"list", JSONText::array({1, JSONText::array({}), JSONText::object({})})},
                          {"color", *color}});
    EXPECT_EQ(document.indented(), R"({
  "te\"xt": "a{,:[\\\"\n�",
  "whole": -9223372036854775808,
  "flag": true,
  "none": null,
  "list": [
    1,
    [],
    {}
  ],
  "color": {
    "red": 1.0,
    "green": 0.5,
    "blue": 0.0,
    "alpha": 1.0
  }
})");
    RGBAColor wrong(1, 0, 0, 1);
    wrong.red = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(JSONText::of(wrong));
}

}  // namespace pictal::program
