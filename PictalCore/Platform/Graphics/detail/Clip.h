#pragma once

#include "PictalCore/Platform/Graphics/detail/CoverageMask.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace pictal::detail {

/// Where drawing is allowed: whole pixels of a rectangle, weighted by a mask if there is one.
/// Copying is cheap, so that states can be saved.
class Clip {
  public:
    explicit Clip(const PixelRect& bounds) : bounds_(bounds) {}

    [[nodiscard]] const PixelRect& bounds() const { return bounds_; }
    /// The mask's weights for a span inside the bounds; nothing where all of it is allowed.
    [[nodiscard]] std::optional<std::span<const std::uint8_t>> weights(std::int64_t row,
                                                                       std::int64_t left,
                                                                       std::int64_t right) const;

    void intersect(const PixelRect& bounds);
    /// Takes what is inside the mask as well.
    void intersect(CoverageMask&& mask);

  private:
    PixelRect bounds_;
    std::shared_ptr<const CoverageMask> mask_;
};

}  // namespace pictal::detail
