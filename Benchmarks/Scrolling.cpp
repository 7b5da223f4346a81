// Measuring how far frames have moved, and stitching them, beside copying.

#include "Benchmarks/Copies.h"
#include "PictalCore/Scrolling/ScrollingFrameAnalyzer.h"
#include "PictalCore/Scrolling/ScrollingStitcher.h"
#include "Tests/Support/PageFrames.h"

#include <benchmark/benchmark.h>

namespace pictal {
namespace {

void analyze(benchmark::State& state) {
    const PageFrames page(state.range(0), state.range(1), 1);
    const CGImage previous = page.frame(0), current = page.frame(state.range(1) / 3);
    for (auto _ : state)
        benchmark::DoNotOptimize(ScrollingFrameAnalyzer().analyze(previous, current));
}

std::size_t bothFrames(std::int64_t width, std::int64_t height) {
    return static_cast<std::size_t>(width * height) * 8;
}

constexpr std::int64_t frameCount = 20;

void stitch(benchmark::State& state) {
    const std::int64_t height = state.range(1);
    const CGImage frame = PageFrames(state.range(0), height, 1).frame(0);
    std::vector<ScrollingStitchFrame> frames;
    for (std::int64_t i = 0; i < frameCount; ++i)
        frames.push_back({frame, i * height / 2});
    for (auto _ : state)
        benchmark::DoNotOptimize(ScrollingStitcher().stitch(frames, 1'000'000));
}

std::size_t stitched(std::int64_t width, std::int64_t height) {
    return static_cast<std::size_t>(width * height * (frameCount + 1) / 2) * 4;
}

const bool registered = [] {
    screenSizes(benchmark::RegisterBenchmark("analyze", analyze));
    registerCopies("analyze", bothFrames);
    screenSizes(benchmark::RegisterBenchmark("stitch", stitch));
    registerCopies("stitch", stitched);
    return true;
}();

}  // namespace
}  // namespace pictal
