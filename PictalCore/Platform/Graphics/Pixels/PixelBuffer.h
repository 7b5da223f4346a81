#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace pictal::detail {

static_assert(std::endian::native == std::endian::little,
              "a pixel is a 32-bit word with red in its low byte");

/// A side of more pixels is refused: side × 4 fits 32 bits and side × side × 4 fits 64.
inline constexpr std::int64_t maximumSide = 8'000'000;
/// More pixel memory is refused.
inline constexpr std::int64_t maximumPixelBytes = std::int64_t{8} << 30;

/// Owns the pixels of one raster: 8-bit RGBA, top row first, rows of 1 kB and more 64-byte aligned.
/// Large buffers are on 2 MiB boundaries with huge pages asked for, since page faults are most of
/// the cost of a new picture.
class PixelBuffer {
  public:
    enum class Contents { undefined, transparent };

    /// A row is at most so many bytes longer than its pixels.
    static constexpr std::size_t greatestPadding = 60;

    /// @param spare  bytes to have behind the last row, for who makes the pixels
    /// @return nothing for a size that is not positive, is over the limits, or does not fit memory
    [[nodiscard]] static std::optional<PixelBuffer> make(std::int64_t width, std::int64_t height,
                                                         Contents, std::size_t spare = 0);

    /// Whether `make` fails for such a size only where the memory is missing.
    [[nodiscard]] static bool isWithinLimits(std::int64_t width, std::int64_t height);

    PixelBuffer() = default;
    PixelBuffer(PixelBuffer&& other) noexcept;
    PixelBuffer& operator=(PixelBuffer&& other) noexcept;
    ~PixelBuffer();

    [[nodiscard]] std::int64_t width() const { return width_; }
    [[nodiscard]] std::int64_t height() const { return height_; }
    /// From a pixel to the one below it, in pixels.
    [[nodiscard]] std::int64_t stride() const { return stride_; }
    [[nodiscard]] const std::uint32_t* pixels() const { return pixels_; }

    [[nodiscard]] std::span<std::uint32_t> row(std::int64_t y) {
        return {pixels_ + y * stride_, static_cast<std::size_t>(width_)};
    }
    [[nodiscard]] std::span<const std::uint32_t> row(std::int64_t y) const {
        return {pixels_ + y * stride_, static_cast<std::size_t>(width_)};
    }

    /// All rows, and then the spare bytes.
    [[nodiscard]] std::span<std::byte> memory() {
        return {reinterpret_cast<std::byte*>(pixels_), bytes_};
    }

  private:
    PixelBuffer(std::int64_t width, std::int64_t height, std::int64_t stride)
        : width_(width), height_(height), stride_(stride) {}
    void release() noexcept;

    std::int64_t width_ = 0;
    std::int64_t height_ = 0;
    std::int64_t stride_ = 0;
    std::uint32_t* pixels_ = nullptr;
    std::size_t bytes_ = 0;
    std::size_t mappedBytes_ = 0;  // 0: from the heap
};

}  // namespace pictal::detail
