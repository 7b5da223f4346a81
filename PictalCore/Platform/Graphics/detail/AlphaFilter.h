#pragma once

#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/ImageSource.h"

#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// Passes coverage on, weighed by the alpha of an image's pixels.
class AlphaFilter final : public CoverageSink {
  public:
    AlphaFilter(ImageSource& source, CoverageSink& next) : source_(source), next_(next) {}

    void solid(std::int64_t row, std::int64_t left, std::int64_t right) override;
    void varied(std::int64_t row, std::int64_t left,
                std::span<const std::uint8_t> coverage) override;

  private:
    ImageSource& source_;
    CoverageSink& next_;
    std::vector<std::uint8_t> alphas_;
};

}  // namespace pictal::detail
