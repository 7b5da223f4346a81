// Two pictures of any small content are measured without harm, alike the second time, and a picture
// lies on itself.

#include "PictalCore/Scrolling/ScrollingFrameAnalyzer.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
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
    const auto width = input.ConsumeIntegralInRange<std::int64_t>(1, 200);
    const auto height = input.ConsumeIntegralInRange<std::int64_t>(2, 150);
    const auto shift = input.ConsumeIntegralInRange<std::int64_t>(-150, 150);
    const auto sideways = input.ConsumeIntegralInRange<std::int64_t>(-5, 5);
    const auto noise = input.ConsumeIntegralInRange<std::uint32_t>(0, 3);
    const std::vector<std::uint8_t> ink = input.ConsumeRemainingBytes<std::uint8_t>();
    if (ink.empty()) return 0;

    const auto picture = [&](std::int64_t top, std::int64_t left, std::uint32_t disturbed) {
        std::vector<std::uint32_t> pixels;
        for (std::int64_t y = top; y < top + height; ++y)
            for (std::int64_t x = left; x < left + width; ++x) {
                const auto place = static_cast<std::size_t>((y + 1000) / 3 * 37 + (x + 1000) / 2);
                const std::uint32_t grey = ink[place % ink.size()];
                const std::uint32_t step =
                    disturbed > 0 ? (place * 31 + pixels.size()) % disturbed : 0;
                pixels.push_back(0xFF000000 | (grey ^ step) * 0x010101);
            }
        return CGImage::fromBytes(std::as_bytes(std::span(pixels)), {width, height, width * 4}, {})
            .value();
    };
    const CGImage previous = picture(0, 0, 0), current = picture(shift, sideways, noise);
    const auto measurement = ScrollingFrameAnalyzer().measure(previous, current);
    require(measurement.has_value());
    require(*measurement == *ScrollingFrameAnalyzer().measure(previous, current));
    const auto sound = [&](const std::optional<ImageTranslation>& t) {
        require(!t || (std::abs(t->y) < static_cast<double>(height) && std::abs(t->x) <= 4 &&
                       t->confidence >= 0.5F && t->confidence <= 1));
    };
    sound(measurement->wholeFrame);
    for (const auto& band : measurement->bands)
        sound(band.translation);
    require(measurement->stillRowsAtTop + measurement->stillRowsAtBottom <= height);
    require(ScrollingFrameAnalyzer().analyze(previous, previous) ==
            ScrollingFrameAnalysis::unchanged());
    return 0;
}
