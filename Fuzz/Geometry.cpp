#include "Fuzz/GeometryLaws.h"
#include "PictalCore/Geometry/CaptureDisplaySelector.h"
#include "PictalCore/Geometry/SelectionOverlayEdgeModel.h"
#include "PictalCore/Geometry/WindowCaptureSelectionRect.h"
#include "PictalCore/Geometry/WindowHitTester.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <source_location>
#include <span>
#include <vector>

/// Feeds every operation of the overlay's geometry with arbitrary doubles, and with whole numbers
/// where a law wants them.
namespace pictal {
namespace {

class Numbers {
  public:
    explicit Numbers(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    template <class T>
    T next() {
        T value{};
        const auto chunk = bytes_.first(std::min(sizeof value, bytes_.size()));
        if (!chunk.empty()) std::memcpy(&value, chunk.data(), chunk.size());
        bytes_ = bytes_.subspan(chunk.size());
        return value;
    }
    /// Any bits, or a small multiple of 1/8, which lies close to others.
    CGFloat free() { return next<std::uint8_t>() % 2 == 0 ? next<CGFloat>() : small() / 8; }
    CGFloat small() { return next<std::int16_t>(); }
    CGFloat whole(CGFloat least, CGFloat most) {
        return least + std::fmod(next<std::uint16_t>(), most - least + 1);
    }

    CGPoint point() { return {.x = free(), .y = free()}; }
    CGSize size() { return {.width = free(), .height = free()}; }
    CGRect rect() { return CGRect{point(), size()}; }
    CGRect wholeRect() { return CGRect{small(), small(), whole(1, 4096), whole(1, 4096)}; }

  private:
    std::span<const std::uint8_t> bytes_;
};

void require(bool holds, std::source_location where = std::source_location::current()) {
    if (holds) return;
    std::fprintf(stderr, "the law in line %u is broken\n", where.line());
    std::abort();
}

/// A NaN equals itself here.
bool same(CGFloat a, CGFloat b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

void checkSnapping(Numbers& numbers) {
    const CGPoint point = numbers.point();
    const CGRect rect = numbers.rect(), container = numbers.rect();
    const CGFloat tolerance = numbers.free();
    const auto to = AlignmentSnapper::snap(point, container, tolerance);
    const bool snapped = to.guides.contains(AlignmentSnapGuides::verticalCenter);
    require(same(to.point.x, snapped ? container.midX() : point.x));
    require(!snapped || std::abs(point.x - to.point.x) <= std::max(0.0, tolerance));
    static_cast<void>(AlignmentSnapper::snap(rect, container, tolerance));
}

void checkSelection(Numbers& numbers) {
    const CGPoint point = numbers.point();
    const CGRect rect = numbers.rect(), bounds = numbers.rect();
    const CGFloat edge = numbers.free();
    const auto handle = SelectionFrameAdjustment::hitHandle(point, rect, edge, numbers.free());
    require(handle.has_value() == (!rect.isEmpty() && rect.insetBy(-edge, -edge).contains(point)));

    const CGSize way = numbers.size(), minimum = numbers.size();
    for (const SelectionFrameAdjustmentHandle any : laws::handles) {
        const CGRect to = SelectionFrameAdjustment::adjustedRect(rect, any, way, bounds, minimum);
        if (rect.isEmpty() || bounds.isEmpty()) continue;
        require(same(to.origin.x, std::floor(to.origin.x)) && !(to.size.width < 0));
        require(same(to.origin.y, std::floor(to.origin.y)) && !(to.size.height < 0));
    }
    static_cast<void>(SelectionCoordinateMapper::localRect(rect, bounds));
    static_cast<void>(SelectionCoordinateMapper::globalRect(rect, bounds));
    static_cast<void>(SelectionOverlayEdgeModel(rect, edge, edge).accentStrokeRect());
}

void checkPanels(Numbers& numbers) {
    const CGRect selection = numbers.rect(), container = numbers.rect();
    const CGSize panel = numbers.size();
    const CGFloat margin = numbers.free(), gap = numbers.free();
    require(laws::panelStaysInside(selection.origin, panel, container, margin));
    // Each centre is where the clamp leaves it.
    for (const CGPoint center :
         {OverlayPanelLayout::sidePanelCenter(selection, panel, container, margin, gap),
          OverlayPanelLayout::actionBarCenter(selection, panel, container, margin, gap),
          OverlayPanelLayout::floatingPanelCenter(selection.origin, panel, container, margin,
                                                  gap)}) {
        const CGPoint again = OverlayPanelLayout::clampedCenter(center, panel, container, margin);
        require(same(center.x, again.x) && same(center.y, again.y));
    }
}

void checkWindowsAndDisplays(Numbers& numbers) {
    const CGPoint point = numbers.point();
    const std::array frames{numbers.rect(), numbers.rect(), numbers.rect()};
    const std::vector<WindowCandidate> windows{{1, frames[0], "", "", 0},
                                               {2, frames[1], "", "", 0}};
    const auto* hit = WindowHitTester::hitTest(point, windows, numbers.size());
    require(!hit ||
            ((hit == &windows[0] || hit == &windows[1]) && hit->appKitFrame.contains(point)));

    const CGRect rect = numbers.rect();
    const auto display = CaptureDisplaySelector::bestDisplayIndex(rect, frames);
    require(!display ||
            !CaptureDisplaySelector::localRect(rect, frames[static_cast<std::size_t>(*display)])
                 .isEmpty() ||
            std::isinf(rect.minX()) || std::isinf(rect.minY()));

    const CGSize pixels = numbers.size();
    const CGFloat scale = numbers.free();
    const CGRect content = WindowCaptureSelectionRect::visibleContentFrame(
        rect, pixels, scale, numbers.next<std::uint8_t>() % 2 == 0, numbers.free());
    require(same(content.width(), rect.width()) || content.width() == pixels.width / scale);
}

void checkPinned(Numbers& numbers) {
    const CGSize least = numbers.size();
    const CGSize fitted =
        PinnedImageWindowLayout::fittedPanelSize(numbers.size(), numbers.size(), least);
    require(std::isnan(least.width) || fitted.width >= least.width);
    const std::array frames{numbers.rect(), numbers.rect(), numbers.rect()};
    static_cast<void>(PinnedImageWindowLayout::unionOf(frames));
    static_cast<void>(
        PinnedImageWindowLayout::movedFrame(frames[0], least, frames[1], numbers.free()));
}

void checkLawsOfWholeNumbers(Numbers& numbers) {
    const CGRect container = numbers.wholeRect(), other = numbers.wholeRect();
    const CGSize size{numbers.whole(1, container.width()), numbers.whole(1, container.height())};
    const CGRect inside{container.minX() + numbers.whole(0, container.width() - size.width),
                        container.minY() + numbers.whole(0, container.height() - size.height),
                        size.width, size.height};
    const CGSize way = numbers.size();
    const CGSize least{numbers.whole(1, size.width), numbers.whole(1, size.height)};
    require(laws::adjustmentStaysInside(inside, way, container, least));
    require(laws::snapsWithinTolerance(inside, container, numbers.small() / 8));
    require(laws::mappingIsInverse(inside, container));
    require(
        laws::pinnedFrameStaysVisible(other, way, container, std::min(size.width, size.height)));
    require(laws::cornersDoNotMatter(other, container, {numbers.small(), numbers.small()}));
}

}  // namespace
}  // namespace pictal

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictal::Numbers numbers({data, size});
    pictal::checkLawsOfWholeNumbers(numbers);
    pictal::checkSnapping(numbers);
    pictal::checkSelection(numbers);
    pictal::checkPanels(numbers);
    pictal::checkWindowsAndDisplays(numbers);
    pictal::checkPinned(numbers);
    return 0;
}
