#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/Kernels/Resample.h"

#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// An image at another size, made row by row in its own colour space: premultiplied pixels, each
/// rounded once. Meant to be read from one end to the other; work and memory are in proportion to
/// the pixels of the image and of the result that take part, whatever the two scales are.
class ScaledRows {
  public:
    /// One axis of the result, and which of its pixels are wanted: at least one.
    struct Axis {
        kernels::ScaledAxis scale;
        std::int64_t first = 0;
        std::int64_t count = 0;

        /// The whole of `from` pixels as `to` ones.
        [[nodiscard]] static Axis whole(std::int64_t from, std::int64_t to) {
            return {{0, static_cast<double>(from) / static_cast<double>(to)}, 0, to};
        }
    };

    /// @param image  not empty
    ScaledRows(const CGImage& image, const Axis& columns, const Axis& rows,
               kernels::Shrinking shrinking);

    /// The wanted pixels of a wanted row. The span lasts until the next call.
    [[nodiscard]] std::span<const std::uint32_t> row(std::int64_t row);

  private:
    /// The sums of a whole row of the source, made narrower or wider.
    [[nodiscard]] const float* narrowed(std::size_t sourceRow);
    /// The part of a row of the source that is used.
    [[nodiscard]] const std::uint32_t* source(std::size_t sourceRow) const;

    CGImage image_;
    std::int64_t firstRow_;
    kernels::Taps columns_;
    kernels::Taps rows_;
    std::size_t usedFrom_ = 0;
    std::size_t usedCount_ = 0;
    /// Where rows are added, a source row is made narrower once and kept for the rows that need it.
    bool growsDown_;
    std::size_t kept_ = 0;  // how many of them
    std::vector<float> keptSums_;
    std::vector<std::size_t> keptRows_;
    std::vector<float> wide_;
    std::vector<float> sums_;
    std::vector<std::uint32_t> pixels_;
    std::vector<const std::uint32_t*> rowPointers_;
    std::vector<const float*> sumPointers_;
};

}  // namespace pictal::detail
