#include "PictalCore/Scrolling/ScrollingConsensus.h"

#include <algorithm>
#include <cmath>

namespace pictal::ScrollingConsensus {

namespace {

bool agree(const ImageTranslation& a, const ImageTranslation& b) {
    return std::abs(a.y - b.y) <= agreementTolerance;
}

std::optional<ImageTranslation> strongConsensus(std::span<const ImageTranslation> bands) {
    const auto group = largestAgreeingGroup(bands, minimumStrongConsensusBandCount);
    if (!group) return std::nullopt;
    const bool all = std::ranges::all_of(
        *group, [](const auto& member) { return member.confidence >= validatedBandConfidence; });
    return group->size() > 3 || all ? mean(*group) : std::nullopt;
}

/// The mean of bands that alone are not sure enough, where the whole frame confirms them.
std::optional<ImageTranslation> validatedBands(std::span<const ImageTranslation> bands,
                                               const ImageTranslation& wholeFrame) {
    if (!(wholeFrame.confidence >= validatedBandConfidence)) return std::nullopt;
    const auto group = largestAgreeingGroup(bands, 3);
    auto center = group ? mean(*group) : std::nullopt;
    if (!center || !agree(*center, wholeFrame)) return std::nullopt;
    center->confidence = std::min(wholeFrame.confidence, center->confidence);
    return center;
}

}  // namespace

std::vector<Band> comparisonBands(std::int64_t frameHeight) {
    if (frameHeight < 1) return {};
    // H / 3 × 2 would round twice, and 2 × H may not fit.
    const std::int64_t twoThirds = frameHeight - frameHeight / 3 - (frameHeight % 3 != 0);
    const std::int64_t height =
        std::min(std::max(twoThirds, minimumComparisonBandHeight), frameHeight);
    const std::int64_t span = frameHeight - height;
    if (span < 1) return {{0, height}};

    std::vector<Band> bands;
    constexpr auto gaps = static_cast<double>(comparisonBandCount - 1);
    for (std::int64_t i = 0; i < comparisonBandCount; ++i) {
        const double top = static_cast<double>(span) * static_cast<double>(i) / gaps;
        const Band band{std::llround(top), height};
        if (bands.empty() || bands.back() != band) bands.push_back(band);
    }
    return bands;
}

bool isPlausible(const ImageTranslation& translation, std::int64_t frameHeight) {
    const double limit = (1 - minimumOverlapFraction) * static_cast<double>(frameHeight);
    return std::abs(translation.x) <= maximumHorizontalMovement && std::abs(translation.y) <= limit;
}

std::optional<std::vector<ImageTranslation>> largestAgreeingGroup(
    std::span<const ImageTranslation> translations, std::int64_t minimumSize) {
    std::vector<ImageTranslation> best;
    for (const ImageTranslation& center : translations) {
        std::vector<ImageTranslation> group;
        std::ranges::copy_if(translations, std::back_inserter(group),
                             [&](const auto& other) { return agree(other, center); });
        if (group.size() > best.size()) best = std::move(group);
    }
    if (std::ssize(best) < minimumSize) return std::nullopt;
    return best;
}

std::optional<ImageTranslation> mean(std::span<const ImageTranslation> group) {
    if (group.empty()) return std::nullopt;
    ImageTranslation sum;
    for (const ImageTranslation& member : group) {
        sum.x += member.x;
        sum.y += member.y;
        sum.confidence += member.confidence;
    }
    const auto count = static_cast<double>(group.size());
    return ImageTranslation{sum.x / count, sum.y / count,
                            sum.confidence / static_cast<float>(group.size())};
}

std::optional<ImageTranslation> accepted(std::span<const ImageTranslation> bands,
                                         const std::optional<ImageTranslation>& wholeFrame,
                                         std::int64_t frameHeight) {
    std::vector<ImageTranslation> plausible;
    std::ranges::copy_if(bands, std::back_inserter(plausible),
                         [&](const auto& band) { return isPlausible(band, frameHeight); });
    if (const auto strong = strongConsensus(plausible)) return strong;
    if (!wholeFrame || !isPlausible(*wholeFrame, frameHeight)) return std::nullopt;
    if (const auto validated = validatedBands(plausible, *wholeFrame)) return validated;
    return wholeFrame->confidence >= fullFrameConfidence ? wholeFrame : std::nullopt;
}

ScrollingFrameAnalysis classified(const std::optional<ImageTranslation>& accepted) {
    constexpr double limit = 0x1p63;
    if (!accepted || !(std::abs(accepted->y) < limit))
        return ScrollingFrameAnalysis::noReliableMatch();
    if (std::abs(accepted->y) <= movementDeadZone) return ScrollingFrameAnalysis::unchanged();
    const float score = 1 - accepted->confidence;
    return ScrollingFrameAnalysis::shifted(std::llround(accepted->y), static_cast<double>(score));
}

}  // namespace pictal::ScrollingConsensus
