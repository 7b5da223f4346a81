#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
#include "PictalCore/Platform/Graphics/Kernels/Blend.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

TEST(Arithmetic, DivisionBy255IsExactlyRounded) {
    for (std::uint32_t x = 0; x <= 65025; ++x)
        ASSERT_EQ(divideBy255(x), (x + 127) / 255) << x;
}

/// The rows that a kernel works on, and what is around them.
struct Rows {
    std::vector<std::uint32_t> below, above;
    std::vector<std::uint8_t> coverage;

    Rows(std::size_t size, unsigned seed) {
        std::mt19937 engine(seed);
        const auto level = [&] {  // 0 and 255 often
            const auto kind = engine() % 4;
            return static_cast<std::uint32_t>(kind < 2 ? kind * 255 : engine() % 256);
        };
        const auto pixel = [&] {
            return premultiplied(static_cast<std::uint32_t>(engine() & 0xFFFFFF) | level() << 24);
        };
        for (std::size_t i = 0; i < size; ++i) {
            below.push_back(pixel());
            above.push_back(pixel());
            coverage.push_back(static_cast<std::uint8_t>(level()));
        }
    }
};

using Row = BlendKernels::Row;
using Pixels = BlendKernels::Pixels;
using Coverage = BlendKernels::Coverage;

constexpr std::uint32_t ink = 0xB4FFFFFF;  // white at alpha 180: one formula for all components
constexpr double inkAlpha = 180 / 255.0;

void call(auto kernel, std::uint32_t value, Row row, Pixels source, Coverage coverage) {
    if constexpr (requires { kernel(row, value); }) kernel(row, value);
    if constexpr (requires { kernel(row, source); }) kernel(row, source);
    if constexpr (requires { kernel(row, value, coverage); }) kernel(row, value, coverage);
    if constexpr (requires { kernel(row, source, coverage); }) kernel(row, source, coverage);
}

/// What a formula computes one component from, before rounding.
struct In {
    double below, above, aboveAlpha, coverage;
};

double mix(double below, double above, double weight) {
    return below * (1 - weight) + above * weight;
}

/// Runs a kernel for every target, width and offset and compares each byte with the formula, and
/// the targets with each other; bytes around the row must stay.
void expectFormula(const char* name, auto kernel, std::uint32_t value, double tolerance,
                   auto formula) {
    for (std::size_t width = 1; width <= 130; ++width) {
        const std::size_t offset = width % 16;
        const Rows before(width + 32, static_cast<unsigned>(width));
        std::vector<std::uint32_t> plain;
        for (const Target target : allTargets) {
            if (!isAvailable(target)) continue;
            Rows rows = before;
            call(blendKernels(target).*kernel, value, std::span(rows.below).subspan(offset, width),
                 std::span(rows.above).subspan(offset, width),
                 std::span(rows.coverage).subspan(offset, width));
            if (target == Target::plain) plain = rows.below;
            ASSERT_EQ(rows.below, plain)
                << name << ": width " << width << ", target " << static_cast<int>(target);
        }
        for (std::size_t i = 0; i < plain.size(); ++i)
            for (int c = 0; c < 4; ++c) {
                const auto component = [&](std::uint32_t pixel) { return pixel >> (8 * c) & 255; };
                const bool inside = i >= offset && i < offset + width;
                const double below = component(before.below[i]);
                const In in{below, double(component(before.above[i])),
                            alphaOf(before.above[i]) / 255.0, before.coverage[i] / 255.0};
                ASSERT_NEAR(component(plain[i]), inside ? formula(in) : below,
                            inside ? tolerance : 0)
                    << name << ": width " << width << ", offset " << offset << ", pixel " << i
                    << ", component " << c;
            }
    }
}

TEST(Blend, KernelsFollowTheirFormulasAtEveryTarget) {
    // One rounding is at most 0.5 off; where the coverage is rounded before, another 0.5.
    using K = BlendKernels;
    expectFormula("blendColor", &K::blendColor, ink, 0.5,
                  [](In i) { return mix(i.below, 255, inkAlpha); });
    expectFormula("blendColorCovered", &K::blendColorCovered, ink, 1,
                  [](In i) { return mix(i.below, 255, inkAlpha * i.coverage); });
    expectFormula("blendPixels", &K::blendPixels, 0, 0.5,
                  [](In i) { return i.above + i.below * (1 - i.aboveAlpha); });
    expectFormula("blendPixelsCovered", &K::blendPixelsCovered, 0, 1.5, [](In i) {
        return i.above * i.coverage + i.below * (1 - i.aboveAlpha * i.coverage);
    });
    expectFormula("copyPixelsCovered", &K::copyPixelsCovered, 0, 0.5,
                  [](In i) { return mix(i.below, i.above, i.coverage); });
    expectFormula("copyColorCovered", &K::copyColorCovered, 0x09090909, 0.5,
                  [](In i) { return mix(i.below, 9, i.coverage); });
    expectFormula("erase", &K::erase, 180, 0.5, [](In i) { return i.below * (1 - inkAlpha); });
    expectFormula("eraseCovered", &K::eraseCovered, 180, 1,
                  [](In i) { return i.below * (1 - inkAlpha * i.coverage); });
    expectFormula("erasePixels", &K::erasePixels, 0, 0.5,
                  [](In i) { return i.below * (1 - i.aboveAlpha); });
    expectFormula("erasePixelsCovered", &K::erasePixelsCovered, 0, 1,
                  [](In i) { return i.below * (1 - i.aboveAlpha * i.coverage); });
}

TEST(Blend, CoverageIsWeighedExactlyAtEveryTarget) {
    std::vector<std::uint8_t> every(256 * 256), factors(256 * 256);
    for (std::size_t i = 0; i < every.size(); ++i) {
        every[i] = static_cast<std::uint8_t>(i);
        factors[i] = static_cast<std::uint8_t>(i / 256);
    }
    for (const Target target : allTargets) {
        if (!isAvailable(target)) continue;
        auto product = every;
        blendKernels(target).multiplyCoverage(product, factors);
        for (std::size_t i = 0; i < every.size(); ++i)
            ASSERT_EQ(product[i], (every[i] * factors[i] + 127) / 255) << i;
        auto scaled = std::vector(every.begin(), every.begin() + 256);
        blendKernels(target).scaleCoverage(scaled, 77);
        for (std::size_t i = 0; i < scaled.size(); ++i)
            ASSERT_EQ(scaled[i], (i * 77 + 127) / 255);
    }
}

TEST(Blend, OpaqueStaysOpaqueAndNothingExceedsItsAlpha) {
    Rows rows(4096, 7);
    for (std::uint32_t& pixel : rows.below)
        pixel |= 0xFF000000;
    const BlendKernels& kernels = blendKernels();
    kernels.blendPixelsCovered(rows.below, rows.above, rows.coverage);
    kernels.blendColorCovered(rows.below, pixelOf(1, 2, 3, 77), rows.coverage);
    for (const std::uint32_t pixel : rows.below)
        ASSERT_EQ(alphaOf(pixel), 255U);

    Rows translucent(4096, 8);
    kernels.blendPixelsCovered(translucent.below, translucent.above, translucent.coverage);
    kernels.copyPixelsCovered(translucent.below, translucent.above, translucent.coverage);
    kernels.eraseCovered(translucent.below, 255, translucent.coverage);
    for (const std::uint32_t pixel : translucent.below) {
        ASSERT_LE(redOf(pixel), alphaOf(pixel));
        ASSERT_LE(blueOf(pixel), alphaOf(pixel));
    }
}

TEST(Blend, AnOpaqueColourIsItselfAndNoCoverageIsNothing) {
    Rows rows(64, 9);
    const auto before = rows.below;
    const std::vector<std::uint8_t> none(64, 0);
    blendKernels().blendColorCovered(rows.below, pixelOf(9, 8, 7, 255), none);
    blendKernels().blendPixelsCovered(rows.below, rows.above, none);
    EXPECT_EQ(rows.below, before);
    blendKernels().blendColor(rows.below, pixelOf(9, 8, 7, 255));
    EXPECT_EQ(rows.below, std::vector<std::uint32_t>(64, pixelOf(9, 8, 7, 255)));
}

}  // namespace
}  // namespace pictal::kernels
