#include "PictalCore/Platform/Graphics/Kernels/Resample.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace pictal::kernels {

namespace {

constexpr std::size_t components = 4;
/// Sums that are worked on at once stay in the first-level cache with the rows they come from.
constexpr std::size_t chunk = 512;
/// Rows that are added before the sum is touched again.
constexpr std::size_t group = 4;
/// Long windows are added up in blocks, so that a small addend never meets a large sum too often.
constexpr std::size_t block = 256;
static_assert(block % group == 0);

PICTAL_BODY const std::uint8_t* componentsOf(const std::uint32_t* row) {
    return reinterpret_cast<const std::uint8_t*>(row);
}
PICTAL_BODY const float* componentsOf(const float* row) {
    return row;
}

template <class Word>
PICTAL_BODY void sumRowsOf(std::span<const Word* const> rows, std::span<const float> weights,
                           std::span<float> sums) {
    std::array<float, chunk> sum, sumOfBlock;
    for (std::size_t start = 0; start < sums.size(); start += chunk) {
        const std::size_t size = std::min(chunk, sums.size() - start);
        sum.fill(0);
        for (std::size_t row = 0; row < rows.size(); row += group) {
            // Rows that are missing in the last group count nothing.
            std::array<decltype(componentsOf(rows[0])), group> from;
            std::array<float, group> weight{};
            for (std::size_t i = 0; i < group; ++i) {
                from[i] = componentsOf(rows[std::min(row + i, rows.size() - 1)]) + start;
                if (row + i < rows.size()) weight[i] = weights[row + i];
            }
            const auto* const a = from[0];
            const auto* const b = from[1];
            const auto* const c = from[2];
            const auto* const d = from[3];
            const float wa = weight[0], wb = weight[1], wc = weight[2], wd = weight[3];
            float* const into = row < block ? sum.data() : sumOfBlock.data();
            if (row > 0 && row % block == 0) sumOfBlock.fill(0);
            for (std::size_t i = 0; i < size; ++i) {
                float added = static_cast<float>(a[i]) * wa;
                added += static_cast<float>(b[i]) * wb;
                added += static_cast<float>(c[i]) * wc;
                added += static_cast<float>(d[i]) * wd;
                into[i] += added;
            }
            const bool ends = (row + group) % block == 0 || row + group >= rows.size();
            if (row < block || !ends) continue;
            for (std::size_t i = 0; i < size; ++i)
                sum[i] += sumOfBlock[i];
        }
        std::copy_n(sum.begin(), size, sums.begin() + static_cast<std::ptrdiff_t>(start));
    }
}

PICTAL_BODY void sumRowsBody(std::span<const std::uint32_t* const> rows,
                             std::span<const float> weights, std::span<float> sums) {
    sumRowsOf(rows, weights, sums);
}

PICTAL_BODY void sumSumsBody(std::span<const float* const> rows, std::span<const float> weights,
                             std::span<float> sums) {
    sumRowsOf(rows, weights, sums);
}

/// The components of one pixel, which a single instruction multiplies.
using Sum [[gnu::vector_size(16)]] = float;

PICTAL_BODY void sumColumnsBody(std::span<const float> row, std::size_t origin, const Taps& taps,
                                std::span<float> sums) {
    float* to = sums.data();
    for (const Taps::Window& window : taps.windows) {
        const float* from = row.data() + (window.first - origin) * components;
        const float* const weights = taps.weights.data() + window.weight;
        Sum sum{}, value;
        for (std::size_t start = 0; start < window.count; start += block) {
            const std::size_t end = std::min(start + block, window.count);
            // Two sums, so that an addition need not wait for the one before.
            Sum even{}, odd{};
            std::size_t i = start;
            for (; i + 2 <= end; i += 2, from += 2 * components) {
                std::memcpy(&value, from, sizeof value);
                even += value * weights[i];
                std::memcpy(&value, from + components, sizeof value);
                odd += value * weights[i + 1];
            }
            if (i < end) {
                std::memcpy(&value, from, sizeof value);
                even += value * weights[i];
            }
            sum += even + odd;
        }
        std::memcpy(to, &sum, sizeof sum);
        to += components;
    }
}

/// Rounded, not below 0; halves go up.
PICTAL_BODY std::int32_t rounded(float sum) {
    const float raised = sum + 0.5F;
    const auto level = static_cast<std::int32_t>(raised);
    return level < 0 ? 0 : level;
}

PICTAL_BODY void toPixelsBody(std::span<const float> sums, std::span<std::uint32_t> pixels) {
    const float* const from = sums.data();
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const std::int32_t fourth = rounded(from[4 * i + 3]);
        const std::int32_t alpha = fourth > 255 ? 255 : fourth;
        const std::int32_t first = rounded(from[4 * i]);
        const std::int32_t second = rounded(from[4 * i + 1]);
        const std::int32_t third = rounded(from[4 * i + 2]);
        const std::int32_t red = first > alpha ? alpha : first;
        const std::int32_t green = second > alpha ? alpha : second;
        const std::int32_t blue = third > alpha ? alpha : third;
        pixels[i] = static_cast<std::uint32_t>(red | green << 8 | blue << 16) |
                    static_cast<std::uint32_t>(alpha) << 24;
    }
}

template <template <auto> class At>
constexpr ResampleKernels tableAt{
    At<sumRowsBody>::run,
    At<sumSumsBody>::run,
    At<sumColumnsBody>::run,
    At<toPixelsBody>::run,
};

}  // namespace

const ResampleKernels& resampleKernels(Target target) {
    return tableFor(target, tableAt<AtPlain>, tableAt<AtV3>, tableAt<AtV4>);
}

}  // namespace pictal::kernels
