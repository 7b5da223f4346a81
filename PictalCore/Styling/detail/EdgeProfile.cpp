#include "PictalCore/Styling/detail/EdgeProfile.h"

#include "PictalCore/Platform/Graphics/Kernels/GaussianBlur.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

EdgeProfile::EdgeProfile(double shift, double deviation, std::int64_t cells) : cells_(cells) {
    const auto scale = static_cast<double>(cells);
    const double reach = kernels::gaussianReach(deviation);
    firstCell_ = static_cast<std::int64_t>(std::floor((shift - reach - 1) * scale));
    const auto lastCell = static_cast<std::int64_t>(std::ceil((shift + reach) * scale));
    values_.reserve(static_cast<std::size_t>(lastCell - firstCell_ + 1));
    for (std::int64_t cell = firstCell_; cell <= lastCell; ++cell)
        values_.push_back(static_cast<float>(
            kernels::blurredEdge(static_cast<double>(cell) / scale - shift, deviation)));
}

float EdgeProfile::covered(std::int64_t cell) const {
    const std::int64_t last = std::ssize(values_) - 1;
    return values_[static_cast<std::size_t>(std::clamp(cell - firstCell_, std::int64_t{0}, last))];
}

void EdgeProfile::addRun(std::span<float> row, std::int64_t first, std::int64_t begin,
                         std::int64_t end, float weight) const {
    // Pixels before the first or after the last of these see nothing of the run.
    const std::int64_t lastCell = firstCell_ + std::ssize(values_);
    const std::int64_t from = std::max((begin + firstCell_ - first) / cells_, std::int64_t{0});
    const std::int64_t to = std::min((end + lastCell - first) / cells_ + 1, std::ssize(row));
    std::int64_t cell = first + from * cells_;
    for (std::int64_t x = from; x < to; ++x, cell += cells_)
        row[static_cast<std::size_t>(x)] += weight * (covered(cell - begin) - covered(cell - end));
}

}  // namespace pictal::detail
