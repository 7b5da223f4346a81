#pragma once

#include "PictalCore/Platform/Registration/Comparison.h"
#include "PictalCore/Platform/Registration/RowBits.h"
#include "PictalCore/Platform/Registration/StillContent.h"
#include "PictalCore/Platform/Registration/Votes.h"

#include <cstdint>
#include <vector>

namespace pictal::detail {

/// What speaks for one displacement and against it, row by row of the reference.
class Evidence {
  public:
    Evidence(const Comparison& frames, const Votes& votes, const StillContent& still,
             std::int64_t displacement);

    [[nodiscard]] std::int64_t displacement() const { return displacement_; }
    /// The mean of the displacements that were joined, by what supports each.
    [[nodiscard]] double movement() const { return movement_; }
    /// Takes in what another displacement explains, one that is hardly another: between the pixels
    /// of a fractional scale each line of text moves by its own whole number.
    void join(const Evidence& neighbour);
    /// Rows that can be compared when only `rows` of both frames are looked at; where the edges of
    /// the overlap contradict, as under a translucent bar, they are left out.
    [[nodiscard]] RowRange overlap(const RowRange& rows) const {
        return rows.intersected(rows.moved(displacement_)).intersected(inside_);
    }
    [[nodiscard]] double support(const RowRange& range) const { return supports_.in(range); }
    [[nodiscard]] double against(const RowRange& range) const { return againsts_.in(range); }
    /// The contradictions that are no higher than a line of text.
    [[nodiscard]] double againstInLines(const RowRange& range) const { return lines_.in(range); }
    /// Supporting segments that are unique in both frames.
    [[nodiscard]] double once(const RowRange& range) const { return onces_.in(range); }

    /// In how many places there are such.
    [[nodiscard]] double oncePlaces(const RowRange& range) const { return places_.in(range); }

    [[nodiscard]] const RowBits& equal() const { return equal_; }
    [[nodiscard]] const RowBits& supporting() const { return support_; }
    [[nodiscard]] const RowBits& supportingOnce() const { return once_; }

  private:
    void count();
    void leaveOutEdges();

    std::int64_t displacement_;
    double movement_;
    double weight_ = 0;
    RowRange whole_, inside_;
    RowBits equal_, support_, against_, once_;
    BitCounts supports_, againsts_, lines_, onces_;
    PlaceCounts places_;
};

}  // namespace pictal::detail
