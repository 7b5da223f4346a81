#include "PictalCore/Platform/Graphics/Kernels/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace pictal::kernels {

namespace {

/// The share of a Gaussian left of x.
double cumulative(double x, double deviation) {
    return 0.5 * std::erfc(-x / (deviation * std::numbers::sqrt2));
}

/// The integral of `cumulative` from minus infinity to x.
double cumulativeIntegral(double x, double deviation) {
    if (!(deviation > 0)) return std::max(x, 0.0);
    const double z = x / deviation;
    const double density = std::exp(-0.5 * z * z) / std::sqrt(2 * std::numbers::pi);
    return x * cumulative(x, deviation) + deviation * density;
}

/// The Gaussian's share of the middle pixel and of each one to its side; all of them, counting both
/// sides, add up to 1. A mask that is wider than its margin needs no more than `most` of them.
std::vector<float> pixelWeights(double deviation, std::int64_t most) {
    const double reach = std::ceil(gaussianReach(deviation));
    const auto count = static_cast<std::size_t>(std::min(reach, static_cast<double>(most)));
    std::vector<float> weights(count + 1, 1.0F);
    if (!(deviation > 0)) return weights;
    const double whole = 1 - 2 * cumulative(-reach - 0.5, deviation);
    for (std::size_t i = 0; i <= count; ++i) {
        // Differences of the small tail, where doubles are densest.
        const auto x = static_cast<double>(i);
        const double share = cumulative(0.5 - x, deviation) - cumulative(-0.5 - x, deviation);
        weights[i] = static_cast<float>(share / whole);
    }
    return weights;
}

void blurRows(std::span<float> mask, std::size_t width, std::span<const float> weights) {
    const std::size_t margin = weights.size() - 1;
    std::vector<float> padded(width + 2 * margin);
    for (auto row = mask.begin(); row != mask.end(); row += static_cast<std::ptrdiff_t>(width)) {
        const std::span<float> out(row, width);
        std::ranges::copy(out, padded.begin() + static_cast<std::ptrdiff_t>(margin));
        const float* const middle = padded.data() + margin;
        for (std::size_t x = 0; x < width; ++x)
            out[x] *= weights[0];
        for (std::size_t i = 1; i <= margin; ++i) {
            const float weight = weights[i];
            for (std::size_t x = 0; x < width; ++x)
                out[x] += weight * (*(middle + x - i) + middle[x + i]);
        }
    }
}

/// Works downward, so the rows below are still as they were; those above are kept in a ring.
void blurColumns(std::span<float> mask, std::size_t width, std::span<const float> weights) {
    const std::size_t margin = weights.size() - 1;
    const std::size_t height = mask.size() / width;
    const auto rowAt = [width](std::span<float> rows, std::size_t y) {
        return rows.subspan(y * width, width);
    };
    const std::size_t slots = std::max<std::size_t>(margin, 1);
    std::vector<float> kept(slots * width);
    std::vector<float> sum(width);
    for (std::size_t y = 0; y < height; ++y) {
        const std::span<float> row = rowAt(mask, y);
        for (std::size_t x = 0; x < width; ++x)
            sum[x] = row[x] * weights[0];
        const auto add = [&sum](std::span<const float> from, float weight) {
            for (std::size_t x = 0; x < sum.size(); ++x)
                sum[x] += weight * from[x];
        };
        for (std::size_t i = 1; i <= margin; ++i) {
            if (i <= y) add(rowAt(kept, (y - i) % slots), weights[i]);
            if (i < height - y) add(rowAt(mask, y + i), weights[i]);
        }
        std::ranges::copy(row, rowAt(kept, y % slots).begin());
        std::ranges::copy(sum, row.begin());
    }
}

}  // namespace

double blurredEdge(double left, double deviation) {
    const double reach = gaussianReach(deviation);
    if (left >= reach) return 1;
    if (left + 1 <= -reach) return 0;
    const double mean =
        cumulativeIntegral(left + 1, deviation) - cumulativeIntegral(left, deviation);
    return std::clamp(mean, 0.0, 1.0);
}

void blurMask(std::span<float> mask, std::int64_t width, std::int64_t height, double deviation) {
    if (width <= 0 || height <= 0 || !(deviation > 0)) return;
    blurRows(mask, static_cast<std::size_t>(width), pixelWeights(deviation, width - 1));
    blurColumns(mask, static_cast<std::size_t>(width), pixelWeights(deviation, height - 1));
}

}  // namespace pictal::kernels
