#include "PictalCore/Platform/Graphics/Kernels/Blend.h"

#include <algorithm>
#include <cstddef>

namespace pictal::kernels {

namespace {

using Row = BlendKernels::Row;
using Pixels = BlendKernels::Pixels;
using Coverage = BlendKernels::Coverage;
using MutableCoverage = std::span<std::uint8_t>;

/// Two 8-bit components, 16 bits apart, so that a multiplication serves both.
constexpr std::uint32_t evenBytes = 0x00FF00FF;

/// Each half / 255, exactly rounded; the quotients stand in the high bytes of the halves.
PICTAL_BODY constexpr std::uint32_t dividedHalves(std::uint32_t halves) {
    const std::uint32_t biased = halves + 0x00800080;
    return biased + ((biased >> 8) & evenBytes);
}

/// Each component: (from × (255 − weight) + to × weight) / 255.
PICTAL_BODY constexpr std::uint32_t mixed(std::uint32_t from, std::uint32_t to,
                                          std::uint32_t weight) {
    const std::uint32_t rest = 255 - weight;
    const std::uint32_t even = (from & evenBytes) * rest + (to & evenBytes) * weight;
    const std::uint32_t odd = ((from >> 8) & evenBytes) * rest + ((to >> 8) & evenBytes) * weight;
    return ((dividedHalves(even) >> 8) & evenBytes) | (dividedHalves(odd) & ~evenBytes);
}

PICTAL_BODY constexpr std::uint32_t scaled(std::uint32_t pixel, std::uint32_t factor) {
    const std::uint32_t even = (pixel & evenBytes) * factor;
    const std::uint32_t odd = ((pixel >> 8) & evenBytes) * factor;
    return ((dividedHalves(even) >> 8) & evenBytes) | (dividedHalves(odd) & ~evenBytes);
}

/// The product of two components / 255.
PICTAL_BODY constexpr std::uint32_t product(std::uint32_t a, std::uint32_t b) {
    return (dividedHalves(a * b) >> 8) & 255;
}

PICTAL_BODY constexpr std::uint32_t over(std::uint32_t below, std::uint32_t above) {
    return above + scaled(below, 255 - (above >> 24));
}

PICTAL_BODY void blendColorBody(Row row, std::uint32_t color) {
    const std::uint32_t alpha = color >> 24;
    const std::uint32_t ink = color | 0xFF000000;
    for (std::uint32_t& pixel : row)
        pixel = mixed(pixel, ink, alpha);
}

PICTAL_BODY void blendColorCoveredBody(Row row, std::uint32_t color, Coverage coverage) {
    const std::uint32_t alpha = color >> 24;
    const std::uint32_t ink = color | 0xFF000000;
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = mixed(row[i], ink, product(alpha, coverage[i]));
}

PICTAL_BODY void blendPixelsBody(Row row, Pixels source) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = over(row[i], source[i]);
}

PICTAL_BODY void blendPixelsCoveredBody(Row row, Pixels source, Coverage coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = over(row[i], scaled(source[i], coverage[i]));
}

PICTAL_BODY void copyPixelsCoveredBody(Row row, Pixels source, Coverage coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = mixed(row[i], source[i], coverage[i]);
}

PICTAL_BODY void copyColorCoveredBody(Row row, std::uint32_t pixel, Coverage coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = mixed(row[i], pixel, coverage[i]);
}

PICTAL_BODY void eraseBody(Row row, std::uint32_t alpha) {
    for (std::uint32_t& pixel : row)
        pixel = scaled(pixel, 255 - alpha);
}

PICTAL_BODY void eraseCoveredBody(Row row, std::uint32_t alpha, Coverage coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = scaled(row[i], 255 - product(alpha, coverage[i]));
}

PICTAL_BODY void erasePixelsBody(Row row, Pixels source) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = scaled(row[i], 255 - (source[i] >> 24));
}

PICTAL_BODY void erasePixelsCoveredBody(Row row, Pixels source, Coverage coverage) {
    for (std::size_t i = 0; i < row.size(); ++i)
        row[i] = scaled(row[i], 255 - product(source[i] >> 24, coverage[i]));
}

PICTAL_BODY void scaleCoverageBody(MutableCoverage coverage, std::uint8_t factor) {
    for (std::uint8_t& value : coverage)
        value = static_cast<std::uint8_t>(product(value, factor));
}

PICTAL_BODY void multiplyCoverageBody(MutableCoverage coverage, Coverage mask) {
    for (std::size_t i = 0; i < coverage.size(); ++i)
        coverage[i] = static_cast<std::uint8_t>(product(coverage[i], mask[i]));
}

template <template <auto> class At>
constexpr BlendKernels tableAt{
    At<blendColorBody>::run,
    At<blendColorCoveredBody>::run,
    At<blendPixelsBody>::run,
    At<blendPixelsCoveredBody>::run,
    At<copyPixelsCoveredBody>::run,
    At<copyColorCoveredBody>::run,
    At<eraseBody>::run,
    At<eraseCoveredBody>::run,
    At<erasePixelsBody>::run,
    At<erasePixelsCoveredBody>::run,
    At<scaleCoverageBody>::run,
    At<multiplyCoverageBody>::run,
};

}  // namespace

const BlendKernels& blendKernels(Target target) {
    return tableFor(target, tableAt<AtPlain>, tableAt<AtV3>, tableAt<AtV4>);
}

}  // namespace pictal::kernels
