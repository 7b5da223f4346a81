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

/// Runs a kernel at every width and offset and compares each byte with the formula; bytes around
/// the row must stay.
void expectFormula(const char* name, double tolerance, const Formula& formula,
                   const std::function<void(std::span<std::uint32_t>, std::span<std::uint32_t>,
                                            std::span<std::uint8_t>)>& kernel) {
    for (std::size_t width = 1; width <= 130; ++width) {
        const std::size_t offset = width % 16;
        Rows rows(width + 32, static_cast<unsigned>(width));
        const auto before = rows.below;
        kernel(std::span(rows.below).subspan(offset, width),
               std::span(rows.above).subspan(offset, width),
               std::span(rows.coverage).subspan(offset, width));
        for (std::size_t i = 0; i < rows.below.size(); ++i) {
            const bool inside = i >= offset && i < offset + width;
            for (int c = 0; c < 4; ++c) {
                const double want =
                    inside ? formula(component(before[i], c), component(rows.above[i], c),
                                     component(before[i], 3) / 255,
                                     component(rows.above[i], 3) / 255, rows.coverage[i] / 255.0)
                           : component(before[i], c);
                ASSERT_NEAR(component(rows.below[i], c), want, inside ? tolerance : 0)
                    << name << ": width " << width << ", offset " << offset << ", pixel " << i
                    << ", component " << c;
            }
        }
    }
}

TEST(Blend, KernelsFollowTheirFormulas) {
    // One rounding is at most 0.5 off; where the coverage is rounded before, another 0.5.
    expectFormula(
        "copyPixels", 0.5,
        [](double below, double above, double, double, double coverage) {
            return below * (1 - coverage) + above * coverage;
        },
        [](auto row, auto source, auto coverage) { copyPixels(row, source, coverage); });
    expectFormula(
        "eraseCovered", 0.5,
        [](double below, double, double, double, double coverage) {
            return below * (1 - coverage);
        },
        [](auto row, auto, auto coverage) { eraseCovered(row, 255, coverage); });
    expectFormula(
        "blendPixels", 0.5,
        [](double below, double above, double, double aboveAlpha, double) {
            return above + below * (1 - aboveAlpha);
        },
        [](auto row, auto source, auto) { blendPixels(row, source); });
    expectFormula(
        "blendPixels with coverage", 1.5,
        [](double below, double above, double, double aboveAlpha, double coverage) {
            return above * coverage + below * (1 - aboveAlpha * coverage);
        },
        [](auto row, auto source, auto coverage) { blendPixels(row, source, coverage); });
    // White, so that one formula serves all four components.
    const std::uint32_t white = pixelOf(255, 255, 255, 180);
    expectFormula(
        "blendColor", 0.5,
        [&](double below, double, double, double, double) {
            return below + (255 - below) * (180 / 255.0);
        },
        [&](auto row, auto, auto) { blendColor(row, white); });
    expectFormula(
        "blendColor with coverage", 1,
        [&](double below, double, double, double, double coverage) {
            return below + (255 - below) * (180 / 255.0) * coverage;
        },
        [&](auto row, auto, auto coverage) { blendColor(row, white, coverage); });
}

TEST(Blend, OpaqueStaysOpaqueAndNothingExceedsItsAlpha) {
    Rows rows(4096, 7);
    for (std::uint32_t& pixel : rows.below)
        pixel |= 0xFF000000;
    blendPixels(rows.below, rows.above, rows.coverage);
    blendColor(rows.below, pixelOf(1, 2, 3, 77), rows.coverage);
    for (const std::uint32_t pixel : rows.below)
        ASSERT_EQ(alphaOf(pixel), 255U);

    Rows translucent(4096, 8);
    blendPixels(translucent.below, translucent.above, translucent.coverage);
    copyPixels(translucent.below, translucent.above, translucent.coverage);
    eraseCovered(translucent.below, 255, translucent.coverage);
    for (const std::uint32_t pixel : translucent.below) {
        ASSERT_LE(redOf(pixel), alphaOf(pixel));
        ASSERT_LE(blueOf(pixel), alphaOf(pixel));
    }
}

TEST(Blend, AnOpaqueColourIsItselfAndNoCoverageIsNothing) {
    Rows rows(64, 9);
    const auto before = rows.below;
    const std::vector<std::uint8_t> none(64, 0);
    blendColor(rows.below, pixelOf(9, 8, 7, 255), none);
    blendPixels(rows.below, rows.above, none);
    EXPECT_EQ(rows.below, before);
    blendColor(rows.below, pixelOf(9, 8, 7, 255));
    EXPECT_EQ(rows.below, std::vector<std::uint32_t>(64, pixelOf(9, 8, 7, 255)));
}

}  // namespace
}  // namespace pictal::kernels
