#include "PictalCore/Styling/detail/BlurredCard.h"

#include "PictalCore/Platform/Graphics/Kernels/GaussianBlur.h"
#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

namespace {

/// Coverage counts as even within a cell. Under a narrow blur that would show along the arcs, so
/// the cells become small against it: a sixth of the deviation, down to 1/16 of a pixel.
std::int64_t cellsPerPixel(double deviation) {
    return deviation > 0.375 ? static_cast<std::int64_t>(std::ceil(6 / deviation)) : 16;
}

/// By the same measure rows of cells that are far smaller than the blur can be taken together.
std::int64_t rowsTogether(double deviation, std::int64_t cells) {
    return std::max(static_cast<std::int64_t>(deviation * static_cast<double>(cells) / 6),
                    std::int64_t{1});
}

/// A shape that was moved further than this is nowhere on any canvas.
double boundedShift(double shift) {
    constexpr auto limit = static_cast<double>(4 * maximumSide);
    return std::clamp(shift, -limit, limit);
}

/// Adds weight × the blur along row y of what the mask leaves out at its two ends.
void addCut(std::span<float> blurred, const RoundedMask& mask, std::int64_t y, float weight,
            const EdgeProfile& across, std::int64_t firstCell) {
    const RoundedMask::Row cut = mask.row(y);
    const auto add = [&](std::int64_t begin, std::int64_t end, float part) {
        across.addRun(blurred, firstCell, begin, end, part * weight);
        const std::int64_t mirrored = mask.width() - end;
        if (mirrored != begin)
            across.addRun(blurred, firstCell, mirrored, mask.width() - begin, part * weight);
    };
    if (cut.outside > 0) add(0, cut.outside, 1);
    for (std::size_t i = 0; i < cut.edge.size(); ++i) {
        const std::int64_t x = cut.outside + static_cast<std::int64_t>(i);
        add(x, x + 1, 1 - cut.edge[i]);
    }
}

}  // namespace

BlurredCard::BlurredCard(const CardOutline& outline, const Placement& placement, Columns columns)
    : cells_(outline.radius > 0 ? cellsPerPixel(placement.deviation) : 1),
      padding_(outline.padding),
      heightInCells_(outline.height * cells_),
      cutHeight_(rowsTogether(placement.deviation, cells_)),
      down_(boundedShift(placement.offsetY), placement.deviation, cells_),
      across_(static_cast<std::size_t>(columns.count)) {
    const EdgeProfile across(boundedShift(placement.offsetX), placement.deviation, cells_);
    const std::int64_t firstCell = (columns.first - padding_) * cells_;
    across.addRun(across_, firstCell, 0, outline.width * cells_, 1);
    blurCuts(RoundedMask(outline.width * cells_, heightInCells_,
                         outline.radius * static_cast<double>(cells_)),
             across, firstCell);
}

void BlurredCard::blurCuts(const RoundedMask& mask, const EdgeProfile& across,
                           std::int64_t firstCell) {
    std::vector<float> blurred(across_.size());
    for (std::int64_t top = 0; top < mask.cornerRows(); top += cutHeight_) {
        const std::int64_t bottom = std::min(top + cutHeight_, mask.cornerRows());
        std::ranges::fill(blurred, 0.0F);
        for (std::int64_t y = top; y < bottom; ++y) {
            // The middle row of an odd height is its own mirror image: half of it counts for each.
            const float share = 2 * y + 1 == mask.height() ? 0.5F : 1.0F;
            addCut(blurred, mask, y, share / static_cast<float>(bottom - top), across, firstCell);
        }
        const auto isSet = [](float value) { return value != 0; };
        const auto begin = std::ranges::find_if(blurred, isSet);
        const auto end = std::find_if(blurred.rbegin(), std::reverse_iterator(begin), isSet).base();
        cuts_.push_back({top, bottom, begin - blurred.begin(), std::vector<float>(begin, end)});
    }
}

std::int64_t BlurredCard::settledAfter(const CardOutline& outline, double offset,
                                       double deviation) {
    const double reach = kernels::gaussianReach(deviation) + std::abs(boundedShift(offset));
    return outline.padding + static_cast<std::int64_t>(std::ceil(outline.radius + reach)) + 2;
}

void BlurredCard::row(std::int64_t y, std::int64_t begin, std::span<float> coverage) const {
    const std::int64_t cell = (y - padding_) * cells_;
    const float share = down_.covered(cell) - down_.covered(cell - heightInCells_);
    for (std::size_t x = 0; x < coverage.size(); ++x)
        coverage[x] = share * across_[static_cast<std::size_t>(begin) + x];

    for (const CutRows& cut : cuts_) {
        const auto shareOf = [&](std::int64_t top, std::int64_t bottom) {
            return down_.covered(cell - top) - down_.covered(cell - bottom);
        };
        const float weight = shareOf(cut.top, cut.bottom) +
                             shareOf(heightInCells_ - cut.bottom, heightInCells_ - cut.top);
        if (weight == 0) continue;
        const std::int64_t from = std::max(cut.begin, begin);
        const std::int64_t to =
            std::min(cut.begin + std::ssize(cut.values), begin + std::ssize(coverage));
        for (std::int64_t x = from; x < to; ++x)
            coverage[static_cast<std::size_t>(x - begin)] -=
                weight * cut.values[static_cast<std::size_t>(x - cut.begin)];
    }
}

}  // namespace pictal::detail
