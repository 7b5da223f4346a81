#include "PictalCore/Platform/Graphics/detail/ScaledImageSource.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

namespace {

/// The axis, with the pixels of first…end − 1 that the image touches.
std::optional<ScaledRows::Axis> axisOf(CGFloat step, CGFloat start, std::int64_t size,
                                       std::int64_t first, std::int64_t end) {
    const CGFloat ends[] = {-start / step, (static_cast<CGFloat>(size) - start) / step};
    for (const CGFloat side : ends)
        if (!std::isfinite(side)) return std::nullopt;
    const auto bounded = [=](CGFloat side) {
        return static_cast<std::int64_t>(
            std::clamp(side, static_cast<CGFloat>(first), static_cast<CGFloat>(end)));
    };
    // A pixel more on either side, since coverage is rounded its own way.
    const std::int64_t from = bounded(std::floor(std::min(ends[0], ends[1])) - 1);
    const std::int64_t to = bounded(std::ceil(std::max(ends[0], ends[1])) + 1);
    if (from >= to) return std::nullopt;
    return ScaledRows::Axis{{start, step}, from, to - from};
}

}  // namespace

std::optional<ScaledImageSource> ScaledImageSource::make(const CGImage& image,
                                                         const AffineTransform& deviceToImage,
                                                         const PixelRect& area) {
    const AffineTransform& t = deviceToImage;
    if (t.b != 0 || t.c != 0) return std::nullopt;
    const auto columns = axisOf(t.a, t.tx, image.width(), area.left, area.right);
    const auto rows = axisOf(t.d, t.ty, image.height(), area.top, area.bottom);
    if (!columns || !rows) return std::nullopt;
    return ScaledImageSource(image, *columns, *rows);
}

ScaledImageSource::ScaledImageSource(const CGImage& image, const ScaledRows::Axis& columns,
                                     const ScaledRows::Axis& rows)
    : rows_(image, columns, rows, kernels::Shrinking::mean),
      area_{columns.first, rows.first, columns.first + columns.count, rows.first + rows.count},
      current_(rows.first - 1) {}

std::span<const std::uint32_t> ScaledImageSource::pixels(std::int64_t row, std::int64_t left,
                                                         std::int64_t count) {
    if (left < area_.left || left + count > area_.right || row < area_.top || row >= area_.bottom)
        return {};
    if (row != current_) {
        currentPixels_ = rows_.row(row);
        current_ = row;
    }
    return currentPixels_.subspan(static_cast<std::size_t>(left - area_.left),
                                  static_cast<std::size_t>(count));
}

}  // namespace pictal::detail
