#include "PictalCore/Platform/Graphics/Pixels/RGBNumbers.h"

#include <gtest/gtest.h>

namespace pictal::detail {
namespace {

using Color = std::array<double, 3>;

TEST(RGBNumbers, CarryColoursByTheirPublishedMatrices) {
    // By a calculation apart, from the matrices that CSS Color 4 publishes; 8-bit levels.
    struct Case {
        const char* name;
        Color color;
        RGBNumbers from;
        RGBNumbers to;
        Color want;
    };
    for (const auto& [name, color, from, to, want] : {
             Case{"red in P3", {255, 0, 0}, standardRGB, displayP3, {233.959, 51.073, 35.333}},
             {"P3's red is cut", {255, 0, 0}, displayP3, standardRGB, {255, 0, 0}},
             {"a muted P3", {200, 100, 50}, displayP3, standardRGB, {214.901, 92.610, 30.952}},
             {"green in Adobe RGB", {0, 255, 0}, standardRGB, adobeRGB1998, {144.068, 255, 59.778}},
             {"Adobe RGB's green is cut", {0, 255, 0}, adobeRGB1998, standardRGB, {0, 255, 0}},
             {"grey keeps its light",
              {128, 128, 128},
              standardRGB,
              adobeRGB1998,
              {126.994, 126.994, 126.994}},
             {"P3 in Adobe RGB",
              {100, 150, 200},
              displayP3,
              adobeRGB1998,
              {108.138, 150.251, 201.485}},
             {"white stays white", {255, 255, 255}, adobeRGB1998, displayP3, {255, 255, 255}},
         }) {
        Color unit = color;
        for (double& component : unit)
            component /= 255;
        const Color have = converted(unit, from, to);
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(have[i] * 255, want[i], 0.005) << name << ", component " << i;
    }
}

TEST(RGBNumbers, TakeColoursBackThatTheOtherSpaceHolds) {
    for (const auto& numbers : {displayP3, adobeRGB1998})
        for (const Color& color :
             {Color{0.3, 0.5, 0.4}, Color{0, 0, 0.02}, Color{0.9, 0.91, 0.1}}) {
            const Color back =
                converted(converted(color, standardRGB, numbers), numbers, standardRGB);
            for (std::size_t i = 0; i < 3; ++i)
                EXPECT_NEAR(back[i], color[i], 1e-6);
        }
}

}  // namespace
}  // namespace pictal::detail
