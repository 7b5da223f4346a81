// Any frames at any places make a picture of the right size, row by row what the last opaque frame
// there has, or a typed error.

#include "PictalCore/Scrolling/ScrollingStitcher.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pictal;
    FuzzedDataProvider input(data, size);
    const std::int64_t maximum = input.ConsumeIntegralInRange<std::int64_t>(-1, 300);
    std::vector<ScrollingStitchFrame> frames;
    for (std::uint32_t i = 0; input.remaining_bytes() > 0 && i < 12; ++i) {
        const auto width = input.ConsumeIntegralInRange<std::int64_t>(1, 9);
        const auto height = input.ConsumeIntegralInRange<std::int64_t>(1, 20);
        const std::uint32_t color =
            input.ConsumeBool() ? 0xFF000000 | i << 16 : 0x80000000 | i << 16;
        const std::int64_t position = input.ConsumeBool()
                                          ? input.ConsumeIntegral<std::int64_t>()
                                          : input.ConsumeIntegralInRange<std::int64_t>(-50, 50);
        const std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height), color);
        frames.push_back({CGImage::fromBytes(std::as_bytes(std::span(pixels)),
                                             {width, height, width * 4}, CGColorSpace::sRGB())
                              .value(),
                          position});
    }
    const auto result = ScrollingStitcher().stitch(frames, maximum);
    if (!result) {
        const auto error = std::get<ScrollingStitcherError>(result.error());
        require(frames.empty() ? error == ScrollingStitcherError::noFrames()
                               : error == ScrollingStitcherError::outputTooTall(maximum));
        return 0;
    }
    require(result->height() <= maximum);
    if (frames.size() == 1) {
        require(result->isSameImage(frames.front().image));
        return 0;
    }
    std::ranges::stable_sort(frames, {}, &ScrollingStitchFrame::verticalPosition);
    const std::int64_t origin = frames.front().verticalPosition;
    for (std::int64_t y = 0; y < result->height(); ++y) {
        std::optional<std::uint32_t> want = 0;
        for (const auto& [image, position] : frames)
            if (const std::int64_t row = y + origin - position; row >= 0 && row < image.height())
                want = image.isOpaque() ? std::optional(image.row(row)[0]) : std::nullopt;
        if (want) require(result->row(y)[0] == *want);
    }
    return 0;
}
