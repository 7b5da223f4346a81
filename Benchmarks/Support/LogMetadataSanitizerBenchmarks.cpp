#include "PictalCore/Support/LogMetadataSanitizer.h"

#include <string>

#include <benchmark/benchmark.h>

namespace {

/// Ten megabytes on one line, of the pieces that a redaction looks at longest.
void redactEmbeddedPaths(benchmark::State& state, const char* piece) {
    std::string text;
    while (text.size() < 10'000'000)
        text += piece;
    for (auto _ : state)
        benchmark::DoNotOptimize(pictal::LogMetadataSanitizer::redactEmbeddedPaths(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

BENCHMARK_CAPTURE(redactEmbeddedPaths, slashes, "/")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(redactEmbeddedPaths, onePath, "~/")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(redactEmbeddedPaths, manyPaths, "~/,")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(redactEmbeddedPaths, nearlyPaths, "/User")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(redactEmbeddedPaths, prose, "Saved the picture. ")->Unit(benchmark::kMillisecond);

void cap(benchmark::State& state) {
    const std::string line(300, 'a');
    for (auto _ : state)
        benchmark::DoNotOptimize(pictal::LogMetadataSanitizer::sanitize(line, 200));
}

BENCHMARK(cap);

}  // namespace
