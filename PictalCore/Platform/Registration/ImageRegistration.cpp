#include "PictalCore/Platform/Registration/ImageRegistration.h"

#include "PictalCore/Platform/Registration/ExactComparison.h"
#include "PictalCore/Platform/Registration/SegmentTable.h"
#include "PictalCore/Platform/Registration/Verdict.h"

namespace pictal {

using namespace detail;

namespace {

bool areSame(const Comparison& frames) {
    for (std::int64_t y = 0; y < frames.rows(); ++y)
        if ((frames.still(y) & frames.columns()) != frames.columns()) return false;
    return true;
}

}  // namespace

struct ImageRegistration::Impl {
    std::int64_t height = 0;
    bool same = false;
    std::unique_ptr<const Verdict> verdict;
    double shift = 0;

    [[nodiscard]] std::optional<RegisteredTranslation> answer(const RowRange& rows) const {
        if (same) return RegisteredTranslation{0, 0, 1};
        const auto movement = verdict ? verdict->of(rows) : std::nullopt;
        if (!movement) return std::nullopt;
        const auto confidence = static_cast<float>(movement->confidence);
        if (!(confidence >= leastConfidence)) return std::nullopt;
        return RegisteredTranslation{shift, movement->y, confidence};
    }
};

ImageRegistration::ImageRegistration(const CGImage& reference, const CGImage& target,
                                     const Options& options) {
    auto impl = std::make_unique<Impl>();
    impl->height = reference.height();
    if (reference.width() > 0 && reference.height() > 0) {
        const SegmentGrid grid(reference.width());
        const SegmentTable first(reference, grid, 0), second(target, grid, 0);
        const ExactComparison frames(grid, first, second, second, 0);
        impl->same = areSame(frames);
        if (!impl->same) impl->verdict = std::make_unique<const Verdict>(frames, options.withheld);
    }
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
