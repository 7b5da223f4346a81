#pragma once

#include "PictalCore/Geometry/WindowHitTester.h"

#include <expected>
#include <istream>
#include <string>
#include <vector>

/// A gesture that was recorded, one line of words and numbers each; `#` starts a comment:
///
///     display X Y WIDTH HEIGHT
///     window ID X Y WIDTH HEIGHT     front to back
///     press X Y                      also: move, release
struct Recording {
    enum class Event { press, move, release };
    struct Step {
        Event event;
        pictal::CGPoint point;
    };

    std::vector<pictal::CGRect> displays;
    std::vector<pictal::WindowCandidate> windows;
    std::vector<Step> steps;

    /// @return one line that says which line cannot be used, and why, or that none can be read
    [[nodiscard]] static std::expected<Recording, std::string> read(std::istream& input);
};
