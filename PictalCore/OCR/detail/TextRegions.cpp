#include "PictalCore/OCR/detail/TextRegions.h"

#include <algorithm>
#include <cstring>

namespace pictal::detail {

TextRegions::TextRegions(std::span<const float> map, std::int64_t width, std::int64_t height,
                         float threshold)
    : map_(map), width_(width), height_(height), open_(map.size()) {
    for (std::size_t i = 0; i < map.size(); ++i)
        open_[i] = map[i] > threshold;
}

std::optional<TextRegion> TextRegions::next() {
    if (scanned_ == open_.size()) return std::nullopt;
    // Most of a map is no text, and nothing looks for a byte faster.
    const void* found = std::memchr(open_.data() + scanned_, 1, open_.size() - scanned_);
    if (!found) {
        scanned_ = open_.size();
        return std::nullopt;
    }
    scanned_ = static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - open_.data());
    const auto index = static_cast<std::int64_t>(scanned_);
    return grown({index % width_, index / width_});
}

void TextRegions::push(std::int64_t x, std::int64_t y) {
    std::uint8_t& open = open_[static_cast<std::size_t>(y * width_ + x)];
    if (open == 0) return;
    open = 0;
    stack_.push_back({x, y});
}

TextRegion TextRegions::grown(Cell seed) {
    TextRegion region{seed.x, seed.y, seed.x, seed.y, 0, 0};
    push(seed.x, seed.y);
    while (!stack_.empty()) {
        const auto [x, y] = stack_.back();
        stack_.pop_back();
        region.minX = std::min(region.minX, x);
        region.maxX = std::max(region.maxX, x);
        region.minY = std::min(region.minY, y);
        region.maxY = std::max(region.maxY, y);
        region.sum += map_[static_cast<std::size_t>(y * width_ + x)];
        ++region.count;
        if (x > 0) push(x - 1, y);
        if (x + 1 < width_) push(x + 1, y);
        if (y > 0) push(x, y - 1);
        if (y + 1 < height_) push(x, y + 1);
    }
    return region;
}

}  // namespace pictal::detail
