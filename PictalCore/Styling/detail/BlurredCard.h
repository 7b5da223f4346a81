#pragma once

#include "PictalCore/Styling/detail/CardOutline.h"
#include "PictalCore/Styling/detail/EdgeProfile.h"
#include "PictalCore/Styling/detail/RoundedMask.h"

#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// An outline blurred by a Gaussian and moved, a canvas row at a time. A rectangle's blur is the
/// product of that of its sides; the blur of what the round corners cut off is taken from it.
class BlurredCard {
  public:
    struct Placement {
        double offsetX = 0;
        double offsetY = 0;
        double deviation = 0;
    };
    /// The columns first…first + count − 1 of the canvas.
    struct Columns {
        std::int64_t first = 0;
        std::int64_t count = 0;
    };

    BlurredCard(const CardOutline& outline, const Placement& placement, Columns columns);

    /// So many pixels from the canvas' end nothing changes any more along a row, or down a column,
    /// up to the same distance from the other end.
    [[nodiscard]] static std::int64_t settledAfter(const CardOutline& outline, double offset,
                                                   double deviation);

    /// The coverage of the columns of row y that begin at `begin`.
    /// @param coverage  of any length that fits
    void row(std::int64_t y, std::int64_t begin, std::span<float> coverage) const;

  private:
    /// The blur of some rows of the corners' cuts along the columns, their mean; zero outside
    /// `values`.
    struct CutRows {
        std::int64_t top = 0;
        std::int64_t bottom = 0;
        std::int64_t begin = 0;
        std::vector<float> values;
    };
    void blurCuts(const RoundedMask& mask, const EdgeProfile& across, std::int64_t firstCell);

    std::int64_t cells_;
    std::int64_t padding_;
    std::int64_t heightInCells_;
    std::int64_t cutHeight_;
    EdgeProfile down_;
    std::vector<float> across_;
    std::vector<CutRows> cuts_;
};

}  // namespace pictal::detail
