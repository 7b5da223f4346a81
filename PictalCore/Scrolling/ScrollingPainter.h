#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Scrolling/ScrollingStitchFrame.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <span>

namespace pictal {

enum class ScrollingPainterError {
    /// It lies above the frame before, is wider than the picture, or ends beyond 64 bits.
    wrongFrame,
    /// The colours of a frame cannot be converted to sRGB.
    cannotConvertColors,
    /// Frames that blend do not fit memory.
    outOfMemory,
    /// The receiver of the rows refused one; it knows why.
    sinkFailed,
};

/// Stitches a picture that is never whole in memory: frames go in by their positions, the highest
/// first, and rows in sRGB come out as soon as no later frame can touch them. It holds the frames
/// that reach below the last one's top, and pixels of its own only where a frame that is
/// translucent or narrow lies on another.
class PICTAL_API ScrollingPainter {
  public:
    /// Takes the next row, premultiplied words as in `CGImage::row`; false when it cannot.
    using Sink = std::function<bool(std::span<const std::uint32_t> row)>;

    /// @param width  of the rows; a narrower frame leaves the columns to its right transparent
    ScrollingPainter(std::int64_t width, Sink sink);
    ScrollingPainter(ScrollingPainter&&) noexcept;
    ScrollingPainter& operator=(ScrollingPainter&&) noexcept;
    ~ScrollingPainter();

    /// Rows begin at the first frame's position. What is not covered comes out transparent.
    [[nodiscard]] std::expected<void, ScrollingPainterError> add(const ScrollingStitchFrame& frame);
    /// The rows that are left.
    [[nodiscard]] std::expected<void, ScrollingPainterError> finish();
    /// Whether every pixel that came out so far was opaque.
    [[nodiscard]] bool isOpaque() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace pictal
