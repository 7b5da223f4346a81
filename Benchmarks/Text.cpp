// Drawing forty characters at size 24, fonts being open, with and without an outline.

#include "Benchmarks/NoisePicture.h"
#include "PictalCore/Annotation/AnnotationRenderer.h"

#include <array>

#include <benchmark/benchmark.h>

namespace pictal {
namespace {

/// @param outlined  whether the text has the usual outline, two pixels wide
void draw(benchmark::State& state, const char* text, bool outlined) {
    AnnotationStyle style = AnnotationStyle::text;
    if (!outlined) style.textOutline = RGBAColor::annotationTransparent;
    const CGImage page = noisePicture(800, 48);
    const std::array marks{ScreenshotAnnotation::textAt(text, {10.3, 40.6}, style)};
    for (auto _ : state)
        benchmark::DoNotOptimize(AnnotationRenderer().render(page, marks));
}

const bool registered = [] {
    constexpr const char* latin = "Open the menu, choose Export and wait 5s";
    constexpr const char* mixed = "打开菜单，选择导出。افتح القائمة و Export 12 ✅👍🏽🇩🇪";
    benchmark::RegisterBenchmark("text/filled", draw, latin, false);
    benchmark::RegisterBenchmark("text/outlined", draw, latin, true);
    benchmark::RegisterBenchmark("text/scripts/filled", draw, mixed, false);
    benchmark::RegisterBenchmark("text/scripts/outlined", draw, mixed, true);
    return true;
}();

}  // namespace
}  // namespace pictal
