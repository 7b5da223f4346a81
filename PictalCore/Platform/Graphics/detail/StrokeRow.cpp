#include "PictalCore/Platform/Graphics/detail/StrokeRow.h"

#include "PictalCore/Platform/Graphics/detail/SpanWriter.h"

#include <bit>

namespace pictal::detail {
namespace {

/// Floats from a place in the row carry radii up to this; doubles carry the rest.
constexpr CGFloat largestForFloats = 4096;

/// More in a word are many.
constexpr std::size_t manyCapsules = 8;

/// How far another capsule's axis may be ahead of the one that hides it.
constexpr CGFloat hidingTolerance = 1.0 / 4096;

std::uint8_t levelOf(CGFloat area) {
    const CGFloat raised = area * 255 + 0.5;  // rounds what is never negative
    return static_cast<std::uint8_t>(raised);
}

}  // namespace

StrokeRow::StrokeRow(const WorkArea& area, CGFloat radius)
    : area_(area),
      isLarge_(radius > largestForFloats),
      touched_(area.width),
      solid_(area.width),
      heads_(touched_.wordCount(), none),
      levels_(static_cast<std::size_t>(area.width)) {}

void StrokeRow::begin(std::int64_t row, const ColumnSet& solid) {
    row_ = static_cast<CGFloat>(row);
    touched_.insert(solid);
    solid_.insert(solid);
}

void StrokeRow::add(RowCapsule& at) {
    const Capsule& capsule = at.capsule();
    at.spans = capsule.top() <= row_ && capsule.bottom() >= row_ + 1;
    at.reach = capsule.reach(row_, at.top, row_ + 1, at.bottom);
    at.begin = area_.floor(at.reach.left);
    at.end = area_.ceil(at.reach.right);
    if (at.begin >= at.end) return;
    at.solidBegin = at.solidEnd = at.end;
    if (at.spans) {
        const std::int32_t from = area_.ceil(at.innermost(Side::left));
        const std::int32_t to = area_.floor(at.innermost(Side::right));
        if (from < to) {
            at.solidBegin = from;
            at.solidEnd = to;
            solid_.insert(from, to);
        }
    }
    touched_.insert(at.begin, at.end);
    capsules_.push_back(&at);
}

/// Puts the capsule on the lists of the words in which it has columns to be measured.
void StrokeRow::enlist(const RowCapsule& capsule) {
    const auto add = [&](std::size_t word, std::uint64_t bits) {
        if ((bits & ~solid_.word(word)) == 0) return true;
        std::int32_t& head = heads_[word];
        if (head != none && members_[static_cast<std::size_t>(head)].capsule == &capsule)
            return true;
        members_.push_back({&capsule, head});
        head = static_cast<std::int32_t>(members_.size() - 1);
        return true;
    };
    if (capsule.begin < capsule.solidBegin && !capsule.leftIsHidden)
        ColumnSet::forWords(capsule.begin, capsule.solidBegin, add);
    if (capsule.solidEnd < capsule.end && !capsule.rightIsHidden)
        ColumnSet::forWords(capsule.solidEnd, capsule.end, add);
}

void StrokeRow::flush(CoverageSink& sink) {
    for (const RowCapsule* capsule : capsules_)
        enlist(*capsule);

    const std::int64_t first = area_.clip.left - area_.left;
    const std::int64_t end = area_.clip.right - area_.left;
    SpanWriter spans(static_cast<std::int64_t>(row_), area_.left, levels_, sink);
    touched_.forEachWord([&](std::size_t word) {
        coverWord(word);
        const auto column = static_cast<std::int64_t>(word) * 64;
        const std::int64_t from = std::max(first - column, std::int64_t{0});
        const std::int64_t to = std::min(end - column, std::int64_t{64});
        const std::uint64_t solid = solid_.word(word);
        std::uint64_t rest = touched_.word(word) & bitRange(from, to);
        while (rest != 0) {
            const int begin = std::countr_zero(rest);
            const bool isSolid = (solid >> begin & 1) != 0;
            const std::uint64_t alike = (isSolid ? rest & solid : rest & ~solid) >> begin;
            const int stop = begin + std::countr_one(alike);
            if (isSolid)
                spans.append(column + begin, column + stop, 255);
            else
                spans.appendLevels(column + begin, column + stop);
            rest &= ~bitRange(begin, stop);
        }
    });
    spans.finish();

    touched_.clear();
    solid_.clear();
    capsules_.clear();
    members_.clear();
}

/// Measures what is touched and not covered wholly.
void StrokeRow::coverWord(std::size_t word) {
    inWord_.clear();
    for (std::int32_t i = heads_[word]; i != none; i = members_[static_cast<std::size_t>(i)].next)
        inWord_.push_back(members_[static_cast<std::size_t>(i)].capsule);
    heads_[word] = none;
    std::uint64_t open = touched_.word(word) & ~solid_.word(word);
    while (open != 0) {
        const int begin = std::countr_zero(open);
        const int end = begin + std::countr_one(open >> begin);
        const auto column = static_cast<std::int32_t>(word) * 64;
        // Where there are many, each is looked at only near its own columns.
        const int step = inWord_.size() > manyCapsules ? 8 : 64;
        for (int from = begin; from < end; from = (from / step + 1) * step)
            coverRun(column + from, column + std::min(end, (from / step + 1) * step));
        open &= ~bitRange(begin, end);
    }
}

void StrokeRow::coverRun(std::int32_t begin, std::int32_t end) {
    const Run run{row_, static_cast<CGFloat>(area_.left + begin), end - begin};
    fromLeft_.clear();
    fromRight_.clear();
    between_.clear();
    for (const RowCapsule* at : inWord_) {
        if (at->begin >= end || at->end <= begin) continue;
        if (at->spans && at->innermost(Side::right) >= run.right())
            fromRight_.push_back(at);
        else if (at->spans && at->innermost(Side::left) <= run.left)
            fromLeft_.push_back(at);
        else
            between_.push_back(at);
    }
    const auto levels = std::span(levels_).subspan(static_cast<std::size_t>(begin),
                                                   static_cast<std::size_t>(end - begin));
    if (coverByFormulas(run, levels)) return;
    if (isLarge_) return coverByLines(linesOfLarge_, run, levels);
    coverByLines(lines_, run, levels);
}

/// Covers the run exactly, if only straight edges bound what is covered: one from each side at
/// most, or both sides of one capsule, or a horizontal stretch of one away from its caps.
bool StrokeRow::coverByFormulas(const Run& run, std::span<std::uint8_t> levels) const {
    std::optional<StraightEdge> left;
    std::optional<StraightEdge> right;
    CGFloat everywhere = 0;
    if (between_.empty()) {
        left = boundary(Side::left, fromRight_);
        right = boundary(Side::right, fromLeft_);
        if ((!left && !fromRight_.empty()) || (!right && !fromLeft_.empty())) return false;
        if (left && right && !right->isLeftOf(*left)) return false;
        everywhere = right ? 1 : 0;
    } else {
        if (between_.size() > 1 || !fromLeft_.empty() || !fromRight_.empty()) return false;
        const Capsule& capsule = between_.front()->capsule();
        if (capsule.upper().y == capsule.lower().y) {
            const auto [from, to] = std::minmax({capsule.upper().x, capsule.lower().x});
            if (run.left < from || run.right() > to) return false;
            everywhere = std::min(capsule.bottom(), row_ + 1) - std::max(capsule.top(), row_);
        } else {
            left = boundary(Side::left, between_);
            right = boundary(Side::right, between_);
            if (!left || !right) return false;
        }
    }
    const auto areaUpTo = [&](CGFloat x) {
        return (left ? left->areaUpTo(x) : 0) - (right ? right->areaUpTo(x) : 0);
    };
    CGFloat before = areaUpTo(run.left);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const CGFloat upTo = areaUpTo(run.left + static_cast<CGFloat>(i + 1));
        levels[i] = levelOf(everywhere + upTo - before);
        before = upTo;
    }
    return true;
}

/// The capsule that reaches farthest to a side on average.
const RowCapsule& StrokeRow::outermost(Side side, const Capsules& capsules) {
    const auto reach = [side](const RowCapsule& at) {
        return (at.top.end(side) + at.bottom.end(side)) * sign(side);
    };
    const RowCapsule* farthest = capsules.front();
    for (const RowCapsule* at : capsules) {
        const CGFloat ahead = reach(*at) - reach(*farthest);
        if (ahead > 0 || (ahead == 0 && at->of->segment < farthest->of->segment)) farthest = at;
    }
    return *farthest;
}

/// The common edge of the capsules at a side, if one of them has it to itself throughout the row
/// and it is straight.
std::optional<StraightEdge> StrokeRow::boundary(Side side, const Capsules& capsules) const {
    if (capsules.empty()) return std::nullopt;
    const RowCapsule& first = outermost(side, capsules);
    if (!first.capsule().isStraight(side, row_, row_ + 1)) return std::nullopt;
    for (const RowCapsule* other : capsules)
        if (other != &first && !hides(first, *other, side)) return std::nullopt;
    return StraightEdge(first.top.end(side), first.bottom.end(side));
}

/// Whether the other's boundary in this row lies behind the straight side of the capsule: with one
/// radius for both, whether the points of its axis that the boundary belongs to lie behind the
/// axis.
bool StrokeRow::hides(const RowCapsule& capsule, const RowCapsule& other, Side side) const {
    const CGPoint along = capsule.capsule().along();
    const CGPoint on = capsule.capsule().upper();
    const CGFloat radius = capsule.capsule().radius();
    const auto isBehind = [&](CGPoint point) {
        const CGFloat ahead = (point.x - on.x) * along.y - (point.y - on.y) * along.x;
        return ahead * sign(side) <= hidingTolerance * radius;
    };
    return isBehind(other.capsule().axisPoint(side, row_)) &&
           isBehind(other.capsule().axisPoint(side, row_ + 1));
}

template <class T>
void StrokeRow::coverByLines(RunLines<T>& lines, const Run& run, std::span<std::uint8_t> levels) {
    lines.reset(run);
    for (const Side side : {Side::left, Side::right}) {
        const Capsules& capsules = side == Side::left ? fromRight_ : fromLeft_;
        if (capsules.empty()) continue;
        // A side bends no more than the border of a disc, so it lies in one when its ends do.
        const RowCapsule& first = outermost(side, capsules);
        const CGPoint center = first.capsule().axisPoint(side, row_ + 0.5);
        const CGFloat radius = first.capsule().radius();
        const auto isInDisc = [&](CGFloat x, CGFloat y) {
            const CGPoint apart{x - center.x, y - center.y};
            return apart.x * apart.x + apart.y * apart.y <= radius * radius;
        };
        for (const RowCapsule* at : capsules)
            if (at == &first || !isInDisc(at->top.end(side), row_) ||
                !isInDisc(at->bottom.end(side), row_ + 1))
                lines.addEnd(side, *at->of);
    }
    for (const RowCapsule* at : between_)
        lines.add(*at->of);
    lines.cover(levels);
}

}  // namespace pictal::detail
