#pragma once

#include "PictalCore/Platform/Registration/Comparison.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pictal::detail {

/// Displacements that the rare segments of two frames speak for. A segment is rare when its content
/// is in at most four rows of its column, in either frame; one that is in a single row of both
/// cannot be mistaken for another.
class Votes {
  public:
    explicit Votes(const Comparison& frames);

    /// The displacements with most votes, other than 0, the heaviest first.
    [[nodiscard]] std::vector<std::int64_t> heaviest(std::size_t count) const;
    /// The most segments that are unique in both frames and equally far apart.
    [[nodiscard]] std::uint32_t mostOnce() const;
    /// Segments that are unique in both frames and so far apart.
    [[nodiscard]] std::uint32_t once(std::int64_t displacement) const {
        return once_[index(displacement)];
    }
    /// All of those that moved.
    [[nodiscard]] std::uint32_t onceMoved() const { return onceMoved_; }
    /// Segments that are unique in their frame and have a counterpart in the other, a bit each.
    [[nodiscard]] std::uint64_t referenceOnce(std::int64_t y) const {
        return referenceOnce_[static_cast<std::size_t>(y)];
    }
    [[nodiscard]] std::uint64_t targetOnce(std::int64_t y) const {
        return targetOnce_[static_cast<std::size_t>(y)];
    }

  private:
    [[nodiscard]] std::size_t index(std::int64_t displacement) const {
        return static_cast<std::size_t>(displacement + rows_);
    }
    void countColumn(const Comparison& frames, std::size_t column);

    std::int64_t rows_;
    std::vector<std::uint32_t> weights_, once_;
    std::vector<std::uint64_t> referenceOnce_, targetOnce_;
    std::uint32_t onceMoved_ = 0;
};

}  // namespace pictal::detail
