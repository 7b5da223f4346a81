#pragma once

#include "PictalCore/Platform/Registration/Comparison.h"
#include "PictalCore/Platform/Registration/Evidence.h"
#include "PictalCore/Platform/Registration/StillContent.h"
#include "PictalCore/Platform/Registration/Votes.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace pictal::detail {

/// A vertical movement and how sure it is, 0…1.
struct Movement {
    double y = 0;
    double confidence = 0;
};

/// Weighs the displacements that two frames suggest against one another, once for the whole; bands
/// are then counted over their rows alone, and nothing is read again.
class Verdict {
  public:
    /// @param withheld  a displacement that is not considered, to see what is believed without it
    Verdict(const Comparison& frames, std::optional<std::int64_t> withheld);

    [[nodiscard]] const StillContent& still() const { return still_; }
    /// The most likely movement of these rows, however unsure; nothing when there is none. Rows
    /// other than the whole frame's confirm the whole frame's movement or say nothing.
    [[nodiscard]] std::optional<Movement> of(const RowRange& rows) const;
    /// Whether much speaks for a movement, but as much for another: looking closer cannot help.
    [[nodiscard]] bool isAmbiguous() const;

  private:
    struct Rivalry {
        std::size_t index;  ///< of the rival
        BitCounts mine, mineOnce, theirs, theirsOnce;
    };
    void compareWithRivals();
    [[nodiscard]] std::optional<std::size_t> betterRival() const;
    void joinNeighbours();
    [[nodiscard]] double stillness(const RowRange& rows) const;
    [[nodiscard]] double agreement(const RowRange& rows) const;
    [[nodiscard]] double margin(const RowRange& rows) const;
    [[nodiscard]] double evidence(const RowRange& rows) const;
    [[nodiscard]] double oneLayer() const;

    [[nodiscard]] double uniquePlaces(const RowRange& rows) const;

    RowRange whole_;
    double uniqueness_;
    Votes votes_;
    StillContent still_;
    std::vector<Evidence> candidates_;
    std::size_t best_ = 0;
    std::vector<Rivalry> rivalries_;
    double oneLayer_ = 1;
    bool isStill_ = false;
};

}  // namespace pictal::detail
