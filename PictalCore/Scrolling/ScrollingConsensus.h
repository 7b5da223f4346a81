#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Scrolling/ImageTranslation.h"
#include "PictalCore/Scrolling/ScrollingFrameAnalysis.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// How the movement of a frame is decided from the measurements of its bands and of the whole: pure
/// functions, which need no picture. A measurement is accepted only when several bands agree, or
/// when the whole frame is sure on its own or confirms the bands.
///
/// Pixels, y downward. Confidences are compared and averaged in single precision. A NaN offset is
/// never plausible.
namespace pictal::ScrollingConsensus {

inline constexpr std::int64_t comparisonBandCount = 5;
inline constexpr std::int64_t minimumComparisonBandHeight = 80;
/// Two offsets agree when they are at most so many pixels apart.
inline constexpr double agreementTolerance = 3;
/// Content that scrolls does not move sideways by more.
inline constexpr double maximumHorizontalMovement = 3;
/// Two frames share at least this part of their height.
inline constexpr double minimumOverlapFraction = 0.15;
/// So many agreeing bands are enough if each reaches `validatedBandConfidence`; more always are.
inline constexpr std::int64_t minimumStrongConsensusBandCount = 3;
inline constexpr float validatedBandConfidence = 0.8F;
/// A whole frame that reaches this is believed alone.
inline constexpr float fullFrameConfidence = 0.9F;
/// A movement of at most so many pixels is none.
inline constexpr double movementDeadZone = 3;

/// A strip of a frame, as wide as the frame.
struct Band {
    std::int64_t top = 0;
    std::int64_t height = 0;

    friend constexpr bool operator==(const Band&, const Band&) = default;
};

/// The strips of a frame of this height that are measured, from the top: up to five, two thirds of
/// the frame each. None for a height below 1.
[[nodiscard]] PICTAL_API std::vector<Band> comparisonBands(std::int64_t frameHeight);

/// Whether a scroll can have moved the content so: hardly sideways, and not out of sight.
[[nodiscard]] PICTAL_API bool isPlausible(const ImageTranslation& translation,
                                          std::int64_t frameHeight);

/// The largest set of measurements that agree with one of them, the first such set if there are
/// several, in their order.
/// @return nothing when it has fewer than `minimumSize` members
[[nodiscard]] PICTAL_API std::optional<std::vector<ImageTranslation>> largestAgreeingGroup(
    std::span<const ImageTranslation> translations, std::int64_t minimumSize);

/// @return nothing for an empty group
[[nodiscard]] PICTAL_API std::optional<ImageTranslation> mean(
    std::span<const ImageTranslation> group);

/// @param bands  the measurements of the bands that have one, from the top
/// @return the measurement to believe, if there is one
[[nodiscard]] PICTAL_API std::optional<ImageTranslation> accepted(
    std::span<const ImageTranslation> bands, const std::optional<ImageTranslation>& wholeFrame,
    std::int64_t frameHeight);

/// Says what an accepted measurement means; its offset is rounded, halves away from zero. One that
/// is not finite or does not fit 64 bits is no match.
[[nodiscard]] PICTAL_API ScrollingFrameAnalysis
classified(const std::optional<ImageTranslation>& accepted);

}  // namespace pictal::ScrollingConsensus
