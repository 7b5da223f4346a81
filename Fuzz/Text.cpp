// Any text, size and outline on a canvas of at most 128 × 128: drawn as a text and as a badge.

#include "PictalCore/Annotation/AnnotationRenderer.h"
#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Text/Fonts.h"
#include "PictalCore/Platform/Text/TextLine.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

/// Any double at all, or one that puts something on the canvas.
double number(FuzzedDataProvider& input) {
    if (input.ConsumeBool()) return input.ConsumeIntegralInRange(-1024, 1024) / 8.0;
    return std::bit_cast<double>(input.ConsumeIntegral<std::uint64_t>());
}

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pictal;
    if (size > 1000) return 0;
    FuzzedDataProvider input(data, size);
    const auto width = input.ConsumeIntegralInRange<std::int64_t>(1, 128);
    const auto height = input.ConsumeIntegralInRange<std::int64_t>(1, 128);
    const double x = number(input);
    const double y = number(input);
    AnnotationStyle style;
    style.fontSize = number(input);
    style.textOutlineWidth = number(input);
    style.textOutline = RGBAColor(1, 1, 1, input.ConsumeProbability<double>());
    style.stroke = RGBAColor(0, 0, 1, input.ConsumeProbability<double>());
    style.fill = RGBAColor(1, 0, 0, input.ConsumeProbability<double>());
    const std::string text = input.ConsumeRemainingBytesAsString();

    const TextLine line(text, style.fontSize);
    require(line.width() >= 0 && line.ascent() >= 0 && line.descent() >= 0);
    for (const char32_t missing : Fonts::charactersWithoutGlyph(text))
        require(missing <= 0x10FFFF);

    const std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height));
    const CGImage page =
        CGImage::fromBytes(std::as_bytes(std::span(pixels)), {width, height, width * 4}, {})
            .value();
    const AnnotationGeometry place{AnnotationGeometry::Point{{x, y}}};
    const std::vector<ScreenshotAnnotation> marks{{AnnotationTool::text, place, style, text},
                                                  {AnnotationTool::number, place, style, text}};
    const auto drawn = AnnotationRenderer().render(page, marks);
    require(drawn.has_value());
    for (std::int64_t row = 0; row < height; ++row)
        for (const std::uint32_t pixel : drawn->row(row))
            require(std::max({kernels::redOf(pixel), kernels::greenOf(pixel),
                              kernels::blueOf(pixel)}) <= kernels::alphaOf(pixel));
    return 0;
}
