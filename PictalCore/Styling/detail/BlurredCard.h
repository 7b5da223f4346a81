#pragma once

#include "PictalCore/Styling/detail/RoundedMask.h"

#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// A rounded rectangle in the middle of its canvas: `padding` pixels from every side.
struct CardOutline {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t padding = 0;
    /// 0…half the shorter side
    double radius = 0;

    [[nodiscard]] std::int64_t canvasWidth() const { return width + 2 * padding; }
    [[nodiscard]] std::int64_t canvasHeight() const { return height + 2 * padding; }
};

/// Blurred edges at all the places where they can lie between the pixels of a row. The raster of
/// the edges is `cells` times as fine as that of the pixels.
class EdgeProfile {
  public:
    EdgeProfile(double shift, double deviation, std::int64_t cells);

    /// What an edge at 0, moved by the shift, covers of the pixel that begins at `cell`: 0…1, and
    /// exactly that far away.
    [[nodiscard]] float covered(std::int64_t cell) const;
    /// Adds weight × the coverage of the run begin…end − 1 of cells.
    /// @param first  the cell at which the first pixel of the row begins
    void addRun(std::span<float> row, std::int64_t first, std::int64_t begin, std::int64_t end,
                float weight) const;

  private:
    std::int64_t cells_;
    std::int64_t firstCell_;
    std::vector<float> values_;
};

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
