#pragma once

#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/PixelRect.h"

#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// The coverage of every pixel of an area; also a sink, so that a rasteriser fills it.
class CoverageMask : public CoverageSink {
  public:
    /// Nothing is covered at first.
    explicit CoverageMask(const PixelRect& area);

    [[nodiscard]] const PixelRect& area() const { return area_; }
    /// Columns left…right − 1 of a row, all inside the area.
    [[nodiscard]] std::span<std::uint8_t> span(std::int64_t row, std::int64_t left,
                                               std::int64_t right);
    [[nodiscard]] std::span<const std::uint8_t> span(std::int64_t row, std::int64_t left,
                                                     std::int64_t right) const;

    void solid(std::int64_t row, std::int64_t left, std::int64_t right) override;
    void varied(std::int64_t row, std::int64_t left,
                std::span<const std::uint8_t> coverage) override;

  private:
    PixelRect area_;
    std::vector<std::uint8_t> coverage_;
};

}  // namespace pictal::detail
