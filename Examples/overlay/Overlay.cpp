#include "Examples/overlay/Overlay.h"

#include "PictalCore/Geometry/CaptureDisplaySelector.h"
#include "PictalCore/Geometry/SelectionCoordinateMapper.h"

#include <cstddef>

using namespace pictal;

namespace {

constexpr CGSize smallestWindow{100, 60};
constexpr CGSize sidePanelSize{280, 400};
constexpr CGSize actionBarSize{300, 44};
constexpr CGSize loupeSize{120, 120};

}  // namespace

void Overlay::press(CGPoint point) {
    pointer_ = point;
    drag_.reset();
    guides_ = {};
    const auto grabbed = handle();
    if (!grabbed) {
        const WindowCandidate* window = windowUnderPointer();
        selectsWindow_ = window != nullptr;
        selection_ = window ? std::optional(window->appKitFrame) : std::nullopt;
    }
    if (const auto index = displayIndex()) {
        const CGRect& display = displays[static_cast<std::size_t>(*index)];
        if (selection_) selection_ = selection_->intersection(display).integral();
        drag_ = Drag{grabbed, point, selection_.value_or(CGRect{point, {}}), display};
    }
}

void Overlay::move(CGPoint point) {
    pointer_ = point;
    if (drag_) drag(*drag_);
}

void Overlay::release(CGPoint point) {
    move(point);
    drag_.reset();
    guides_ = {};
}

void Overlay::drag(Drag& drag) {
    const CGSize way{pointer_.x - drag.start.x, pointer_.y - drag.start.y};
    drag.moved = drag.moved || way != CGSize{};
    if (!drag.moved) return;
    selectsWindow_ = false;
    if (!drag.handle) {
        const CGRect drawn = CGRect{drag.start, way}.intersection(drag.bounds);
        selection_ = drawn.isEmpty() ? std::nullopt : std::optional(drawn.integral());
        return;
    }
    selection_ = SelectionFrameAdjustment::adjustedRect(drag.rect, *drag.handle, way, drag.bounds);
    if (*drag.handle == SelectionFrameAdjustmentHandle::move) {
        const auto snapped = AlignmentSnapper::snap(*selection_, drag.bounds);
        selection_ = snapped.rect;
        guides_ = snapped.guides;
    }
}

std::optional<SelectionFrameAdjustmentHandle> Overlay::handle() const {
    if (drag_) return drag_->handle;
    if (!selection_) return std::nullopt;
    return SelectionFrameAdjustment::hitHandle(pointer_, *selection_);
}

const WindowCandidate* Overlay::windowUnderPointer() const {
    return WindowHitTester::hitTest(pointer_, windows, smallestWindow);
}

std::optional<std::int64_t> Overlay::displayIndex() const {
    const CGRect underPointer{pointer_, {1, 1}};
    return CaptureDisplaySelector::bestDisplayIndex(selection_.value_or(underPointer), displays);
}

std::optional<Overlay::Panels> Overlay::panels() const {
    const auto index = displayIndex();
    if (!selection_ || !index) return std::nullopt;
    const CGRect& display = displays[static_cast<std::size_t>(*index)];
    const auto selection = SelectionCoordinateMapper::localRect(*selection_, display);
    if (!selection) return std::nullopt;

    namespace Layout = OverlayPanelLayout;
    const CGRect screen{0, 0, display.width(), display.height()};
    const CGPoint pointer{pointer_.x - display.minX(), display.maxY() - pointer_.y};
    return Panels{
        Layout::sidePanelPlacement(*selection, sidePanelSize, screen),
        Layout::frame(Layout::sidePanelCenter(*selection, sidePanelSize, screen), sidePanelSize),
        Layout::actionBarPlacement(*selection, actionBarSize, screen),
        Layout::frame(Layout::actionBarCenter(*selection, actionBarSize, screen), actionBarSize),
        Layout::frame(Layout::floatingPanelCenter(pointer, loupeSize, screen), loupeSize)};
}
