#include "PictalCore/OCR/detail/GreatestValue.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace pictal::detail {

namespace {

constexpr float lowest = -std::numeric_limits<float>::infinity();

/// As many values as the widest registers hold, twice, so that a comparison need not wait for the
/// one before.
constexpr std::size_t lanes = 32;
using Lanes [[gnu::vector_size(lanes * sizeof(float))]] = float;

/// The greatest number of a block, or the lowest there is.
PICTAL_BODY float greatest(const float* values, std::size_t count) {
    Lanes best = Lanes{} + lowest, next;
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        std::memcpy(&next, values + i, sizeof next);
        best = next > best ? next : best;  // false for a NaN
    }
    std::array<float, lanes> each;
    std::memcpy(each.data(), &best, sizeof best);
    float result = lowest;
    for (const float value : each)
        result = value > result ? value : result;
    for (; i < count; ++i)
        result = values[i] > result ? values[i] : result;
    return result;
}

PICTAL_BODY std::size_t firstGreatestBody(std::span<const float> values) {
    // Only the block that has it is searched again, while it is near.
    constexpr std::size_t block = 1024;
    std::size_t found = 0;
    float best = lowest;
    for (std::size_t start = 0; start < values.size(); start += block) {
        const std::size_t count = std::min(block, values.size() - start);
        const float here = greatest(values.data() + start, count);
        if (here <= best) continue;
        best = here;
        found = start;
    }
    // With nothing above the lowest, that itself may still stand behind NaNs.
    for (std::size_t i = found; i < values.size(); ++i)
        if (values[i] == best) return i;
    return 0;
}

}  // namespace

FirstGreatest firstGreatestAt(kernels::Target target) {
    using namespace kernels;
    static constexpr FirstGreatest plain = AtPlain<firstGreatestBody>::run;
    static constexpr FirstGreatest v3 = AtV3<firstGreatestBody>::run;
    static constexpr FirstGreatest v4 = AtV4<firstGreatestBody>::run;
    return tableFor(target, plain, v3, v4);
}

std::size_t firstGreatest(std::span<const float> values) {
    static const FirstGreatest best = firstGreatestAt(kernels::bestTarget());
    return best(values);
}

}  // namespace pictal::detail
