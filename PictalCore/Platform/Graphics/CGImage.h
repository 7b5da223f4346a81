#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "PictalCore/Platform/Graphics/CGColorSpace.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace pictal {

class CGImage;

namespace detail {
class PixelBuffer;
enum class Opacity : unsigned char;
CGImage imageOf(PixelBuffer&& pixels, const CGColorSpace& colorSpace, Opacity opacity);
}  // namespace detail

/// A picture that never changes: 8-bit RGBA with premultiplied alpha, the top row first. A handle
/// on shared pixels, so that copying is cheap and a crop is a view. A default one is empty, 0 × 0.
class PICTAL_API CGImage {
  public:
    /// What the alpha bytes of pixels that are handed in mean.
    enum class Alpha { straight, premultiplied, ignored };

    struct Layout {
        std::int64_t width = 0;
        std::int64_t height = 0;
        /// From a row to the one below it; at least width × 4.
        std::int64_t bytesPerRow = 0;
        Alpha alpha = Alpha::premultiplied;
    };

    /// Copies pixels in: four bytes each, red, green, blue, alpha.
    /// @return nothing when the layout is no picture, does not fit `bytes`, or exceeds memory
    [[nodiscard]] static std::optional<CGImage> fromBytes(std::span<const std::byte> bytes,
                                                          const Layout& layout,
                                                          const CGColorSpace& colorSpace);

    CGImage();
    CGImage(const CGImage&);
    CGImage(CGImage&&) noexcept;
    CGImage& operator=(const CGImage&);
    CGImage& operator=(CGImage&&) noexcept;
    ~CGImage();

    [[nodiscard]] std::int64_t width() const { return width_; }
    [[nodiscard]] std::int64_t height() const { return height_; }
    [[nodiscard]] const CGColorSpace& colorSpace() const;
    /// Whether every pixel is known to be opaque. Found once when the pixels came in; a crop knows
    /// no more than its whole.
    [[nodiscard]] bool isOpaque() const;

    /// The pixels of row y, counted from the top: words with red in the low byte, then green, blue
    /// and alpha, premultiplied. 0 ≤ y < height().
    [[nodiscard]] std::span<const std::uint32_t> row(std::int64_t y) const {
        return {pixels_ + y * stride_, static_cast<std::size_t>(width_)};
    }

    /// The part inside `rect`, which is made integral and cut to the image first; pixels, the
    /// origin at the upper left, y downward.
    /// @return nothing when no pixel is left
    [[nodiscard]] std::optional<CGImage> cropping(const CGRect& rect) const;

    /// Whether both are one image: the same pixels in memory, not merely equal ones.
    [[nodiscard]] bool isSameImage(const CGImage& other) const;

  private:
    struct Storage;
    friend CGImage detail::imageOf(detail::PixelBuffer&&, const CGColorSpace&, detail::Opacity);

    std::shared_ptr<const Storage> storage_;
    const std::uint32_t* pixels_ = nullptr;
    std::int64_t width_ = 0;
    std::int64_t height_ = 0;
    std::int64_t stride_ = 0;
};

}  // namespace pictal
