#pragma once

#include "PictalCore/Geometry/AlignmentSnapper.h"
#include "PictalCore/Geometry/OverlayPanelLayout.h"
#include "PictalCore/Geometry/SelectionFrameAdjustment.h"
#include "PictalCore/Geometry/WindowHitTester.h"

#include <cstdint>
#include <optional>
#include <vector>

/// A capture overlay without its windows: pointer events in, everything that has to be drawn out.
///
/// The pointer, the windows and the selection are in global points, y upward; the panels are in the
/// local points of the selection's display, y downward.
class Overlay {
  public:
    struct Panels {
        pictal::OverlaySidePanelPlacement sidePlacement;
        pictal::CGRect side;
        pictal::OverlayActionBarPlacement barPlacement;
        pictal::CGRect bar;
        pictal::CGRect loupe;
    };

    std::vector<pictal::CGRect> displays;
    /// Front to back.
    std::vector<pictal::WindowCandidate> windows;

    /// A press on the selection grabs it. Anywhere else it selects the window under the pointer, or
    /// nothing, and a drag from there draws a new selection.
    void press(pictal::CGPoint point);
    /// Without a press before it, only the pointer moves.
    void move(pictal::CGPoint point);
    void release(pictal::CGPoint point);

    [[nodiscard]] pictal::CGPoint pointer() const { return pointer_; }
    [[nodiscard]] const std::optional<pictal::CGRect>& selection() const { return selection_; }
    /// Whether the selection is the window that was pressed, untouched since.
    [[nodiscard]] bool selectsWindow() const { return selectsWindow_; }
    /// The lines to show while the selection is being moved.
    [[nodiscard]] pictal::AlignmentSnapGuides guides() const { return guides_; }
    /// The part that is being dragged, or that a press would grab.
    [[nodiscard]] std::optional<pictal::SelectionFrameAdjustmentHandle> handle() const;
    [[nodiscard]] const pictal::WindowCandidate* windowUnderPointer() const;
    /// The display of the selection; without one, of the pointer.
    [[nodiscard]] std::optional<std::int64_t> displayIndex() const;
    [[nodiscard]] std::optional<Panels> panels() const;

  private:
    /// What a drag starts from. Without a handle it draws a new selection.
    struct Drag {
        std::optional<pictal::SelectionFrameAdjustmentHandle> handle;
        pictal::CGPoint start;
        pictal::CGRect rect;
        pictal::CGRect bounds;
        /// A press that never moves leaves the selection as it is; one that moves and comes back
        /// drags it back.
        bool moved = false;
    };

    void drag(Drag& drag);

    pictal::CGPoint pointer_;
    std::optional<pictal::CGRect> selection_;
    bool selectsWindow_ = false;
    pictal::AlignmentSnapGuides guides_;
    std::optional<Drag> drag_;
};
