#include "PictalCore/Platform/Registration/ImageRegistration.h"

#include "PictalCore/Platform/Registration/ExactComparison.h"
#include "PictalCore/Platform/Registration/NoisyComparison.h"
#include "PictalCore/Platform/Registration/SegmentTable.h"
#include "PictalCore/Platform/Registration/Verdict.h"

#include <algorithm>

namespace pictal {

using namespace detail;

namespace {

bool areSame(const Comparison& frames) {
    for (std::int64_t y = 0; y < frames.rows(); ++y)
        if ((frames.still(y) & frames.columns()) != frames.columns()) return false;
    return true;
}

/// How far the content may have moved to the side as well, by a few columns that vote at each
/// shift; 0 when nothing speaks for one.
/// @param votesAt  the votes of the frames in that grid at that shift
std::int64_t likelyShift(const SegmentGrid& whole, const auto& votesAt) {
    constexpr std::size_t columns = 4;
    constexpr std::int64_t furthest = 3;
    const SegmentGrid grid(whole, columns);
    std::uint32_t most = 8;
    std::int64_t best = 0;
    for (std::int64_t shift = -furthest; shift <= furthest; ++shift) {
        if (shift == 0) continue;
        const std::uint32_t once = votesAt(grid, shift).mostOnce();
        if (once > most) {
            most = once;
            best = shift;
        }
    }
    return best;
}

}  // namespace

struct ImageRegistration::Impl {
    std::int64_t height = 0;
    bool same = false;
    std::unique_ptr<const Verdict> verdict;
    double shift = 0;

    void compare(const CGImage& reference, const CGImage& target, const Options& options);
    void compareNoisy(const CGImage& reference, const CGImage& target, const SegmentGrid& grid,
                      std::uint16_t noise, const Options& options);
    [[nodiscard]] bool isSure() const { return answer({0, height}).has_value(); }
    [[nodiscard]] std::optional<RegisteredTranslation> answer(const RowRange& rows) const {
        if (same) return RegisteredTranslation{0, 0, 1};
        const auto movement = verdict ? verdict->of(rows) : std::nullopt;
        if (!movement) return std::nullopt;
        const auto confidence = static_cast<float>(movement->confidence);
        if (!(confidence >= leastConfidence)) return std::nullopt;
        return RegisteredTranslation{shift, movement->y, confidence};
    }
};

void ImageRegistration::Impl::compare(const CGImage& reference, const CGImage& target,
                                      const Options& options) {
    const SegmentGrid grid(reference.width());
    const SegmentTable first(reference, grid, 0), second(target, grid, 0);
    const ExactComparison frames(grid, first, second, second, 0);
    same = areSame(frames);
    if (same) return;
    verdict = std::make_unique<const Verdict>(frames, options.withheld);
    // Where much speaks for two answers, looking closer could only lose one of them.
    if (isSure() || verdict->isAmbiguous()) return;
    if (const std::uint16_t noise = std::max(noiseOf(reference, grid), noiseOf(target, grid));
        noise > 0) {
        compareNoisy(reference, target, grid, noise, options);
        return;
    }

    const std::int64_t sideways = likelyShift(grid, [&](const SegmentGrid& few, std::int64_t x) {
        const SegmentTable a(reference, few, 0), b(target, few, x);
        return Votes(ExactComparison(few, a, b, b, x));
    });
    if (sideways == 0) return;
    const SegmentTable moved(target, grid, sideways);
    const ExactComparison shifted(grid, first, moved, second, sideways);
    verdict = std::make_unique<const Verdict>(shifted, options.withheld);
    shift = static_cast<double>(sideways);
}

void ImageRegistration::Impl::compareNoisy(const CGImage& reference, const CGImage& target,
                                           const SegmentGrid& grid, std::uint16_t noise,
                                           const Options& options) {
    const SumTable first(reference, grid, 0), second(target, grid, 0);
    const NoisyComparison frames(grid, first, second, second, 0, noise);
    verdict = std::make_unique<const Verdict>(frames, options.withheld);
    if (isSure() || verdict->isAmbiguous()) return;

    const std::int64_t sideways = likelyShift(grid, [&](const SegmentGrid& few, std::int64_t x) {
        const SumTable a(reference, few, 0), b(target, few, x);
        return Votes(NoisyComparison(few, a, b, b, x, noise));
    });
    if (sideways == 0) return;
    const SumTable moved(target, grid, sideways);
    const NoisyComparison shifted(grid, first, moved, second, sideways, noise);
    verdict = std::make_unique<const Verdict>(shifted, options.withheld);
    shift = static_cast<double>(sideways);
}

ImageRegistration::ImageRegistration(const CGImage& reference, const CGImage& target,
                                     const Options& options) {
    auto impl = std::make_unique<Impl>();
    impl->height = reference.height();
    if (reference.width() > 0 && reference.height() > 0) impl->compare(reference, target, options);
    impl_ = std::move(impl);
}

ImageRegistration::ImageRegistration(const CGImage& reference, const CGImage& target)
    : ImageRegistration(reference, target, {}) {}
ImageRegistration::ImageRegistration(ImageRegistration&&) noexcept = default;
ImageRegistration& ImageRegistration::operator=(ImageRegistration&&) noexcept = default;
ImageRegistration::~ImageRegistration() = default;

std::optional<RegisteredTranslation> ImageRegistration::whole() const {
    return impl_->answer({0, impl_->height});
}

std::optional<RegisteredTranslation> ImageRegistration::rows(std::int64_t top,
                                                             std::int64_t height) const {
    const RowRange rows = RowRange{0, impl_->height}.intersected({top, top + height});
    if (rows.isEmpty()) return std::nullopt;
    return impl_->answer(rows);
}

std::int64_t ImageRegistration::stillRowsAtTop() const {
    return impl_->verdict ? impl_->verdict->still().rowsAtTop() : impl_->height;
}
std::int64_t ImageRegistration::stillRowsAtBottom() const {
    return impl_->verdict ? impl_->verdict->still().rowsAtBottom() : 0;
}

}  // namespace pictal
