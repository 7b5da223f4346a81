#pragma once

#include "Tests/Support/PictureProbe.h"

#include <cstdint>

namespace pictal {

/// Frames of a page of made-up writing, cut at any place: lines of words out of strokes, as far
/// down as anyone scrolls. What stands still is drawn over it.
class PageFrames {
  public:
    /// Rows and columns that do not move.
    std::int64_t header = 0, footer = 0, sidebar = 0;
    /// Every so many lines are the same again; 0 for never.
    std::uint32_t repeatEvery = 0;
    /// Each line begins with letters of its own.
    bool numbered = false;
    /// So many levels that every pixel is off at most, another way in each frame.
    std::uint32_t noise = 0;

    PageFrames(std::int64_t width, std::int64_t height, std::uint32_t seed)
        : width_(width), height_(height), seed_(seed) {}

    /// The frame whose upper left corner is at `column` and `top` of the page.
    CGImage frame(std::int64_t top, std::int64_t column = 0) const {
        return pictureOf(width_, height_, [&](std::uint32_t x, std::uint32_t y) {
            const bool bar = y < header || std::int64_t{y} >= height_ - footer || x < sidebar;
            if (bar) return writing(x, y, 1000) & 0xFFF0E0FF;
            const std::uint32_t ink = writing(x + static_cast<std::uint32_t>(column),
                                              y + static_cast<std::uint32_t>(top), 0);
            if (noise == 0) return ink;
            // Down from white, up from ink; by the pixel and the frame.
            const std::uint32_t salt = stirred(static_cast<std::uint32_t>(top * 64 + column));
            const std::uint32_t step = stirred(salt + y * 8192 + x) % (noise + 1) * 0x010101;
            return ink == 0xFFFFFFFF ? ink - step : ink + step;
        });
    }

  private:
    static constexpr std::uint32_t lineHeight = 25, letterWidth = 8;

    static std::uint32_t stirred(std::uint32_t value) {
        value = (value ^ (value >> 16)) * 0x7FEB352D;
        value = (value ^ (value >> 15)) * 0x846CA68B;
        return value ^ (value >> 16);
    }
    /// White, or a grey of ink: eight by fifteen pixels a letter, about a sixth of them blanks.
    std::uint32_t writing(std::uint32_t x, std::uint32_t y, std::uint32_t salt) const {
        std::uint32_t line = y / lineHeight;
        const std::uint32_t letter = x / letterWidth;
        const bool own = numbered && letter % 32 < 4;
        if (repeatEvery > 0 && !own) line %= repeatEvery;
        const std::uint32_t shape = stirred(stirred(stirred(seed_ + salt) + line) + letter);
        const std::uint32_t row = y % lineHeight;
        if (row < 5 || row >= 20 || shape % 6 == 0) return 0xFFFFFFFF;
        const std::uint32_t stroke = stirred(shape + (row - 5) / 2) >> (x % letterWidth) & 1;
        return stroke ? 0xFF202020 : 0xFFFFFFFF;
    }

    std::int64_t width_, height_;
    std::uint32_t seed_;
};

}  // namespace pictal
