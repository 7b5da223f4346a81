#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Kernels/Blend.h"

#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::kernels {
namespace {

TEST(Arithmetic, DivisionBy255IsExactlyRounded) {
    for (std::uint32_t x = 0; x <= 65025; ++x)
        ASSERT_EQ(divideBy255(x), (x + 127) / 255) << x;
}

TEST(Arithmetic, UnpremultipliedPixelsPremultiplyToTheSameBytes) {
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha)
        for (std::uint32_t component = 0; component <= alpha; ++component) {
            const std::uint32_t pixel = pixelOf(component, component / 2, 0, alpha);
            ASSERT_EQ(premultiplied(unpremultiplied(pixel)), pixel);
        }
    EXPECT_EQ(unpremultiplied(pixelOf(200, 50, 0, 100)), pixelOf(255, 128, 0, 100))
        << "a component above its alpha counts as the alpha";
}

/// The rows that a kernel works on, and what is around them.
struct Rows {
    std::vector<std::uint32_t> below, above;
    std::vector<std::uint8_t> coverage;

    Rows(std::size_t size, unsigned seed) : below(size), above(size), coverage(size) {
        std::mt19937 engine(seed);
        const auto random = [&] { return static_cast<std::uint32_t>(engine()); };
        const auto pixel = [&] {
            const std::uint32_t kind = random() % 4;
            const std::uint32_t alpha = kind == 0 ? 0 : kind == 1 ? 255 : random() % 256;
            return premultiplied(pixelOf(random() % 256, random() % 256, random() % 256, alpha));
        };
        for (std::size_t i = 0; i < size; ++i) {
            below[i] = pixel();
            above[i] = pixel();
            const std::uint32_t kind = random() % 3;
            coverage[i] = static_cast<std::uint8_t>(kind == 0 ? 0 : kind == 1 ? 255 : random());
        }
    }
};

double component(std::uint32_t pixel, int index) {
    return (pixel >> (8 * index)) & 255;
}

/// One component of one pixel by the formula, before rounding.
using Formula = std::function<double(double below, double above, double belowAlpha,
                                     double aboveAlpha, double coverage)>;

using Row = BlendKernels::Row;
using Pixels = BlendKernels::Pixels;
using Coverage = BlendKernels::Coverage;
using Kernel = std::function<void(const BlendKernels&, Row, Pixels, Coverage)>;

/// Runs a kernel at every level, width and offset and compares each byte with the formula, and the
/// levels with each other; bytes around the row must stay.
void expectFormula(const char* name, double tolerance, const Formula& formula,
                   const Kernel& kernel) {
    for (std::size_t width = 1; width <= 130; ++width) {
        const std::size_t offset = width % 16;
        const Rows before(width + 32, static_cast<unsigned>(width));
        std::vector<std::uint32_t> plain;
        for (const Level level : allLevels) {
            if (!isAvailable(level)) continue;
            Rows rows = before;
            kernel(blendKernels(level), std::span(rows.below).subspan(offset, width),
                   std::span(rows.above).subspan(offset, width),
                   std::span(rows.coverage).subspan(offset, width));
            if (level == Level::plain) plain = rows.below;
            ASSERT_EQ(rows.below, plain)
                << name << ": width " << width << ", level " << static_cast<int>(level);
        }
        for (std::size_t i = 0; i < plain.size(); ++i) {
            const bool inside = i >= offset && i < offset + width;
            for (int c = 0; c < 4; ++c) {
                const double below = component(before.below[i], c);
                const double want = inside ? formula(below, component(before.above[i], c),
                                                     component(before.below[i], 3) / 255,
                                                     component(before.above[i], 3) / 255,
                                                     before.coverage[i] / 255.0)
                                           : below;
                ASSERT_NEAR(component(plain[i], c), want, inside ? tolerance : 0)
                    << name << ": width " << width << ", offset " << offset << ", pixel " << i
                    << ", component " << c;
            }
        }
    }
}

TEST(Blend, KernelsFollowTheirFormulasAtEveryLevel) {
    // One rounding is at most 0.5 off; where the coverage is rounded before, another 0.5.
    // White, so that one formula serves all four components.
    const std::uint32_t white = pixelOf(255, 255, 255, 180);
    constexpr double alpha = 180 / 255.0;
    const auto mix = [](double below, double above, double weight) {
        return below * (1 - weight) + above * weight;
    };
    struct Case {
        const char* name;
        double tolerance;
        Formula formula;  // below, above, their alphas, coverage
        Kernel kernel;
    };
    for (const Case& c : {
             Case{"blendColor", 0.5,
                  [&](double b, double, double, double, double) { return mix(b, 255, alpha); },
                  [&](const auto& k, Row r, Pixels, Coverage) { k.blendColor(r, white); }},
             Case{
                 "blendColorCovered", 1,
                 [&](double b, double, double, double, double w) { return mix(b, 255, alpha * w); },
                 [&](const auto& k, Row r, Pixels, Coverage w) {
                     k.blendColorCovered(r, white, w);
                 }},
             Case{"blendPixels", 0.5,
                  [](double b, double a, double, double aa, double) { return a + b * (1 - aa); },
                  [](const auto& k, Row r, Pixels s, Coverage) { k.blendPixels(r, s); }},
             Case{
                 "blendPixelsCovered", 1.5,
                 [](double b, double a, double, double aa, double w) {
                     return a * w + b * (1 - aa * w);
                 },
                 [](const auto& k, Row r, Pixels s, Coverage w) { k.blendPixelsCovered(r, s, w); }},
             Case{"copyPixelsCovered", 0.5,
                  [&](double b, double a, double, double, double w) { return mix(b, a, w); },
                  [](const auto& k, Row r, Pixels s, Coverage w) { k.copyPixelsCovered(r, s, w); }},
             Case{"copyColorCovered", 0.5,
                  [&](double b, double, double, double, double w) { return mix(b, 9, w); },
                  [](const auto& k, Row r, Pixels, Coverage w) {
                      k.copyColorCovered(r, 0x09090909, w);
                  }},
             Case{"erase", 0.5,
                  [&](double b, double, double, double, double) { return b * (1 - alpha); },
                  [](const auto& k, Row r, Pixels, Coverage) { k.erase(r, 180); }},
             Case{"eraseCovered", 1,
                  [&](double b, double, double, double, double w) { return b * (1 - alpha * w); },
                  [](const auto& k, Row r, Pixels, Coverage w) { k.eraseCovered(r, 180, w); }},
             Case{"erasePixels", 0.5,
                  [](double b, double, double, double aa, double) { return b * (1 - aa); },
                  [](const auto& k, Row r, Pixels s, Coverage) { k.erasePixels(r, s); }},
             Case{
                 "erasePixelsCovered", 1,
                 [](double b, double, double, double aa, double w) { return b * (1 - aa * w); },
                 [](const auto& k, Row r, Pixels s, Coverage w) { k.erasePixelsCovered(r, s, w); }},
         })
        expectFormula(c.name, c.tolerance, c.formula, c.kernel);
}

TEST(Blend, CoverageIsWeighedExactlyAtEveryLevel) {
    std::vector<std::uint8_t> every(256 * 256), factors(256 * 256);
    for (std::size_t i = 0; i < every.size(); ++i) {
        every[i] = static_cast<std::uint8_t>(i);
        factors[i] = static_cast<std::uint8_t>(i / 256);
    }
    for (const Level level : allLevels) {
        if (!isAvailable(level)) continue;
        auto product = every;
        blendKernels(level).multiplyCoverage(product, factors);
        for (std::size_t i = 0; i < every.size(); ++i)
            ASSERT_EQ(product[i], (every[i] * factors[i] + 127) / 255) << i;
        auto scaled = std::vector(every.begin(), every.begin() + 256);
        blendKernels(level).scaleCoverage(scaled, 77);
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
