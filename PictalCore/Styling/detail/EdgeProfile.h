#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

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

}  // namespace pictal::detail
