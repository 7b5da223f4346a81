#include "PictalCore/Platform/Graphics/detail/FillRasterizer.h"
#include "PictalCore/Platform/Graphics/detail/PathFlattening.h"
#include "PictalCore/Platform/Graphics/detail/StrokeRasterizer.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include <benchmark/benchmark.h>

namespace {

using namespace pictal;
using namespace pictal::detail;

/// Counts what arrives, so that the time is the rasteriser's.
class CountingSink : public CoverageSink {
  public:
    void solid(std::int64_t, std::int64_t left, std::int64_t right) override {
        solidPixels += right - left;
    }
    void varied(std::int64_t, std::int64_t, std::span<const std::uint8_t> coverage) override {
        variedPixels += static_cast<std::int64_t>(coverage.size());
    }
    std::int64_t solidPixels = 0;
    std::int64_t variedPixels = 0;
};

/// The same aspect everywhere; 2880 is the width of a large screen.
PixelRect canvas(const benchmark::State& state) {
    return {0, 0, state.range(0), state.range(0) * 5 / 8};
}

CGRect inset(const PixelRect& clip, CGFloat by) {
    return CGRect(0, 0, static_cast<CGFloat>(clip.width()), static_cast<CGFloat>(clip.height()))
        .insetBy(by, by);
}

/// A hand's wandering: 250 points over two thirds of the canvas.
Path freehand(const PixelRect& clip) {
    const CGRect area = inset(clip, static_cast<CGFloat>(clip.height()) / 6);
    std::mt19937 random(11);
    std::uniform_real_distribution<CGFloat> tremble(-1, 1);
    Path path;
    for (int i = 0; i < 250; ++i) {
        const CGFloat t = i * 2 * std::numbers::pi / 250;
        const CGPoint point{area.midX() + area.width() / 2 * std::sin(2 * t) + tremble(random),
                            area.midY() + area.height() / 2 * std::sin(3 * t) + tremble(random)};
        if (i == 0) path.moveTo(point);
        path.lineTo(point);
    }
    return path;
}

void report(benchmark::State& state, const CountingSink& sink) {
    const auto perRun = benchmark::Counter::kAvgIterations;
    state.counters["solid"] = {static_cast<double>(sink.solidPixels), perRun};
    state.counters["varied"] = {static_cast<double>(sink.variedPixels), perRun};
}

void fill(benchmark::State& state, const Path& path) {
    CountingSink sink;
    for (auto _ : state)
        rasterizeFill(flattenedForFill(path, {}, canvas(state)), FillRule::nonZero, canvas(state),
                      sink);
    report(state, sink);
}

void stroke(benchmark::State& state, const Path& path, CGFloat width) {
    CountingSink sink;
    for (auto _ : state)
        rasterizeStroke(flattenedForStroke(path, {}, width, canvas(state)), width, canvas(state),
                        sink);
    report(state, sink);
}

void fillRect(benchmark::State& state) {
    Path path;
    path.addRect(inset(canvas(state), 10.5));
    fill(state, path);
}
void fillEllipse(benchmark::State& state) {
    Path path;
    path.addEllipse(inset(canvas(state), 10.5));
    fill(state, path);
}
/// Edges everywhere: triangles of about 20 px, a hundred thousand edges at 2880.
void fillTriangles(benchmark::State& state) {
    const CGRect area = inset(canvas(state), 0);
    std::mt19937 random(11);
    std::uniform_real_distribution<CGFloat> unit(0, 1);
    Path path;
    for (int i = 0; i < static_cast<int>(area.width() * area.height() / 155); ++i) {
        const CGPoint at{unit(random) * area.width(), unit(random) * area.height()};
        path.moveTo(at);
        path.lineTo({at.x + 20 * unit(random), at.y + 20 * unit(random)});
        path.lineTo({at.x - 20 * unit(random), at.y + 20 * unit(random)});
        path.close();
    }
    fill(state, path);
}
void strokeLine(benchmark::State& state) {
    const CGRect area = inset(canvas(state), 20);
    Path path;
    path.moveTo(area.origin);
    path.lineTo({area.maxX(), area.maxY()});
    stroke(state, path, 12);
}
void strokeFreehand(benchmark::State& state) {
    stroke(state, freehand(canvas(state)), 12);
}
void strokeFreehandFat(benchmark::State& state) {
    stroke(state, freehand(canvas(state)), 100);
}
void strokeEllipse(benchmark::State& state) {
    Path path;
    path.addEllipse(inset(canvas(state), 10.5));
    stroke(state, path, 4);
}
void strokeRect(benchmark::State& state) {
    Path path;
    path.addRect(inset(canvas(state), 10.5));
    stroke(state, path, 4);
}

/// A hand that never lifts the pen: steps of 5 px over the canvas, ever onward.
void brush(benchmark::State& state) {
    constexpr PixelRect clip{0, 0, 2880, 1800};
    std::mt19937 random(11);
    std::uniform_real_distribution<CGFloat> turn(-0.5, 0.5);
    CGPoint at{1440, 900};
    CGFloat direction = 0;
    Path path;
    path.moveTo(at);
    for (std::int64_t i = 1; i < state.range(0); ++i) {
        direction += turn(random);
        at = {std::clamp(at.x + 5 * std::cos(direction), 0.0, 2880.0),
              std::clamp(at.y + 5 * std::sin(direction), 0.0, 1800.0)};
        path.lineTo(at);
    }
    CountingSink sink;
    for (auto _ : state)
        rasterizeStroke(flattenedForStroke(path, {}, 12, clip), 12, clip, sink);
    report(state, sink);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
/// Lines between random points of the canvas.
void jumps(benchmark::State& state) {
    constexpr PixelRect clip{0, 0, 2880, 1800};
    std::mt19937 random(11);
    std::uniform_real_distribution<CGFloat> x(0, 2880), y(0, 1800);
    Path path;
    path.moveTo({1440, 900});
    for (std::int64_t i = 1; i < state.range(0); ++i)
        path.lineTo({x(random), y(random)});
    CountingSink sink;
    for (auto _ : state)
        rasterizeStroke(flattenedForStroke(path, {}, 12, clip), 12, clip, sink);
    report(state, sink);
}
/// Forty fills of one pixel: their cost does not grow with the canvas.
void fillPixels(benchmark::State& state) {
    const PixelRect clip{0, 0, state.range(0), 64};
    CountingSink sink;
    for (auto _ : state)
        for (int i = 0; i < 40; ++i) {
            Path path;
            path.addRect({i + 0.5, i + 0.5, 1, 1});
            rasterizeFill(flattenedForFill(path, {}, clip), FillRule::nonZero, clip, sink);
        }
    report(state, sink);
}

#define PICTAL_ALL_SIZES \
    Unit(benchmark::kMicrosecond)->ArgName("width")->Arg(320)->Arg(1280)->Arg(2880)->Arg(5120)

BENCHMARK(fillRect)->PICTAL_ALL_SIZES;
BENCHMARK(fillEllipse)->PICTAL_ALL_SIZES;
BENCHMARK(fillTriangles)->PICTAL_ALL_SIZES;
BENCHMARK(strokeLine)->PICTAL_ALL_SIZES;
BENCHMARK(strokeRect)->PICTAL_ALL_SIZES;
BENCHMARK(strokeEllipse)->PICTAL_ALL_SIZES;
BENCHMARK(strokeFreehand)->PICTAL_ALL_SIZES;
BENCHMARK(strokeFreehandFat)->PICTAL_ALL_SIZES;
BENCHMARK(brush)->Unit(benchmark::kMillisecond)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(jumps)->Unit(benchmark::kMillisecond)->Arg(2000);
BENCHMARK(fillPixels)->Unit(benchmark::kMicrosecond)->Arg(64)->Arg(200000);

}  // namespace
