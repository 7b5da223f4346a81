#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

/// Finds the window under the pointer. Global screen coordinates in points, y growing upward.
namespace pictal {

/// One window on screen.
struct WindowCandidate {
    /// The platform's window number.
    std::uint32_t id = 0;
    CGRect appKitFrame;
    std::string title;
    std::string ownerName;
    /// The process id of the owning application.
    std::int32_t ownerPID = 0;

    WindowCandidate() = default;
    /// Stores the frame standardised.
    WindowCandidate(std::uint32_t windowID, const CGRect& frame, std::string windowTitle,
                    std::string owner, std::int32_t ownerProcess)
        : id(windowID),
          appKitFrame(frame.standardized()),
          title(std::move(windowTitle)),
          ownerName(std::move(owner)),
          ownerPID(ownerProcess) {}

    friend bool operator==(const WindowCandidate&, const WindowCandidate&) = default;
};

namespace WindowHitTester {

/// @param candidates   front to back: the first that qualifies wins
/// @param minimumSize  a window smaller than this on either axis is ignored, even in front
/// @return a pointer into the list, or nullptr where no window is
[[nodiscard]] PICTAL_API const WindowCandidate* hitTest(CGPoint point,
                                                        std::span<const WindowCandidate> candidates,
                                                        CGSize minimumSize);
/// A temporary list would be gone before its window could be looked at.
const WindowCandidate* hitTest(CGPoint point, const std::vector<WindowCandidate>&& candidates,
                               CGSize minimumSize) = delete;

}  // namespace WindowHitTester
}  // namespace pictal
