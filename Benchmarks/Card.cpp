// A card beside copying its pixels.

#include "Benchmarks/Copies.h"
#include "Benchmarks/NoisePicture.h"
#include "Benchmarks/PeakMemory.h"
#include "PictalCore/Styling/TransparentImageRenderer.h"

#include <benchmark/benchmark.h>

namespace pictal {
namespace {

CGImage cardOf(const CGImage& image) {
    return TransparentImageRenderer().render(image, ScreenshotStyle::presentationCard).value();
}

void card(benchmark::State& state) {
    const CGImage image = noisePicture(state.range(0), state.range(1));
    for (auto _ : state)
        benchmark::DoNotOptimize(cardOf(image));
    const double taken = peakMemory([&] { benchmark::DoNotOptimize(cardOf(image)); });
    const CGImage result = cardOf(image);
    state.counters["MiBBesideOutput"] =
        taken - static_cast<double>(result.width() * result.height()) * 4 / (1 << 20);
}

std::size_t cardBytes(std::int64_t width, std::int64_t height) {
    const CGImage image = cardOf(noisePicture(width, height));
    return static_cast<std::size_t>(image.width() * image.height()) * 4;
}

const bool registered = [] {
    screenSizes(benchmark::RegisterBenchmark("card", card));
    registerCopies("card", cardBytes);
    return true;
}();

}  // namespace
}  // namespace pictal
