#include "PictalCore/Platform/Graphics/detail/CoverageRow.h"

#include "PictalCore/Platform/Graphics/detail/SpanWriter.h"

#include <algorithm>
#include <bit>

namespace pictal::detail {
namespace {

/// Twice the area of a pixel.
constexpr int wholeBits = 2 * fixedBits + 1;
constexpr std::int64_t whole = std::int64_t{1} << wholeBits;

std::uint8_t level(std::int64_t area, FillRule rule) {
    std::int64_t size = area < 0 ? -area : area;
    if (rule == FillRule::evenOdd) {
        size &= 2 * whole - 1;
        size = std::min(size, 2 * whole - size);
    }
    return static_cast<std::uint8_t>((std::min(size, whole) * 255 + whole / 2) >> wholeBits);
}

}  // namespace

CoverageRow::CoverageRow(const PixelRect& area)
    : left_(area.left * fixedOne),
      width_(area.width() * fixedOne),
      cells_(static_cast<std::size_t>(area.width())),
      touched_(area.width()),
      levels_(static_cast<std::size_t>(area.width())) {}

void CoverageRow::addSloped(Fixed x1, Fixed x2, Fixed height) {
    // Only heights and x matter, so an edge that leads to the left is walked from its other end.
    const Fixed from = std::min(x1, x2) - left_;
    const Fixed to = std::max(x1, x2) - left_;
    if (from >= width_) return;
    const std::int64_t lastColumn = to >> fixedBits;
    if (from >> fixedBits == lastColumn && from >= 0) {
        const Fixed origin = lastColumn * fixedOne;
        return touch(lastColumn, height, height * (from + to - 2 * origin));
    }
    if (to <= 0) return touch(0, height, 0);

    // Heights at the sides of the columns come from the whole edge, never from one another.
    const double heightPerX = static_cast<double>(height) / static_cast<double>(to - from);
    const auto heightUpTo = [&](Fixed x) {
        return nearest(static_cast<double>(x - from) * heightPerX);
    };
    Fixed x = from;
    Fixed done = 0;
    if (x < 0) {
        done = heightUpTo(0);
        touch(0, done, 0);
        x = 0;
    }
    for (std::int64_t column = x >> fixedBits; x < std::min(to, width_); ++column) {
        const Fixed origin = column * fixedOne;
        const Fixed end = std::min(to, origin + fixedOne);
        const Fixed doneNext = end == to ? height : heightUpTo(end);
        touch(column, doneNext - done, (doneNext - done) * (x + end - 2 * origin));
        done = doneNext;
        x = end;
    }
}

void CoverageRow::flush(std::int64_t row, FillRule rule, CoverageSink& sink) {
    SpanWriter spans(row, left_ >> fixedBits, levels_, sink);
    Fixed cover = 0;
    std::int64_t column = 0;
    touched_.forEachWord([&](std::size_t word) {
        for (std::uint64_t bits = touched_.word(word); bits != 0; bits &= bits - 1) {
            const auto index = static_cast<std::int64_t>(word) * 64 + std::countr_zero(bits);
            if (index > column) spans.append(column, index, level(2 * fixedOne * cover, rule));
            Cell& cell = cells_[static_cast<std::size_t>(index)];
            cover += cell.cover;
            spans.append(index, index + 1, level(2 * fixedOne * cover - cell.area, rule));
            cell = {};
            column = index + 1;
        }
    });
    touched_.clear();
    const std::int64_t width = width_ >> fixedBits;
    if (column < width) spans.append(column, width, level(2 * fixedOne * cover, rule));
    spans.finish();
}

}  // namespace pictal::detail
