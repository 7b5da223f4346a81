#include "PictalCore/Platform/Graphics/detail/Shadow.h"

#include "PictalCore/Platform/Graphics/Kernels/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace pictal::detail {

namespace {

/// Greater blurs are drawn as this one: its shadow is so faint and wide that nobody sees the
/// difference, and the memory for its margin stays bounded.
constexpr CGFloat greatestBlur = 2000;

/// Keeps the coverage and the smallest rectangle that holds all of it.
class ExtentMask final : public CoverageSink {
  public:
    explicit ExtentMask(const PixelRect& area) : mask_(area) {}

    [[nodiscard]] const PixelRect& extent() const { return extent_; }
    [[nodiscard]] std::span<const std::uint8_t> span(std::int64_t row, std::int64_t left,
                                                     std::int64_t right) const {
        return mask_.span(row, left, right);
    }

    void solid(std::int64_t row, std::int64_t left, std::int64_t right) override {
        extend(row, left, right);
        mask_.solid(row, left, right);
    }
    void varied(std::int64_t row, std::int64_t left,
                std::span<const std::uint8_t> coverage) override {
        extend(row, left, left + static_cast<std::int64_t>(coverage.size()));
        mask_.varied(row, left, coverage);
    }

  private:
    void extend(std::int64_t row, std::int64_t left, std::int64_t right) {
        extent_ = {std::min(extent_.left, left), std::min(extent_.top, row),
                   std::max(extent_.right, right), std::max(extent_.bottom, row + 1)};
    }

    static constexpr std::int64_t far = std::numeric_limits<std::int64_t>::max();
    CoverageMask mask_;
    PixelRect extent_{far, far, -far, -far};
};

PixelRect grown(const PixelRect& rect, std::int64_t margin) {
    return {rect.left - margin, rect.top - margin, rect.right + margin, rect.bottom + margin};
}

}  // namespace

void castShadow(const ShadowSettings& shadow, const ShadowCaster& caster, const PixelRect& visible,
                CoverageSink& painter) {
    if (!std::isfinite(shadow.offset.width) || !std::isfinite(shadow.offset.height)) return;
    const double deviation = kernels::gaussianDeviation(std::min(shadow.blur, greatestBlur));
    const auto margin = static_cast<std::int64_t>(std::ceil(kernels::gaussianReach(deviation)));

    ExtentMask shape(grown(visible, margin));
    caster({shadow.offset.width, -shadow.offset.height}, grown(visible, margin), shape);
    const PixelRect& extent = shape.extent();
    if (extent.isEmpty()) return;

    const PixelRect area = grown(extent, margin);
    const auto width = static_cast<std::size_t>(area.width());
    std::vector<float> mask(width * static_cast<std::size_t>(area.height()));
    const auto maskRow = [&](std::int64_t row) {
        return std::span(mask).subspan(static_cast<std::size_t>(row - area.top) * width, width);
    };
    for (std::int64_t row = extent.top; row < extent.bottom; ++row)
        std::ranges::transform(shape.span(row, extent.left, extent.right),
                               maskRow(row).begin() + margin,
                               [](std::uint8_t level) { return static_cast<float>(level) / 255; });
    kernels::blurMask(mask, area.width(), area.height(), deviation);

    const PixelRect shown = area.intersection(visible);
    if (shown.isEmpty()) return;
    std::vector<std::uint8_t> levels(static_cast<std::size_t>(shown.width()));
    for (std::int64_t row = shown.top; row < shown.bottom; ++row) {
        const auto blurred =
            maskRow(row).subspan(static_cast<std::size_t>(shown.left - area.left), levels.size());
        std::ranges::transform(blurred, levels.begin(), [](float value) {
            return static_cast<std::uint8_t>(std::clamp(value * 255 + 0.5F, 0.0F, 255.0F));
        });
        painter.varied(row, shown.left, levels);
    }
}

}  // namespace pictal::detail
