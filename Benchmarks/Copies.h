#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include <benchmark/benchmark.h>
#include <sys/mman.h>

/// What every picture is measured beside: copying as many bytes, into a new mapping of ordinary or
/// of huge pages, or into memory that has been touched.
namespace pictal {

inline void copyToNewPages(benchmark::State& state, std::size_t bytes, int advice) {
    constexpr std::size_t page = std::size_t{2} << 20;
    const std::vector<std::byte> source(bytes, std::byte{7});
    const std::size_t mapped = (bytes + page - 1) / page * page + page;
    for (auto _ : state) {
        void* const memory =
            ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        const auto start = reinterpret_cast<std::uintptr_t>(memory);
        auto* const target = static_cast<std::byte*>(memory) + (page - start % page) % page;
        ::madvise(memory, mapped, advice);
        std::memcpy(target, source.data(), bytes);
        benchmark::ClobberMemory();
        ::munmap(memory, mapped);
    }
}

inline void copyToOrdinaryPages(benchmark::State& state, std::size_t bytes) {
    copyToNewPages(state, bytes, MADV_NOHUGEPAGE);
}
inline void copyToHugePages(benchmark::State& state, std::size_t bytes) {
    copyToNewPages(state, bytes, MADV_HUGEPAGE);
}
inline void copyToTouchedMemory(benchmark::State& state, std::size_t bytes) {
    const std::vector<std::byte> source(bytes, std::byte{7});
    std::vector<std::byte> target(bytes);
    for (auto _ : state) {
        std::memcpy(target.data(), source.data(), bytes);
        benchmark::ClobberMemory();
    }
}

/// Four sizes, so that it shows how the cost grows: the last two are S and L.
inline void screenSizes(benchmark::internal::Benchmark* suite) {
    suite->Args({720, 450})->Args({1440, 900})->Args({2880, 1800})->Args({5120, 2880});
    suite->Unit(benchmark::kMillisecond);
}

/// Adds the three copies as NAME/copy, NAME/copyHuge and NAME/copyTouched.
/// @param bytes  of the output, from the width and height of the input
inline void registerCopies(const std::string& name,
                           std::size_t (*bytes)(std::int64_t width, std::int64_t height)) {
    const auto add = [&](const char* how, void (*copy)(benchmark::State&, std::size_t)) {
        screenSizes(benchmark::RegisterBenchmark(
            (name + "/" + how).c_str(),
            [=](benchmark::State& state) { copy(state, bytes(state.range(0), state.range(1))); }));
    };
    add("copy", copyToOrdinaryPages);
    add("copyHuge", copyToHugePages);
    add("copyTouched", copyToTouchedMemory);
}

}  // namespace pictal
