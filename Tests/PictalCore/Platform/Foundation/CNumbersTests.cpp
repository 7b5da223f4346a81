#include "PictalCore/Platform/Foundation/CNumbers.h"

#include <cmath>
#include <limits>
#include <string_view>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using namespace std::string_view_literals;

TEST(CNumbers, TakesWhatTheConversionTakes) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const std::pair<std::string_view, double> cases[] = {
        {"12", 12},   {"+.5", 0.5},      {"-2.5e3", -2500},        {"0x1.8p1", 3},
        {" 7", 7},    {"inf", infinite}, {"-Infinity", -infinite}, {"1e999", infinite},
        {"1e-999", 0}};
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(CNumbers::toDouble(text), value) << text;
        EXPECT_EQ(CNumbers::toFloat(text), static_cast<float>(value)) << text;
    }
    EXPECT_TRUE(std::isnan(CNumbers::toFloat("nan").value()));
    // Rounded once: by way of double precision it would be 1.
    EXPECT_GT(CNumbers::toFloat("1.00000005960464477540").value(), 1);
    EXPECT_EQ(CNumbers::toFloat("1e39"), std::numeric_limits<float>::infinity());
}

TEST(CNumbers, AllOfTheTextHasToBeTheNumber) {
    for (const std::string_view text :
         {""sv, " "sv, "."sv, "1 "sv, "1,5"sv, "0.5 # half"sv, "1\0"sv, "\0"sv, "1\0002"sv, "e5"sv})
        EXPECT_EQ(CNumbers::toDouble(text), std::nullopt) << text;
}

}  // namespace
}  // namespace pictal
