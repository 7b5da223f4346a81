#include "PictalCore/Platform/Graphics/Pixels/ScaledRows.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pictal::detail {

namespace {

constexpr std::size_t components = 4;
constexpr std::size_t noRow = std::numeric_limits<std::size_t>::max();
constexpr float whole = 1;

const kernels::ResampleKernels& resample() {
    static const kernels::ResampleKernels& best = kernels::resampleKernels();
    return best;
}

}  // namespace

ScaledRows::ScaledRows(const CGImage& image, const Axis& columns, const Axis& rows,
                       kernels::Shrinking shrinking)
    : image_(image),
      firstRow_(rows.first),
      columns_(
          kernels::tapsOf(columns.scale, shrinking, image.width(), columns.first, columns.count)),
      rows_(kernels::tapsOf(rows.scale, shrinking, image.height(), rows.first, rows.count)),
      growsDown_(std::abs(rows.scale.step) < 1) {
    usedFrom_ = noRow;
    std::size_t usedTo = 0;
    for (const auto& window : columns_.windows) {
        usedFrom_ = std::min(usedFrom_, window.first);
        usedTo = std::max(usedTo, window.first + window.count);
    }
    usedCount_ = usedTo - usedFrom_;
    for (const auto& window : rows_.windows)
        kept_ = std::max(kept_, window.count);
    wide_.resize(usedCount_ * components);
    sums_.resize(columns_.windows.size() * components);
    pixels_.resize(columns_.windows.size());
    if (!growsDown_) return;
    keptSums_.resize(kept_ * sums_.size());
    keptRows_.resize(kept_, noRow);
}

const std::uint32_t* ScaledRows::source(std::size_t sourceRow) const {
    return image_.row(static_cast<std::int64_t>(sourceRow)).subspan(usedFrom_).data();
}

const float* ScaledRows::narrowed(std::size_t sourceRow) {
    const std::size_t slot = sourceRow % kept_;  // the rows of a window lie in slots of their own
    const auto sums = std::span(keptSums_).subspan(slot * sums_.size(), sums_.size());
    if (keptRows_[slot] != sourceRow) {
        const std::uint32_t* const row = source(sourceRow);
        resample().sumRows({&row, 1}, {&whole, 1}, wide_);
        resample().sumColumns(wide_, usedFrom_, columns_, sums);
        keptRows_[slot] = sourceRow;
    }
    return sums.data();
}

std::span<const std::uint32_t> ScaledRows::row(std::int64_t row) {
    const auto& window = rows_.windows[static_cast<std::size_t>(row - firstRow_)];
    rowPointers_.clear();
    sumPointers_.clear();
    for (std::size_t i = 0; i < window.count; ++i) {
        if (growsDown_)
            sumPointers_.push_back(narrowed(window.first + i));
        else
            rowPointers_.push_back(source(window.first + i));
    }
    if (growsDown_) {
        resample().sumSums(sumPointers_, rows_.weightsOf(window), sums_);
    } else {
        resample().sumRows(rowPointers_, rows_.weightsOf(window), wide_);
        resample().sumColumns(wide_, usedFrom_, columns_, sums_);
    }
    resample().toPixels(sums_, pixels_);
    return pixels_;
}

}  // namespace pictal::detail
