#include "PictalCore/Platform/ImageIO/detail/PNGStripWriter.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"

#include <algorithm>
#include <cstring>

namespace pictal::detail {

using kernels::RowFilter;
using kernels::rowMargin;

PNGStripWriter::PNGStripWriter(std::int64_t width, PNG::ColorType colorType)
    : kernels_(kernels::filterRowKernels()),
      pixelBytes_(colorType == PNG::ColorType::rgb ? 3 : 4),
      rowBytes_(static_cast<std::size_t>(width) * pixelBytes_),
      row_(rowMargin + rowBytes_),
      above_(rowMargin + rowBytes_),
      straight_(static_cast<std::size_t>(width)) {}

bool PNGStripWriter::repeats(std::span<const Row> rows) const {
    // Of user interfaces nearly all strips are above this, of photographs none.
    constexpr std::size_t percent = 85;
    std::size_t count = 0;
    std::size_t pixels = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i == 0 && rows.size() > 1) continue;  // has no upper neighbour at hand
        count += kernels_.countRepeats(rows[i], i == 0 ? Row() : rows[i - 1]);
        pixels += rows[i].size();
    }
    return count * 100 > pixels * percent;
}

void PNGStripWriter::pack(Row row, std::uint8_t* to) {
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
    const bool unfiltered = repeats(rows);
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
