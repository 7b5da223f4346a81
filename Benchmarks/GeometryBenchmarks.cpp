#include "Benchmarks/AllocationCounter.h"
#include "PictalCore/Geometry/AlignmentSnapper.h"
#include "PictalCore/Geometry/CaptureDisplaySelector.h"
#include "PictalCore/Geometry/CaptureExclusionPlan.h"
#include "PictalCore/Geometry/OverlayPanelLayout.h"
#include "PictalCore/Geometry/PinnedImageWindowLayout.h"
#include "PictalCore/Geometry/SelectionCoordinateMapper.h"
#include "PictalCore/Geometry/SelectionFrameAdjustment.h"
#include "PictalCore/Geometry/WindowCaptureSelectionRect.h"
#include "PictalCore/Geometry/WindowHitTester.h"

#include <array>
#include <random>

/// What a capture overlay asks on every pointer move. Each has to stay below a microsecond and
/// allocate nothing; the plan, which is a list, shows that the counter counts.
namespace pictal {
namespace {

constexpr CGRect screen{0, 0, 1440, 900};

/// Pointers on the screen, selections around them and small movements; the same in every run.
struct Pointers {
    static constexpr std::size_t count = 256;
    std::array<CGPoint, count> points;
    std::array<CGRect, count> rects;
    std::array<CGSize, count> ways;

    Pointers() {
        std::mt19937 random{1};
        std::uniform_real_distribution<CGFloat> share{0, 1};
        for (std::size_t i = 0; i < count; ++i) {
            points[i] = {1440 * share(random), 900 * share(random)};
            ways[i] = {400 * share(random) - 200, 400 * share(random) - 200};
            rects[i] = {points[i].x - 200, points[i].y - 150, 100 + 300 * share(random),
                        80 + 250 * share(random)};
        }
    }
};

template <class Operation>
void everyPointer(benchmark::State& state, Operation operation) {
    const Pointers pointers;
    std::size_t i = 0;
    const AllocationCounter counter(state);
    for (auto _ : state) {
        i = (i + 1) % Pointers::count;
        auto result = operation(pointers.points[i], pointers.rects[i], pointers.ways[i]);
        benchmark::DoNotOptimize(result);
    }
}

#define PICTAL_BENCHMARK(name, ...)                                                    \
    void name(benchmark::State& state) {                                               \
        everyPointer(state, [](CGPoint point, const CGRect& rect, CGSize way) {        \
            static_cast<void>(point), static_cast<void>(rect), static_cast<void>(way); \
            return __VA_ARGS__;                                                        \
        });                                                                            \
    }                                                                                  \
    BENCHMARK(name)

PICTAL_BENCHMARK(snapPoint, AlignmentSnapper::snap(point, screen));
PICTAL_BENCHMARK(snapRect, AlignmentSnapper::snap(rect, screen));
PICTAL_BENCHMARK(hitHandle, SelectionFrameAdjustment::hitHandle(point, rect));
PICTAL_BENCHMARK(adjustCorner, SelectionFrameAdjustment::adjustedRect(
                                   rect, SelectionFrameAdjustmentHandle::maxXMinY, way, screen));
PICTAL_BENCHMARK(adjustMove,
                 SelectionFrameAdjustment::adjustedRect(rect, SelectionFrameAdjustmentHandle::move,
                                                        way, screen));
PICTAL_BENCHMARK(mapToLocal, SelectionCoordinateMapper::localRect(rect, screen));
PICTAL_BENCHMARK(mapToGlobal, SelectionCoordinateMapper::globalRect(rect, screen));
PICTAL_BENCHMARK(sidePanel, OverlayPanelLayout::sidePanelCenter(rect, {280, 400}, screen));
PICTAL_BENCHMARK(actionBar, OverlayPanelLayout::actionBarCenter(rect, {300, 44}, screen));
PICTAL_BENCHMARK(floatingPanel, OverlayPanelLayout::floatingPanelCenter(point, {120, 120}, screen));
PICTAL_BENCHMARK(windowContent,
                 WindowCaptureSelectionRect::visibleContentFrame(
                     rect, {rect.size.width * 2 - 3, rect.size.height * 2 - 3}, 2, true, 48));
PICTAL_BENCHMARK(displayLocal, CaptureDisplaySelector::localRect(rect, screen));
PICTAL_BENCHMARK(pinnedSize, PinnedImageWindowLayout::fittedPanelSize({point.x * 4, point.y * 4}));
PICTAL_BENCHMARK(pinnedMove, PinnedImageWindowLayout::movedFrame(rect, way, screen));

void bestOfSixDisplays(benchmark::State& state) {
    std::array<CGRect, 6> displays;
    for (std::size_t i = 0; i < displays.size(); ++i)
        displays[i] = screen.offsetBy(1440.0 * static_cast<CGFloat>(i) - 3000, 100);
    everyPointer(state, [&](CGPoint, const CGRect& rect, CGSize) {
        return CaptureDisplaySelector::bestDisplayIndex(rect, displays);
    });
}
BENCHMARK(bestOfSixDisplays);

/// The pointer is only over the last; all before it fail, by the offset and size given.
void hit500Windows(benchmark::State& state, CGSize offset, CGSize size) {
    std::vector<WindowCandidate> windows;
    for (std::uint32_t id = 0; id < 499; ++id)
        windows.push_back(
            {id, {{offset.width, offset.height}, size}, "A window title", "An application", 1});
    windows.push_back({500, screen, "The last", "An application", 1});
    everyPointer(state, [&](CGPoint point, const CGRect&, CGSize) {
        return WindowHitTester::hitTest(point, windows, {100, 60});
    });
}
BENCHMARK_CAPTURE(hit500Windows, beside, {5000, 0}, screen.size);
BENCHMARK_CAPTURE(hit500Windows, above, {0, 5000}, screen.size);
BENCHMARK_CAPTURE(hit500Windows, small, {0, 0}, {1440, 59});

void uniteTenPinned(benchmark::State& state) {
    const Pointers pointers;
    everyPointer(state, [&](CGPoint, const CGRect&, CGSize) {
        return PinnedImageWindowLayout::unionOf(std::span(pointers.rects).first(10));
    });
}
BENCHMARK(uniteTenPinned);

void exclusionPlan(benchmark::State& state) {
    const std::vector<std::uint32_t> windows{12, 7, 12};
    everyPointer(state, [&](CGPoint, const CGRect&, CGSize) {
        return CaptureExclusionPlan::overlayWindows(windows);
    });
}
BENCHMARK(exclusionPlan);

}  // namespace
}  // namespace pictal
