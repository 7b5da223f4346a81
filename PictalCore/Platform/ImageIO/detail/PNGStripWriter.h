#pragma once

#include "PictalCore/Platform/Graphics/Kernels/FilterRows.h"
#include "PictalCore/Platform/ImageIO/PNG.h"

namespace pictal::detail {

/// Turns rows of premultiplied pixels into filtered bytes of RGB or RGBA, a strip of rows at a
/// time. Where most pixels repeat a neighbour, as in a user interface, a strip stays unfiltered:
/// the compressor finds whole pixels again. Elsewhere each row takes the filter that leaves least.
class PNGStripWriter {
  public:
    static constexpr std::size_t rowCount = 16;
    using Row = std::span<const std::uint32_t>;

    /// @param colorType  rgb or rgba
    PNGStripWriter(std::int64_t width, PNG::ColorType colorType);

    /// Bytes of a row with its filter type.
    [[nodiscard]] std::size_t rowBytes() const { return rowBytes_ + 1; }
    /// @param rows  the next ones, at most `rowCount`, and fewer only at the picture's end
    void filter(std::span<const Row> rows, std::uint8_t* to);

  private:
    [[nodiscard]] bool repeats(std::span<const Row> rows) const;
    void pack(Row row, std::uint8_t* to);

    const kernels::FilterRowKernels& kernels_;
    std::size_t pixelBytes_;
    std::size_t rowBytes_;
    /// The row and the one above it, each after a margin.
    std::vector<std::uint8_t> row_;
    std::vector<std::uint8_t> above_;
    std::vector<std::uint32_t> straight_;
};

}  // namespace pictal::detail
