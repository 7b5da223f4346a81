// Text recognition around the models: tensors beside copying the picture, outputs beside reading
// them once.

#include "Benchmarks/Copies.h"
#include "Benchmarks/NoisePicture.h"
#include "PictalCore/OCR/PaddleOCRCTCDecoder.h"
#include "PictalCore/OCR/PaddleOCRDBPostProcessor.h"
#include "PictalCore/OCR/PaddleOCRImagePreprocessor.h"

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace pictal {
namespace {

void detectionTensor(benchmark::State& state, std::int64_t limit) {
    const CGImage image = noisePicture(state.range(0), state.range(1));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            PaddleOCRImagePreprocessor::detectionTensor(image, {.limitSideLength = limit}));
}

/// 300 words: blocks of 24 x 9 cells in twenty columns and fifteen rows, with soft edges.
std::vector<float> mapOfWords(std::size_t width, std::size_t height) {
    std::vector<float> map(width * height, 0.01F);
    for (std::size_t word = 0; word < 300; ++word)
        for (std::size_t y = 0; y < 9; ++y)
            for (std::size_t x = 0; x < 24; ++x)
                map[(word / 20 * 31 + 8 + y) * width + word % 20 * 36 + 6 + x] =
                    x == 0 || y == 0 ? 0.5F : 0.9F;
    return map;
}

void boxes(benchmark::State& state) {
    const auto map = mapOfWords(736, 480);
    const PaddleOCRDBPostProcessor processor{PaddleOCRDetectionConfig{}};
    for (auto _ : state)
        benchmark::DoNotOptimize(processor.process(map, 736, 480, 1920, 1252));
    state.counters["cells"] = benchmark::Counter(
        static_cast<double>(map.size()),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    if (processor.process(map, 736, 480, 1920, 1252).size() != 300) state.SkipWithError("not 300");
}

/// Reads values once, as fast as it goes: eight sums that do not wait for one another.
void readOnce(benchmark::State& state, const std::vector<float>& values) {
    for (auto _ : state) {
        std::array<float, 64> sums{};
        for (std::size_t i = 0; i + sums.size() <= values.size(); i += sums.size())
            for (std::size_t lane = 0; lane < sums.size(); ++lane)
                sums[lane] += values[i + lane];
        benchmark::DoNotOptimize(sums);
    }
}

constexpr std::int64_t lines = 16, steps = 80, classes = 18'385;

std::vector<float> recognizerOutput() {
    std::mt19937 random{4};
    std::vector<float> values(static_cast<std::size_t>(lines * steps * classes));
    for (float& value : values)
        value = static_cast<float>(random() >> 8) * 0x1p-24F;
    return values;
}

void decode(benchmark::State& state) {
    const auto output = recognizerOutput();
    const std::vector<std::int64_t> shape{lines, steps, classes};
    const auto decoder = PaddleOCRCTCDecoder::make(
                             std::vector<std::string>(static_cast<std::size_t>(classes - 2), "a"))
                             .value();
    for (auto _ : state)
        benchmark::DoNotOptimize(decoder.decodeBatch(output, shape));
}

const bool registered = [] {
    for (const std::int64_t limit : {736, 1920})
        screenSizes(benchmark::RegisterBenchmark(
            ("tensor" + std::to_string(limit)).c_str(),
            [=](benchmark::State& state) { detectionTensor(state, limit); }));
    registerCopies("tensor", [](std::int64_t width, std::int64_t height) {
        return static_cast<std::size_t>(width * height) * 4;
    });
    benchmark::RegisterBenchmark("boxes", boxes);
    benchmark::RegisterBenchmark(
        "boxes/read", [](benchmark::State& state) { readOnce(state, mapOfWords(736, 480)); });
    benchmark::RegisterBenchmark("decode", decode)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("decode/read", [](benchmark::State& state) {
        readOnce(state, recognizerOutput());
    })->Unit(benchmark::kMillisecond);
    return true;
}();

}  // namespace
}  // namespace pictal
