#include "PictalCore/Platform/ImageIO/detail/FreshColors.h"

namespace pictal::detail {

void FreshColors::add(std::span<const std::uint32_t> row, std::span<const std::uint32_t> above) {
    std::size_t changed = 0, fresh = 0;
    std::uint32_t left = ~row[0];
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::uint32_t pixel = row[i];
        const bool repeats = pixel == left || (!above.empty() && pixel == above[i]);
        left = pixel;
        if (repeats) continue;
        ++changed;
        // Fibonacci hashing, as a palette's.
        std::uint32_t& seen = seen_[pixel * 2'654'435'769U >> 22];
        fresh += std::size_t{seen != pixel};
        seen = pixel;
    }
    pixels_ += row.size();
    changed_ += changed;
    fresh_ += fresh;
}

}  // namespace pictal::detail
