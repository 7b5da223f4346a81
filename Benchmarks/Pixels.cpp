// The pixel loops: blending for each target, and colour conversion.

#include "Benchmarks/NoisePicture.h"
#include "PictalCore/Platform/Graphics/BitmapContext.h"
#include "PictalCore/Platform/Graphics/Kernels/Blend.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"

#include <string>

#include <benchmark/benchmark.h>

namespace pictal {
namespace {

constexpr std::size_t rowLength = 2880;

const char* nameOf(kernels::Target target) {
    switch (target) {
        case kernels::Target::plain:
            return "plain";
        case kernels::Target::v3:
            return "v3";
        case kernels::Target::v4:
            return "v4";
    }
    return "";
}

void drawConverted(benchmark::State& state) {
    const auto profile = detail::makeRGBProfile({.red = {0.680, 0.320}, .green = {0.265, 0.690}});
    const CGImage image = noisePicture(state.range(0), state.range(1),
                                       CGColorSpace::fromICCProfile(profile.value()).value());
    const CGRect all(0, 0, static_cast<CGFloat>(image.width()),
                     static_cast<CGFloat>(image.height()));
    for (auto _ : state) {
        auto context = BitmapContext::make(image.width(), image.height(), CGColorSpace::sRGB());
        context->draw(image, all);
        benchmark::DoNotOptimize(std::move(*context).makeImage());
    }
    state.SetItemsProcessed(state.iterations() * image.width() * image.height());
}
BENCHMARK(drawConverted)->Args({2880, 1800})->Unit(benchmark::kMillisecond);

const bool registered = [] {
    for (const kernels::Target target : kernels::allTargets) {
        if (!isAvailable(target)) continue;
        const auto add = [&](const std::string& name, auto&& run) {
            benchmark::RegisterBenchmark(
                (name + "/" + nameOf(target)).c_str(), [=](benchmark::State& state) {
                    std::vector<std::uint32_t> row(rowLength, 0x80402010),
                        source(rowLength, 0x40102030);
                    const std::vector<std::uint8_t> coverage(rowLength, 100);
                    for (auto _ : state) {
                        run(kernels::blendKernels(target), row, source, coverage);
                        benchmark::ClobberMemory();
                    }
                    state.SetItemsProcessed(state.iterations() *
                                            static_cast<std::int64_t>(rowLength));
                });
        };
        add("blendColorCovered", [](const auto& table, auto& row, auto&, auto& coverage) {
            table.blendColorCovered(row, 0x80FF8040, coverage);
        });
        add("blendPixels", [](const auto& table, auto& row, auto& source, auto&) {
            table.blendPixels(row, source);
        });
        add("multiplyCoverage", [](const auto& table, auto&, auto&, auto& coverage) {
            std::vector<std::uint8_t> weighted = coverage;
            table.multiplyCoverage(weighted, coverage);
        });
    }
    return true;
}();

}  // namespace
}  // namespace pictal
