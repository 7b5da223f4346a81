#pragma once

#include <cstdint>
#include <span>

namespace pictal::detail {

/// Receives the coverage of a shape, span by span: rows from the top down, the spans of a row from
/// left to right and apart. What lies between the spans is not covered.
class CoverageSink {
  public:
    virtual ~CoverageSink() = default;

    /// Columns left…right − 1 are covered whole.
    virtual void solid(std::int64_t row, std::int64_t left, std::int64_t right) = 0;
    /// The pixel in column left + i is covered by coverage[i] / 255.
    virtual void varied(std::int64_t row, std::int64_t left,
                        std::span<const std::uint8_t> coverage) = 0;
};

}  // namespace pictal::detail
