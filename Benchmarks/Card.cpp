#include "PictalCore/Styling/TransparentImageRenderer.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include <benchmark/benchmark.h>
#include <sys/mman.h>

// A card beside copying its pixels: into a new mapping of ordinary pages, of huge pages, and into
// memory that has been touched.

namespace pictal {
namespace {

CGImage screenshot(std::int64_t width, std::int64_t height) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height));
    std::uint32_t state = 1;
    for (std::uint32_t& pixel : pixels)
        pixel = (state = state * 1664525 + 1013904223) | 0xFF000000;
    return CGImage::fromBytes(std::as_bytes(std::span(pixels)), {width, height, width * 4},
                              CGColorSpace::sRGB())
        .value();
}

CGImage cardOf(const CGImage& image) {
    return TransparentImageRenderer().render(image, ScreenshotStyle::presentationCard).value();
}

void card(benchmark::State& state) {
    const CGImage image = screenshot(state.range(0), state.range(1));
    for (auto _ : state)
        benchmark::DoNotOptimize(cardOf(image));
    state.counters["pixels"] = benchmark::Counter(
        static_cast<double>(state.range(0) * state.range(1)),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

std::size_t cardBytes(const benchmark::State& state) {
    const CGImage image = cardOf(screenshot(state.range(0), state.range(1)));
    return static_cast<std::size_t>(image.width() * image.height()) * 4;
}

void copyToNewPages(benchmark::State& state, bool huge) {
    constexpr std::size_t page = std::size_t{2} << 20;
    const std::size_t bytes = cardBytes(state);
    const std::vector<std::byte> source(bytes, std::byte{7});
    const std::size_t mapped = (bytes + page - 1) / page * page + page;
    for (auto _ : state) {
        void* const memory =
            ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        const auto start = reinterpret_cast<std::uintptr_t>(memory);
        auto* const target = static_cast<std::byte*>(memory) + (page - start % page) % page;
        ::madvise(memory, mapped, huge ? MADV_HUGEPAGE : MADV_NOHUGEPAGE);
        std::memcpy(target, source.data(), bytes);
        benchmark::ClobberMemory();
        ::munmap(memory, mapped);
    }
}

void copyToOrdinaryPages(benchmark::State& state) {
    copyToNewPages(state, false);
}
void copyToHugePages(benchmark::State& state) {
    copyToNewPages(state, true);
}

void copyToTouchedMemory(benchmark::State& state) {
    const std::vector<std::byte> source(cardBytes(state), std::byte{7});
    std::vector<std::byte> target(source.size());
    for (auto _ : state) {
        std::memcpy(target.data(), source.data(), source.size());
        benchmark::ClobberMemory();
    }
}

void sizes(benchmark::internal::Benchmark* suite) {
    suite->Args({720, 450})->Args({1440, 900})->Args({2880, 1800})->Args({5120, 2880});
    suite->Unit(benchmark::kMillisecond);
}

BENCHMARK(card)->Apply(sizes);
BENCHMARK(copyToOrdinaryPages)->Apply(sizes);
BENCHMARK(copyToHugePages)->Apply(sizes);
BENCHMARK(copyToTouchedMemory)->Apply(sizes);

}  // namespace
}  // namespace pictal
