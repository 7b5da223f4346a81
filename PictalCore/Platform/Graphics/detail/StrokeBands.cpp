#include "PictalCore/Platform/Graphics/detail/StrokeBands.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace pictal::detail {
namespace {

constexpr std::array<std::int64_t, 2> bandRows{StrokeBands::tallest, 8};

std::size_t indexOf(Side side) {
    return side == Side::left ? 0 : 1;
}

/// The columns of a work area that a side of a capsule runs through, if they lie in one word of it.
struct SideColumns {
    std::int32_t begin = 0;
    std::int32_t end = 0;

    [[nodiscard]] std::size_t word() const { return static_cast<std::size_t>(begin >> 6); }
    /// The border between them and what the capsule covers wholly.
    [[nodiscard]] std::int32_t inner(Side side) const { return side == Side::left ? end : begin; }
};

std::optional<SideColumns> sideColumns(const RowCapsule& at, Side side, const WorkArea& area) {
    const auto [low, high] = std::minmax({at.reach.end(side), at.innermost(side)});
    const auto left = static_cast<CGFloat>(area.left);
    if (!(low >= left && high <= left + static_cast<CGFloat>(area.width))) return std::nullopt;
    const SideColumns columns{area.floor(low), area.ceil(high)};
    if (columns.begin >= columns.end || columns.begin >> 6 != (columns.end - 1) >> 6)
        return std::nullopt;
    return columns;
}

}  // namespace

StrokeBands::Band::Band(const WorkArea& area) : solid(area.width) {
    for (auto& ofSide : farthest)
        ofSide.resize(solid.wordCount());
}

StrokeBands::StrokeBands(const WorkArea& area, CGFloat radius)
    : area_(area), radius_(radius), bands_(bandRows.size(), Band(area)), pixels_(area, radius) {}

void StrokeBands::rasterize(std::int64_t first, std::span<const StrokeCapsule> capsules,
                            CoverageSink& sink) {
    all_.clear();
    for (const StrokeCapsule& capsule : capsules)
        all_.push_back({&capsule, capsule.firstRow, capsule.endRow, false, false});
    enter(0, first, all_, sink);
}

void StrokeBands::enter(std::size_t level, std::int64_t first, const Candidates& candidates,
                        CoverageSink& sink) {
    Band& band = bands_[level];
    const bool isLowest = level + 1 == bandRows.size();
    band.first = first;
    band.rows = bandRows[level];
    band.solid.clear();
    band.capsules.clear();
    band.rest.clear();
    if (level > 0) band.solid.insert(bands_[level - 1].solid);
    for (const Candidate& candidate : candidates) {
        if (candidate.firstRow >= first + band.rows || candidate.endRow <= first) continue;
        if (look(band, candidate, isLowest)) break;
    }
    leaveOutHidden(band);

    if (isLowest) return rasterizeRows(band, sink);
    for (const RowCapsule& at : band.capsules)
        band.rest.push_back(
            {at.of, at.of->firstRow, at.of->endRow, at.leftIsHidden, at.rightIsHidden});
    const std::int64_t end = std::min(first + band.rows, area_.clip.bottom);
    for (std::int64_t next = first; next < end; next += bandRows[level + 1])
        if (next + bandRows[level + 1] > area_.clip.top) enter(level + 1, next, band.rest, sink);
}

/// Marks what the capsule covers in all rows of the band. Capsules are convex: it is what they
/// cover at the top and at the bottom.
/// @return whether nothing is left to be covered
bool StrokeBands::look(Band& band, const Candidate& candidate, bool isLowest) {
    const Capsule& capsule = candidate.of->capsule;
    const auto top = static_cast<CGFloat>(band.first);
    const CGFloat bottom = top + static_cast<CGFloat>(band.rows);
    const bool spans = candidate.firstRow <= band.first &&
                       candidate.endRow >= band.first + band.rows && capsule.top() <= top &&
                       capsule.bottom() >= bottom;
    if (!spans && !isLowest) {
        band.rest.push_back(candidate);
        return false;
    }
    RowCapsule at{.of = candidate.of,
                  .top = capsule.sectionAt(top),
                  .bottom = capsule.sectionAt(bottom),
                  .spans = spans,
                  .leftIsHidden = candidate.leftIsHidden,
                  .rightIsHidden = candidate.rightIsHidden};
    at.reach = capsule.reach(top, at.top, bottom, at.bottom);
    at.begin = area_.floor(at.reach.left);
    at.end = area_.ceil(at.reach.right);
    if (at.begin >= at.end) return false;
    if (spans) {
        at.solidBegin = area_.ceil(at.innermost(Side::left));
        at.solidEnd = area_.floor(at.innermost(Side::right));
        if (at.solidBegin < at.solidEnd) band.solid.insert(at.solidBegin, at.solidEnd);
        if (at.solidBegin == 0 && at.solidEnd == area_.width) {
            band.capsules.clear();
            band.rest.clear();
            return true;
        }
    }
    band.capsules.push_back(at);
    return false;
}

/// Leaves out capsules that touch nothing but what is covered, and those that others hide. Which
/// these are is decided within a word, or it would depend on the clip.
void StrokeBands::leaveOutHidden(Band& band) {
    std::erase_if(band.capsules,
                  [&](const RowCapsule& at) { return band.solid.contains(at.begin, at.end); });
    for (const Side side : {Side::left, Side::right})
        for (const RowCapsule& at : band.capsules)
            if (at.spans) noteFarthest(band, at, side);
    std::erase_if(band.capsules, [&](RowCapsule& at) {
        if (!at.spans) return false;
        at.leftIsHidden = at.leftIsHidden || isHidden(band, at, Side::left);
        at.rightIsHidden = at.rightIsHidden || isHidden(band, at, Side::right);
        return at.leftIsHidden && at.rightIsHidden;
    });
    for (auto& farthest : band.farthest)
        std::ranges::fill(farthest, nullptr);
}

void StrokeBands::noteFarthest(Band& band, const RowCapsule& at, Side side) const {
    const auto columns = sideColumns(at, side, area_);
    if (!columns || band.solid.contains(columns->begin, columns->end)) return;
    const StrokeCapsule*& farthest = band.farthest[indexOf(side)][columns->word()];
    if (farthest != nullptr) {
        const auto top = static_cast<CGFloat>(band.first);
        const CGFloat bottom = top + static_cast<CGFloat>(band.rows);
        const auto reach = [&](const Section& upper, const Section& lower) {
            return (upper.end(side) + lower.end(side)) * sign(side);
        };
        const CGFloat ahead = reach(at.top, at.bottom) - reach(farthest->capsule.sectionAt(top),
                                                               farthest->capsule.sectionAt(bottom));
        if (ahead < 0 || (ahead == 0 && at.of->segment > farthest->segment)) return;
    }
    farthest = at.of;
}

/// Whether the capsule's side, and all between it and the columns that it covers wholly, lies in
/// a disc of the capsule that reaches farthest there. The side bends no more than the disc's border
/// does, so it lies in the disc when its ends do.
bool StrokeBands::isHidden(const Band& band, const RowCapsule& at, Side side) const {
    const auto columns = sideColumns(at, side, area_);
    if (!columns || at.solidBegin >= at.solidEnd) return false;
    const StrokeCapsule* farthest = band.farthest[indexOf(side)][columns->word()];
    if (farthest == nullptr || farthest == at.of) return false;
    const auto top = static_cast<CGFloat>(band.first);
    const CGFloat bottom = top + static_cast<CGFloat>(band.rows);
    const CGPoint center = farthest->capsule.axisPoint(side, (top + bottom) / 2);
    const auto isInDisc = [&](CGFloat x, CGFloat y) {
        const CGPoint apart{x - center.x, y - center.y};
        return apart.x * apart.x + apart.y * apart.y <= radius_ * radius_;
    };
    const auto inner = static_cast<CGFloat>(area_.left + columns->inner(side));
    return isInDisc(at.top.end(side), top) && isInDisc(at.bottom.end(side), bottom) &&
           isInDisc(inner, top) && isInDisc(inner, bottom);
}

void StrokeBands::rasterizeRows(Band& band, CoverageSink& sink) {
    const std::int64_t first = std::max(band.first, area_.clip.top);
    const std::int64_t end = std::min(band.first + band.rows, area_.clip.bottom);
    for (std::int64_t row = first; row < end; ++row) {
        pixels_.begin(row, band.solid);
        const auto y = static_cast<CGFloat>(row);
        for (RowCapsule& at : band.capsules) {
            if (row < at.of->firstRow || row >= at.of->endRow) continue;
            const bool isFirst = row == first || row == at.of->firstRow;
            at.top = isFirst ? at.capsule().sectionAt(y) : at.bottom;
            at.bottom = at.capsule().sectionAt(y + 1);
            pixels_.add(at);
        }
        pixels_.flush(sink);
    }
}

}  // namespace pictal::detail
