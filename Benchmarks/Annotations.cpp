// Burning twenty mixed annotations into a picture, beside copying it.

#include "Benchmarks/Copies.h"
#include "Benchmarks/NoisePicture.h"
#include "PictalCore/Annotation/AnnotationRenderer.h"

#include <cmath>

#include <benchmark/benchmark.h>

namespace pictal {
namespace {

AnnotationStyle pen(CGFloat lineWidth, CGFloat opacity) {
    return {RGBAColor(0.9, 0.2, 0.1, 1),
            RGBAColor(1, 0.9, 0.2, 0.3),
            lineWidth,
            opacity,
            18,
            RGBAColor(0, 0, 0, 0),
            2,
            AnnotationMosaicMode::block};
}

/// A freehand stroke of 250 points inside `area`, on S some 5,000 pixels long: a spiral that
/// wobbles.
std::vector<CGPoint> scribble(const CGRect& area, int phase) {
    std::vector<CGPoint> points;
    for (int i = 0; i < 250; ++i) {
        const double turn = i * 0.12 + phase, reach = 0.08 + 0.16 * i / 250;
        points.push_back({area.midX() + area.width() * reach * std::cos(turn),
                          area.midY() + area.height() * reach * std::sin(turn * 1.02)});
    }
    return points;
}

/// Four each of rectangles, ellipses, lines, arrows and freehand strokes, in proportion to the
/// picture; the widths stay.
std::vector<ScreenshotAnnotation> twentyMarks(std::int64_t width, std::int64_t height) {
    std::vector<ScreenshotAnnotation> marks;
    const auto w = static_cast<CGFloat>(width), h = static_cast<CGFloat>(height);
    for (int i = 0; i < 4; ++i) {
        const CGRect cell(w * 0.24 * i + w * 0.02, h * 0.1, w * 0.2, h * 0.8);
        const CGPoint low{cell.minX(), cell.minY()}, high{cell.maxX(), cell.maxY()};
        marks.push_back(ScreenshotAnnotation::rectangle(cell, pen(6, 1)));
        marks.push_back(
            ScreenshotAnnotation::ellipse(cell.insetBy(w * 0.03, h * 0.2), pen(8, 0.8)));
        marks.push_back(ScreenshotAnnotation::line(low, high, pen(4, 1)));
        marks.push_back(ScreenshotAnnotation::arrow({high.x, low.y}, {low.x, high.y}, pen(10, 1)));
        marks.push_back(ScreenshotAnnotation::brush(scribble(cell, i), pen(12, 0.9)));
    }
    return marks;
}

void annotate(benchmark::State& state) {
    const CGImage image = noisePicture(state.range(0), state.range(1));
    const auto marks = twentyMarks(state.range(0), state.range(1));
    for (auto _ : state)
        benchmark::DoNotOptimize(AnnotationRenderer().render(image, marks));
}

std::size_t pictureBytes(std::int64_t width, std::int64_t height) {
    return static_cast<std::size_t>(width * height) * 4;
}

const bool registered = [] {
    screenSizes(benchmark::RegisterBenchmark("annotate", annotate));
    registerCopies("annotate", pictureBytes);
    return true;
}();

}  // namespace
}  // namespace pictal
