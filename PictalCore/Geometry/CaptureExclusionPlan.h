#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace pictal {

/// What a capture leaves out: the overlay's own windows.
class CaptureExclusionPlan {
  public:
    /// Leaves out only the listed windows, in the given order, not the whole application.
    [[nodiscard]] static CaptureExclusionPlan overlayWindows(std::vector<std::uint32_t> windowIDs) {
        return {std::move(windowIDs), false};
    }

    /// The platform's window numbers.
    [[nodiscard]] const std::vector<std::uint32_t>& excludedWindowIDs() const {
        return excludedWindowIDs_;
    }
    [[nodiscard]] bool excludesCurrentApplication() const { return excludesCurrentApplication_; }

    friend bool operator==(const CaptureExclusionPlan&, const CaptureExclusionPlan&) = default;

  private:
    CaptureExclusionPlan(std::vector<std::uint32_t> windowIDs, bool currentApplication)
        : excludedWindowIDs_(std::move(windowIDs)),
          excludesCurrentApplication_(currentApplication) {}

    std::vector<std::uint32_t> excludedWindowIDs_;
    bool excludesCurrentApplication_;
};

}  // namespace pictal
