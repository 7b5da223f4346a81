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
///
/// How far off it is, in levels of 255, for a deviation σ:
/// - The Gaussian ends at 4.5 σ, behind which 3.4e-6 of it are left: 0.001 levels.
/// - The sides are means over the pixel in closed form, so a square corner is off by no more.
/// - Cuts are even within cells of a width c. An edge at t in a cell moves a mass of c − t by t /
/// 2,
///   at most c² / 8, and the blur changes by that times the steepest slope of its bell, 0.242 / σ².
///   Cells of σ / 6 make it 0.21 levels; rows that are taken together, no higher, 0.21 again.
/// - Below σ = 3/8 cells stay at 1/16 of a pixel and there is no such bound but at σ = 0, where
///   means over pixels do not see how cells are covered; tests measure it.
/// Layers that are composed add their errors, each weighed by its opacity. Tests hold the composed
/// and rounded card to 0.7 levels, of which rounding is 0.5.
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
