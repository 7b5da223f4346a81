#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pictal::detail {

/// Two frames of one size, as far as a registration asks about them. Rows are words with one bit a
/// column of segments; a displacement d lays row y − d of the target on row y of the reference.
class Comparison {
  public:
    virtual ~Comparison() = default;

    [[nodiscard]] virtual std::int64_t rows() const = 0;
    /// The columns that can be compared.
    [[nodiscard]] virtual std::uint64_t columns() const = 0;
    /// Segments whose content tells how it moved.
    [[nodiscard]] virtual std::uint64_t referenceTestable(std::int64_t y) const = 0;
    [[nodiscard]] virtual std::uint64_t targetTestable(std::int64_t y) const = 0;
    /// A number that equal segments share and others hardly do.
    [[nodiscard]] virtual std::uint32_t referenceKey(std::int64_t y, std::size_t column) const = 0;
    [[nodiscard]] virtual std::uint32_t targetKey(std::int64_t y, std::size_t column) const = 0;
    /// Where row y of the reference is row `other` of the target.
    [[nodiscard]] virtual std::uint64_t equal(std::int64_t y, std::int64_t other) const = 0;
    /// Where it is that row of the target without a movement to the side: what stands still.
    [[nodiscard]] virtual std::uint64_t still(std::int64_t y) const = 0;
    /// How far content that seems unique is to be believed, 0…1.
    [[nodiscard]] virtual double uniqueness() const { return 1; }
};

}  // namespace pictal::detail
