#include "PictalCore/Scrolling/ScrollingFrameAnalyzer.h"

#include "PictalCore/Platform/Registration/ImageRegistration.h"

namespace pictal {

namespace {

std::optional<ImageTranslation> translationOf(
    const std::optional<RegisteredTranslation>& registered) {
    if (!registered) return std::nullopt;
    return ImageTranslation{registered->x, registered->y, registered->confidence};
}

}  // namespace

ScrollingFrameAnalyzer::Result<ScrollingFrameMeasurement> ScrollingFrameAnalyzer::measure(
    const CGImage& previous, const CGImage& current, const std::stop_token& cancellation) const {
    if (cancellation.stop_requested()) return std::unexpected(CancellationError{});
    if (previous.width() != current.width() || previous.height() != current.height() ||
        current.width() < 1 || current.height() < 2)
        return std::unexpected(ScrollingFrameAnalyzerError::incompatibleFrameSizes);

    const ImageRegistration registration(current, previous);
    ScrollingFrameMeasurement measurement;
    std::vector<ImageTranslation> plausible;
    for (const auto& rows : ScrollingConsensus::comparisonBands(current.height())) {
        const auto translation = translationOf(registration.rows(rows.top, rows.height));
        measurement.bands.push_back({rows, translation});
        if (translation && ScrollingConsensus::isPlausible(*translation, current.height()))
            plausible.push_back(*translation);
    }
    measurement.wholeFrame = translationOf(registration.whole());
    measurement.accepted =
        ScrollingConsensus::accepted(plausible, measurement.wholeFrame, current.height());
    measurement.stillRowsAtTop = registration.stillRowsAtTop();
    measurement.stillRowsAtBottom = registration.stillRowsAtBottom();
    return measurement;
}

ScrollingFrameAnalyzer::Result<ScrollingFrameAnalysis> ScrollingFrameAnalyzer::analyze(
    const CGImage& previous, const CGImage& current, const std::stop_token& cancellation) const {
    const auto measurement = measure(previous, current, cancellation);
    if (!measurement) return std::unexpected(measurement.error());
    return ScrollingConsensus::classified(measurement->accepted);
}

}  // namespace pictal
