// A style of any numbers makes a card of the right size that holds the picture, or an error.

#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Styling/TransparentImageRenderer.h"
#include "PictalCore/Styling/detail/ShadowLayers.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

/// Any double at all, or one that makes a sensible card.
double number(FuzzedDataProvider& input) {
    if (input.ConsumeBool()) return input.ConsumeIntegralInRange(-800, 800) / 8.0;
    return std::bit_cast<double>(input.ConsumeIntegral<std::uint64_t>());
}

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pictal;
    FuzzedDataProvider input(data, size);
    const auto width = input.ConsumeIntegralInRange<std::int64_t>(1, 128);
    const auto height = input.ConsumeIntegralInRange<std::int64_t>(1, 128);
    ScreenshotStyle style = ScreenshotStyle::presentationCard;
    style.cornerRadius = number(input);
    style.shadow.blur = number(input);
    style.shadow.offsetX = number(input);
    style.shadow.offsetY = number(input);
    style.shadow.opacity = number(input);
    style.shadow.color.red = number(input);
    style.shadow.color.alpha = number(input);
    const double padding = detail::shadowPadding(style.shadow);
    if (padding > 128 && padding < 1e7) return 0;  // large, slow and nothing new

    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height), 0xFF302010);
    const CGImage picture =
        CGImage::fromBytes(std::as_bytes(std::span(pixels)), {width, height, width * 4}, {})
            .value();
    const auto card = TransparentImageRenderer().render(picture, style);
    require(card.has_value() == (padding <= 128));
    if (!card) return 0;

    const auto margin = static_cast<std::int64_t>(padding);
    require(card->width() == width + 2 * margin && card->height() == height + 2 * margin);
    for (std::int64_t y = 0; y < card->height(); ++y)
        for (const std::uint32_t pixel : card->row(y))
            require(std::max({kernels::redOf(pixel), kernels::greenOf(pixel),
                              kernels::blueOf(pixel)}) <= kernels::alphaOf(pixel));
    if (std::min(width, height) > 2)
        require(card->row(margin + height / 2)[static_cast<std::size_t>(margin + width / 2)] ==
                0xFF302010);
    return 0;
}
