#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace pictal::detail {

/// The bits begin…end − 1 of a word, 0 ≤ begin < end ≤ 64.
[[nodiscard]] constexpr std::uint64_t bitRange(std::int64_t begin, std::int64_t end) {
    return (~std::uint64_t{0} >> (64 - (end - begin))) << begin;
}

/// Columns of a row, a bit each. Words that hold none are found and forgotten 64 at a time.
class ColumnSet {
  public:
    explicit ColumnSet(std::int64_t columns)
        : words_(static_cast<std::size_t>(columns + 63) / 64),
          summary_((words_.size() + 63) / 64) {}

    [[nodiscard]] std::size_t wordCount() const { return words_.size(); }
    [[nodiscard]] std::uint64_t word(std::size_t index) const { return words_[index]; }

    void insert(std::int64_t column) {
        insertInWord(static_cast<std::size_t>(column >> 6), std::uint64_t{1} << (column & 63));
    }
    void insertInWord(std::size_t index, std::uint64_t bits) {
        words_[index] |= bits;
        summary_[index >> 6] |= std::uint64_t{1} << (index & 63);
    }
    /// Columns begin…end − 1, begin < end.
    void insert(std::int64_t begin, std::int64_t end) {
        forWords(begin, end, [&](std::size_t index, std::uint64_t bits) {
            insertInWord(index, bits);
            return true;
        });
    }
    void insert(const ColumnSet& other) {
        other.forEachWord([&](std::size_t index) { insertInWord(index, other.words_[index]); });
    }
    [[nodiscard]] bool contains(std::int64_t begin, std::int64_t end) const {
        return forWords(begin, end, [&](std::size_t index, std::uint64_t bits) {
            return (words_[index] & bits) == bits;
        });
    }

    /// Calls `use(index, bits)` for each word of a range until it returns false.
    /// @return whether it never did
    template <class Use>
    static bool forWords(std::int64_t begin, std::int64_t end, Use use) {
        const auto last = static_cast<std::size_t>((end - 1) >> 6);
        auto index = static_cast<std::size_t>(begin >> 6);
        std::uint64_t bits = ~std::uint64_t{0} << (begin & 63);
        for (; index < last; ++index, bits = ~std::uint64_t{0})
            if (!use(index, bits)) return false;
        return use(index, bits & (~std::uint64_t{0} >> (63 - ((end - 1) & 63))));
    }
    /// Calls `use(index)` for each word that is not empty, from left to right.
    template <class Use>
    void forEachWord(Use use) const {
        for (std::size_t i = 0; i < summary_.size(); ++i)
            for (std::uint64_t bits = summary_[i]; bits != 0; bits &= bits - 1)
                use(i * 64 + static_cast<std::size_t>(std::countr_zero(bits)));
    }
    void clear() {
        forEachWord([&](std::size_t index) { words_[index] = 0; });
        std::ranges::fill(summary_, std::uint64_t{0});
    }

  private:
    std::vector<std::uint64_t> words_;
    /// A bit a word: which are not empty.
    std::vector<std::uint64_t> summary_;
};

}  // namespace pictal::detail
