#pragma once

#include "PictalCore/Platform/Graphics/detail/StrokeRow.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// Takes a stroke's capsules to the rows of pixels through bands of ever fewer rows, so that what
/// is hidden in a whole band is looked at once, not in each of its rows: however many capsules
/// cross, a picture that is covered is done.
class StrokeBands {
  public:
    static constexpr std::int64_t tallest = 64;

    StrokeBands(const WorkArea& area, CGFloat radius);

    /// Reports the rows from `first`, a multiple of `tallest`, on.
    /// @param capsules  all that reach these rows
    void rasterize(std::int64_t first, std::span<const StrokeCapsule> capsules, CoverageSink& sink);

  private:
    struct Candidate {
        const StrokeCapsule* of;
        std::int32_t firstRow;
        std::int32_t endRow;
        bool leftIsHidden;
        bool rightIsHidden;
    };
    using Candidates = std::vector<Candidate>;

    struct Band {
        explicit Band(const WorkArea& area);

        std::int64_t first = 0;
        std::int64_t rows = 0;
        /// Columns that are covered in all rows.
        ColumnSet solid;
        std::vector<RowCapsule> capsules;
        /// What goes on to lower bands.
        Candidates rest;
        /// For each word, the capsule that reaches farthest to the left and to the right there.
        std::array<std::vector<const StrokeCapsule*>, 2> farthest;
    };

    void enter(std::size_t level, std::int64_t first, const Candidates& candidates,
               CoverageSink& sink);
    bool look(Band& band, const Candidate& candidate, bool isLowest);
    void leaveOutHidden(Band& band);
    void noteFarthest(Band& band, const RowCapsule& at, Side side) const;
    [[nodiscard]] bool isHidden(const Band& band, const RowCapsule& at, Side side) const;
    void rasterizeRows(Band& band, CoverageSink& sink);

    WorkArea area_;
    CGFloat radius_;
    std::vector<Band> bands_;
    Candidates all_;
    StrokeRow pixels_;
};

}  // namespace pictal::detail
