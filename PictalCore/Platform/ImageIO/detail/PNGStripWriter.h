#pragma once

#include "PictalCore/Platform/Graphics/Kernels/FilterRows.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Platform/ImageIO/detail/FreshColors.h"

namespace pictal::detail {

/// Turns rows of premultiplied pixels into filtered bytes of grey, RGB or RGBA, a strip of rows at
/// a time. Where a strip is drawn, as in a user interface, it stays unfiltered: the compressor
/// finds whole pixels again. Elsewhere each row takes the filter that leaves least.
class PNGStripWriter {
  public:
    static constexpr std::size_t rowCount = 16;
    using Row = std::span<const std::uint32_t>;

    /// @param colorType  grey, rgb or rgba
    PNGStripWriter(std::int64_t width, PNG::ColorType colorType);

    /// Bytes of a row with its filter type.
    [[nodiscard]] std::size_t rowBytes() const { return rowBytes_ + 1; }
    /// @param rows  the next ones, at most `rowCount`, and fewer only at the picture's end
    void filter(std::span<const Row> rows, std::uint8_t* to);

    /// Whether a strip of the same rows is drawn: the judgement of `filter`, which a writer may ask
    /// for beforehand, of another object.
    [[nodiscard]] bool isDrawn(std::span<const Row> rows);

  private:
    void pack(Row row, std::uint8_t* to);

    const kernels::FilterRowKernels& kernels_;
    std::size_t pixelBytes_;
    std::size_t rowBytes_;
    /// The row and the one above it, each after a margin.
    std::vector<std::uint8_t> row_;
    std::vector<std::uint8_t> above_;
    std::vector<std::uint32_t> straight_;
    FreshColors fresh_;
};

}  // namespace pictal::detail
