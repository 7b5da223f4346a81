#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pictal::detail {

/// Numbered items by the first row that they reach.
class RowBuckets {
  public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    RowBuckets(std::int64_t firstRow, std::int64_t endRow, std::size_t itemCount)
        : firstRow_(firstRow),
          heads_(static_cast<std::size_t>(endRow - firstRow), none),
          next_(itemCount, none) {}

    /// Items that are added last come first.
    void add(std::int64_t row, std::uint32_t item) {
        std::uint32_t& head = heads_[static_cast<std::size_t>(row - firstRow_)];
        next_[item] = head;
        head = item;
    }
    [[nodiscard]] std::uint32_t first(std::int64_t row) const {
        return heads_[static_cast<std::size_t>(row - firstRow_)];
    }
    [[nodiscard]] std::uint32_t after(std::uint32_t item) const { return next_[item]; }

  private:
    std::int64_t firstRow_;
    std::vector<std::uint32_t> heads_;
    std::vector<std::uint32_t> next_;
};

}  // namespace pictal::detail
