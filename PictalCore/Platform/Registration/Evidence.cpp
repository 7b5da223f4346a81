#include "PictalCore/Platform/Registration/Evidence.h"

#include <bit>

namespace pictal::detail {

Evidence::Evidence(const Comparison& frames, const Votes& votes, const StillContent& still,
                   std::int64_t displacement)
    : displacement_(displacement), movement_(static_cast<double>(displacement)) {
    const RowRange whole{0, frames.rows()};
    whole_ = whole.intersected(whole.moved(displacement));
    const auto rows = static_cast<std::size_t>(frames.rows());
    RowBits raw(rows);
    for (std::int64_t y = whole_.first; y < whole_.last; ++y)
        raw[static_cast<std::size_t>(y)] = frames.equal(y, y - displacement) & frames.columns();
    equal_ = runsOfThree(raw);

    support_.resize(rows);
    against_.resize(rows);
    once_.resize(rows);
    for (std::int64_t y = whole_.first; y < whole_.last; ++y) {
        const auto row = static_cast<std::size_t>(y);
        const std::int64_t other = y - displacement;
        const std::uint64_t mobile = still.mobile(y) & still.mobile(other);
        const std::uint64_t reference = frames.referenceTestable(y);
        support_[row] = equal_[row] & reference & mobile;
        against_[row] = ~equal_[row] & (reference | frames.targetTestable(other)) & mobile;
        once_[row] = support_[row] & votes.referenceOnce(y) & votes.targetOnce(other);
    }
    count();
    weight_ = supports_.in(inside_);
}

void Evidence::count() {
    inside_ = whole_;
    leaveOutEdges();
    supports_ = BitCounts(support_);
    againsts_ = BitCounts(against_);
    lines_ = BitCounts(shortRuns(against_));
    onces_ = BitCounts(once_);
    places_ = PlaceCounts(once_);
}

void Evidence::join(const Evidence& neighbour) {
    for (std::size_t y = 0; y < equal_.size(); ++y) {
        equal_[y] |= neighbour.equal_[y];
        support_[y] |= neighbour.support_[y];
        against_[y] &= ~neighbour.equal_[y];
        once_[y] |= neighbour.once_[y];
    }
    const double weight = weight_ + neighbour.weight_;
    movement_ = (movement_ * weight_ + neighbour.movement_ * neighbour.weight_) / weight;
    weight_ = weight;
    count();
}

/// Cuts off, at either end of the overlap, the rows whose contradictions outweigh their support by
/// most; at most a seventh of the frame.
void Evidence::leaveOutEdges() {
    const std::int64_t most = std::ssize(against_) / 7;
    const auto worstEdge = [&](std::int64_t from, std::int64_t step) {
        std::int64_t balance = 0, worst = 0, length = 0;
        const std::int64_t limit = std::min(most, inside_.last - inside_.first);
        for (std::int64_t i = 0; i < limit; ++i) {
            const auto row = static_cast<std::size_t>(from + i * step);
            balance += std::popcount(against_[row]) - std::popcount(support_[row]);
            if (balance > worst) {
                worst = balance;
                length = i + 1;
            }
        }
        return length;
    };
    inside_.first += worstEdge(inside_.first, 1);
    inside_.last -= worstEdge(inside_.last - 1, -1);
}

}  // namespace pictal::detail
