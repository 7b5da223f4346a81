#include "PictalCore/Platform/ImageIO/detail/PNGStripWriter.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"

#include <algorithm>
#include <cstring>

namespace pictal::detail {

using kernels::RowFilter;
using kernels::rowMargin;

namespace {

/// Of a drawn strip fewer pixels in a hundred are fresh, and fewer differ from their neighbours.
constexpr std::size_t freshPercent = 12;
constexpr std::size_t changedPercent = 25;
/// Grey has so few levels that none is fresh for long. Photographs have more than half of their
/// pixels unlike both neighbours, drawn strips a tenth.
constexpr std::size_t changedGreyPercent = 40;

}  // namespace

PNGStripWriter::PNGStripWriter(std::int64_t width, PNG::ColorType colorType)
    : kernels_(kernels::filterRowKernels()),
      pixelBytes_(colorType == PNG::ColorType::grey  ? 1
                  : colorType == PNG::ColorType::rgb ? 3
                                                     : 4),
      rowBytes_(static_cast<std::size_t>(width) * pixelBytes_),
      row_(rowMargin + rowBytes_),
      above_(rowMargin + rowBytes_),
      straight_(static_cast<std::size_t>(width)) {}

bool PNGStripWriter::isDrawn(std::span<const Row> rows) {
    // Two rows of a whole strip tell it. Drawn strips have few fresh pixels even where text is
    // small and lines are many; those of photographs hardly anything else.
    const std::size_t first = rows.size() / 4, second = rows.size() * 3 / 4;
    fresh_.restart();
    for (std::size_t i = first; i < rows.size(); i += std::max<std::size_t>(1, second - first))
        fresh_.add(rows[i], i == 0 ? Row() : rows[i - 1]);
    const auto isBelow = [&](std::size_t count, std::size_t percent) {
        return count * 100 < fresh_.pixels() * percent;
    };
    if (pixelBytes_ == 1) return isBelow(fresh_.changed(), changedGreyPercent);
    return isBelow(fresh_.fresh(), freshPercent) && isBelow(fresh_.changed(), changedPercent);
}

void PNGStripWriter::pack(Row row, std::uint8_t* to) {
    if (pixelBytes_ == 1) {
        for (std::size_t i = 0; i < row.size(); ++i)
            to[i] = static_cast<std::uint8_t>(row[i]);
        return;
    }
    if (pixelBytes_ == 3) {
        kernels_.packRGB(row, to);
        return;
    }
    std::uint32_t alphas = 0xFF000000;
    for (const std::uint32_t pixel : row)
        alphas &= pixel;
    if (alphas != 0xFF000000) {
        kernels::alphaKernels().unpremultiply(row, straight_);
        row = straight_;
    }
    std::memcpy(to, row.data(), rowBytes_);
}

void PNGStripWriter::filter(std::span<const Row> rows, std::uint8_t* to) {
    const bool unfiltered = isDrawn(rows);
    for (const Row row : rows) {
        pack(row, row_.data() + rowMargin);
        const std::span bytes = std::span<const std::uint8_t>(row_).subspan(rowMargin);
        const std::uint8_t* const above = above_.data() + rowMargin;
        auto filter = RowFilter::none;
        if (!unfiltered) {
            const auto costs = kernels_.filterCosts(bytes, above, pixelBytes_);
            filter = static_cast<RowFilter>(std::ranges::min_element(costs) - costs.begin());
        }
        *to++ = static_cast<std::uint8_t>(filter);
        kernels_.filter(filter, bytes, above, pixelBytes_, to);
        to += rowBytes_;
        std::swap(row_, above_);
    }
}

}  // namespace pictal::detail
