#include "PictalCore/Platform/Registration/Verdict.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

namespace pictal::detail {

namespace {

constexpr std::size_t candidateCount = 8;
/// Displacements so close may be one movement, rounded line by line.
constexpr std::int64_t hardlyApart = 2;

double unit(double value) {
    return std::clamp(value, 0.0, 1.0);
}

RowBits without(const RowBits& bits, const RowBits& others) {
    RowBits rest(bits.size());
    for (std::size_t y = 0; y < bits.size(); ++y)
        rest[y] = bits[y] & ~others[y];
    return rest;
}

/// How likely a displacement is the movement: how much speaks for it, unique content most.
double weight(const Evidence& evidence, const RowRange& rows) {
    const RowRange range = evidence.overlap(rows);
    const double support = evidence.support(range);
    if (support == 0) return 0;
    const double share = support / (support + evidence.against(range));
    return (support + 4 * evidence.once(range)) * share;
}

}  // namespace

Verdict::Verdict(const Comparison& frames, std::optional<std::int64_t> withheld)
    : whole_{0, frames.rows()}, uniqueness_(frames.uniqueness()), votes_(frames), still_(frames) {
    for (const std::int64_t displacement : votes_.heaviest(candidateCount))
        if (displacement != withheld)
            candidates_.emplace_back(frames, votes_, still_, displacement);
    isStill_ = stillness(whole_) > 0;
    if (candidates_.empty()) return;
    best_ = static_cast<std::size_t>(
        std::ranges::max_element(candidates_, {},
                                 [&](const Evidence& e) { return weight(e, whole_); }) -
        candidates_.begin());
    joinNeighbours();
    compareWithRivals();
    // The heaviest one may be furniture that repeats, where another explains all that it does.
    for (std::size_t i = 0; i < candidates_.size(); ++i) {
        const auto better = betterRival();
        if (!better) break;
        best_ = *better;
        joinNeighbours();
        compareWithRivals();
    }
    oneLayer_ = oneLayer();
}

void Verdict::joinNeighbours() {
    Evidence& best = candidates_[best_];
    const double least = best.support(best.overlap(whole_)) / 20;
    std::vector<const Evidence*> neighbours;
    for (const Evidence& other : candidates_)
        if (&other != &best &&
            std::abs(other.displacement() - best.displacement()) <= hardlyApart &&
            other.support(other.overlap(whole_)) > least)
            neighbours.push_back(&other);
    for (const Evidence* const neighbour : neighbours)
        best.join(*neighbour);
}

void Verdict::compareWithRivals() {
    rivalries_.clear();
    const Evidence& best = candidates_[best_];
    for (std::size_t i = 0; i < candidates_.size(); ++i) {
        const Evidence& rival = candidates_[i];
        if (std::abs(rival.displacement() - best.displacement()) <= hardlyApart) continue;
        rivalries_.push_back({i, BitCounts(without(best.supporting(), rival.equal())),
                              BitCounts(without(best.supportingOnce(), rival.equal())),
                              BitCounts(without(rival.supporting(), best.equal())),
                              BitCounts(without(rival.supportingOnce(), best.equal()))});
    }
}

/// A rival that explains more of what only one of the two explains, where both can.
std::optional<std::size_t> Verdict::betterRival() const {
    const RowRange range = candidates_[best_].overlap(whole_);
    for (const auto& [index, mine, mineOnce, theirs, theirsOnce] : rivalries_) {
        const RowRange common = range.intersected(candidates_[index].overlap(whole_));
        const double forBest = mine.in(common) + 2 * mineOnce.in(common);
        const double forRival = theirs.in(common) + 2 * theirsOnce.in(common);
        if (forRival > forBest && forRival > 20) return index;
    }
    return std::nullopt;
}

double Verdict::stillness(const RowRange& rows) const {
    // Lists whose rows resemble one another stand still in part wherever they are.
    return unit((still_.share(rows) - 0.55) / 0.35) *
           unit((still_.writingShare(rows) - 0.8) / 0.1) *
           (1 - std::exp(-still_.testable(rows) * still_.share(rows) / 20));
}

double Verdict::uniquePlaces(const RowRange& range) const {
    return uniqueness_ * candidates_[best_].oncePlaces(range);
}

double Verdict::agreement(const RowRange& rows) const {
    const Evidence& best = candidates_[best_];
    const RowRange range = best.overlap(rows);
    const double support = best.support(range);
    if (support == 0) return 0;
    const double share = support / (support + best.against(range));
    const double places = uniquePlaces(range);
    const double unique = std::pow(unit(2 * best.once(range) / support), 2);
    // What has next to nothing unique is furniture, which has to agree throughout.
    const double repeated = 1 - unit(places / 8) * unique;
    const double least = 0.3 + 0.6 * repeated, enough = 0.6 + 0.37 * repeated;
    // Pictures that load late contradict in whole areas; where writing contradicts, it is another
    // page, or a corner of this one that moves on its own.
    const double writing = unit((support / (support + best.againstInLines(range)) - 0.4) / 0.15);
    const double unlessLate = unit((places - 4) / 6) * unit((share - 0.08) / 0.12) * unique;
    return std::max(unit((share - least) / (enough - least)), unlessLate) * writing;
}

double Verdict::evidence(const RowRange& rows) const {
    const Evidence& best = candidates_[best_];
    const RowRange range = best.overlap(rows);
    return 1 - std::exp(-(best.support(range) + 2 * best.once(range)) / 20);
}

double Verdict::margin(const RowRange& rows) const {
    const Evidence& best = candidates_[best_];
    const RowRange range = best.overlap(rows);
    const bool mostFound =
        uniquePlaces(range) >= 10 && votes_.once(best.displacement()) > 0.6 * votes_.onceMoved();
    double least = 1;
    for (const auto& [index, mine, mineOnce, theirs, theirsOnce] : rivalries_) {
        const Evidence& rival = candidates_[index];
        const RowRange theirRange = rival.overlap(rows);
        const double rivalOnce = rival.once(theirRange);
        const bool furniture =
            rivalOnce <= best.once(range) / 10 && best.once(range) > rival.support(theirRange) / 2;
        if (mostFound || furniture) continue;
        const RowRange common = range.intersected(theirRange);
        const double forBest = mine.in(common) + 2 * mineOnce.in(common);
        const double forRival = theirs.in(common) + 2 * theirsOnce.in(common);
        const double alike = std::min(best.support(common), rival.support(common));
        const double disagreeing = forBest + forRival;
        if (disagreeing == 0 && alike == 0) continue;
        least = std::min(least, (forBest - forRival) / (disagreeing + 0.01 * alike + 1));
    }
    return unit(least);
}

/// Falls where a part of the rows contradicts and is uniquely another displacement's: two layers
/// move, and which of them is the page cannot be told.
double Verdict::oneLayer() const {
    const Evidence& best = candidates_[best_];
    const RowRange range = best.overlap(whole_);
    double least = 1;
    for (const auto& rivalry : rivalries_) {
        const Evidence& rival = candidates_[rivalry.index];
        double theirRows = 0, rows = 0;
        const RowRange common = range.intersected(rival.overlap(whole_));
        for (std::int64_t y = common.first; y < common.last; ++y) {
            const RowRange row{y, y + 1};
            const double theirs = rivalry.theirsOnce.in(row);
            const double mine = rivalry.mine.in(row);
            theirRows += theirs > 0 && rivalry.theirs.in(row) > mine ? 1 : 0;
            rows += mine > 0 || rivalry.theirs.in(row) > 0 ? 1 : 0;
        }
        if (theirRows >= 12) least = std::min(least, 1 - unit((theirRows / rows - 0.1) / 0.15));
    }
    return least;
}

std::optional<Movement> Verdict::of(const RowRange& rows) const {
    std::optional<Movement> result;
    if (!candidates_.empty()) {
        const double confidence = agreement(rows) * margin(rows) * evidence(rows) * oneLayer_;
        if (confidence > 0) result = Movement{candidates_[best_].movement(), confidence};
    }
    const double still = isStill_ ? stillness(rows) : 0;
    if (still > (result ? result->confidence : 0)) result = Movement{0, still};
    return result;
}

bool Verdict::isAmbiguous() const {
    return !candidates_.empty() && agreement(whole_) * evidence(whole_) > 0.8;
}

}  // namespace pictal::detail
