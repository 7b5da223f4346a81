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

/// The smallest rectangle that holds all coverage.
class ExtentFinder final : public CoverageSink {
  public:
    [[nodiscard]] const PixelRect& extent() const { return extent_; }

    void solid(std::int64_t row, std::int64_t left, std::int64_t right) override {
        extent_ = {std::min(extent_.left, left), std::min(extent_.top, row),
                   std::max(extent_.right, right), std::max(extent_.bottom, row + 1)};
    }
    void varied(std::int64_t row, std::int64_t left,
                std::span<const std::uint8_t> coverage) override {
        solid(row, left, left + std::ssize(coverage));
    }

  private:
    static constexpr std::int64_t far = std::numeric_limits<std::int64_t>::max();
    PixelRect extent_{far, far, -far, -far};
};

/// The mean coverage of square cells of pixels. A wide blur hides their edges, and takes as much
/// less memory and time as they are larger.
class CellMask final : public CoverageSink {
  public:
    CellMask(const PixelRect& area, std::int64_t side)
        : area_(area),
          side_(side),
          columns_((area.width() + side - 1) / side),
          rows_((area.height() + side - 1) / side),
          cells_(static_cast<std::size_t>(columns_ * rows_)) {}

    void solid(std::int64_t row, std::int64_t left, std::int64_t right) override {
        add(row, left, right, [](std::int64_t) { return std::uint8_t{255}; });
    }
    void varied(std::int64_t row, std::int64_t left,
                std::span<const std::uint8_t> coverage) override {
        add(row, left, left + std::ssize(coverage),
            [=](std::int64_t x) { return coverage[static_cast<std::size_t>(x - left)]; });
    }

    /// A Gaussian of that many pixels, less the variance that cells and the way between their
    /// centres bring along.
    void blur(double deviation) {
        const auto side = static_cast<double>(side_);
        const double added = side_ > 1 ? side * side / 3 : 0;
        kernels::blurMask(cells_, columns_, rows_, std::sqrt(deviation * deviation - added) / side);
    }

    /// The levels of one row of pixels from `left` on, between the centres of the cells. Neither
    /// may lie in the outer half of the area's outermost cells.
    void read(std::int64_t row, std::int64_t left, std::span<std::uint8_t> levels) {
        const auto [above, toBelow] = place(row - area_.top);
        const float* const upper = cells_.data() + above * columns_;
        const float* const lower = toBelow > 0 ? upper + columns_ : upper;
        for (std::size_t i = 0; i < levels.size(); ++i) {
            const auto [cell, toNext] = place(left - area_.left + static_cast<std::int64_t>(i));
            const std::int64_t next = toNext > 0 ? cell + 1 : cell;
            const float first = std::lerp(upper[cell], lower[cell], toBelow);
            const float second = std::lerp(upper[next], lower[next], toBelow);
            const float value = std::lerp(first, second, toNext);
            levels[i] = static_cast<std::uint8_t>(std::clamp(value * 255 + 0.5F, 0.0F, 255.0F));
        }
    }

  private:
    template <class Level>
    void add(std::int64_t row, std::int64_t left, std::int64_t right, Level levelAt) {
        float* const cells = cells_.data() + (row - area_.top) / side_ * columns_;
        const float weight = 1 / static_cast<float>(255 * side_ * side_);
        for (std::int64_t x = left; x < right;) {
            const std::int64_t cell = (x - area_.left) / side_;
            const std::int64_t end = std::min(right, area_.left + (cell + 1) * side_);
            std::int64_t sum = 0;
            for (; x < end; ++x)
                sum += levelAt(x);
            cells[cell] += static_cast<float>(sum) * weight;
        }
    }

    struct Place {
        std::int64_t cell;  // the last one whose centre is not behind
        float toNext;       // the way to the next one's centre, 0…1
    };
    /// Where the centre of a pixel lies among the centres of the cells.
    [[nodiscard]] Place place(std::int64_t pixel) const {
        const std::int64_t halves = 2 * pixel + 1 - side_;  // of a pixel, from the first centre on
        const std::int64_t cell = halves / (2 * side_);
        return {cell,
                static_cast<float>(halves - cell * 2 * side_) / static_cast<float>(2 * side_)};
    }

    PixelRect area_;
    std::int64_t side_;
    std::int64_t columns_;
    std::int64_t rows_;
    std::vector<float> cells_;
};

PixelRect grown(const PixelRect& rect, std::int64_t margin) {
    return {rect.left - margin, rect.top - margin, rect.right + margin, rect.bottom + margin};
}

}  // namespace

void castShadow(const ShadowSettings& shadow, const Shape& shape, const PixelRect& visible,
                CoverageSink& painter) {
    if (!std::isfinite(shadow.offset.width) || !std::isfinite(shadow.offset.height)) return;
    const double deviation = kernels::gaussianDeviation(std::min(shadow.blur, greatestBlur));
    const auto margin = static_cast<std::int64_t>(std::ceil(kernels::gaussianReach(deviation)));
    const CGPoint moved{shadow.offset.width, -shadow.offset.height};

    ExtentFinder finder;
    shape.cover(moved, grown(visible, margin), finder);
    const PixelRect& extent = finder.extent();
    const PixelRect shown = grown(extent, margin).intersection(visible);
    if (extent.isEmpty() || shown.isEmpty()) return;

    // A tenth of the deviation: within a fifth of a level of the blur of the pixels themselves.
    const std::int64_t side = std::max(static_cast<std::int64_t>(deviation / 10), std::int64_t{1});
    CellMask mask(grown(extent, margin + side), side);
    shape.cover(moved, extent, mask);
    mask.blur(deviation);
    std::vector<std::uint8_t> levels(static_cast<std::size_t>(shown.width()));
    for (std::int64_t row = shown.top; row < shown.bottom; ++row) {
        mask.read(row, shown.left, levels);
        painter.varied(row, shown.left, levels);
    }
}

}  // namespace pictal::detail
