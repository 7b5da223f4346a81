#include "PictalCore/Platform/Registration/Votes.h"

#include "PictalCore/Platform/Graphics/Kernels/Segments.h"

#include <algorithm>
#include <array>
#include <bit>

namespace pictal::detail {

namespace {

constexpr std::size_t rare = 4;
/// So many columns vote: more cost time and say the same.
constexpr std::size_t votingColumns = 24;

/// The rows of one column with the same content.
struct Content {
    std::uint32_t key = 0;
    std::uint32_t next = 0;  // in the chain; 0 ends it
    std::array<std::size_t, 2> counts{};
    std::array<std::array<std::int64_t, rare>, 2> rows{};

    void add(std::size_t frame, std::int64_t row) {
        if (counts[frame] < rare) rows[frame][counts[frame]] = row;
        ++counts[frame];
    }
    [[nodiscard]] bool isRare(std::size_t frame) const {
        return counts[frame] > 0 && counts[frame] <= rare;
    }
};

/// A hash table whose clearing costs little.
class Contents {
  public:
    Contents() : nodes_(1) {}

    /// @return the content with this key; null if there is none and none is to be made
    Content* find(std::uint32_t key, bool make) {
        std::uint32_t& head = heads_[key % heads_.size()];
        for (std::uint32_t i = head; i != 0; i = nodes_[i].next)
            if (nodes_[i].key == key) return &nodes_[i];
        if (!make) return nullptr;
        nodes_.push_back({.key = key, .next = head});
        head = static_cast<std::uint32_t>(nodes_.size() - 1);
        return &nodes_.back();
    }
    [[nodiscard]] auto begin() const { return nodes_.begin() + 1; }
    [[nodiscard]] auto end() const { return nodes_.end(); }

  private:
    std::array<std::uint32_t, 2048> heads_{};
    std::vector<Content> nodes_;  // the first one stands for none
};

}  // namespace

Votes::Votes(const Comparison& frames)
    : rows_(frames.rows()),
      weights_(static_cast<std::size_t>(2 * rows_ + 1)),
      once_(weights_.size()),
      referenceOnce_(static_cast<std::size_t>(rows_)),
      targetOnce_(referenceOnce_.size()) {
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < kernels::maximumSegments; ++i)
        if (frames.columns() >> kernels::segmentBit(i) & 1) columns.push_back(i);
    const std::size_t count = std::min(columns.size(), votingColumns);
    for (std::size_t i = 0; i < count; ++i)
        countColumn(frames, columns[i * columns.size() / count]);
}

void Votes::countColumn(const Comparison& frames, std::size_t column) {
    const std::uint64_t bit = std::uint64_t{1} << kernels::segmentBit(column);
    Contents contents;
    for (std::int64_t y = 0; y < rows_; ++y)
        if (frames.referenceTestable(y) & bit)
            contents.find(frames.referenceKey(y, column), true)->add(0, y);
    for (std::int64_t y = 0; y < rows_; ++y)
        if (frames.targetTestable(y) & bit)
            if (Content* const content = contents.find(frames.targetKey(y, column), false))
                content->add(1, y);

    for (const Content& content : contents) {
        if (!content.isRare(0) || !content.isRare(1)) continue;
        const auto pairs = static_cast<std::uint32_t>(content.counts[0] * content.counts[1]);
        for (std::size_t i = 0; i < content.counts[0]; ++i)
            for (std::size_t j = 0; j < content.counts[1]; ++j)
                weights_[index(content.rows[0][i] - content.rows[1][j])] += 48 / pairs;
        if (content.counts[0] == 1)
            referenceOnce_[static_cast<std::size_t>(content.rows[0][0])] |= bit;
        if (content.counts[1] == 1)
            targetOnce_[static_cast<std::size_t>(content.rows[1][0])] |= bit;
        if (pairs == 1) {
            const std::int64_t displacement = content.rows[0][0] - content.rows[1][0];
            ++once_[index(displacement)];
            if (displacement != 0) ++onceMoved_;
        }
    }
}

std::uint32_t Votes::mostOnce() const {
    return std::ranges::max(once_);
}

std::vector<std::int64_t> Votes::heaviest(std::size_t count) const {
    std::vector<std::int64_t> best;
    const auto heavier = [&](std::int64_t a, std::int64_t b) {
        return weights_[index(a)] > weights_[index(b)];
    };
    for (std::int64_t d = -rows_; d <= rows_; ++d) {
        if (d == 0 || weights_[index(d)] == 0) continue;
        if (best.size() == count && !heavier(d, best.back())) continue;
        best.insert(std::ranges::upper_bound(best, d, heavier), d);
        if (best.size() > count) best.pop_back();
    }
    return best;
}

}  // namespace pictal::detail
