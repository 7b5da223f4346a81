#pragma once

#include "PictalCore/Platform/Graphics/BlendMode.h"
#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"
#include "PictalCore/Platform/Graphics/detail/Clip.h"
#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"
#include "PictalCore/Platform/Graphics/detail/ImageSource.h"

#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// How a painter treats the coverage that it gets, besides the clip.
struct PaintOptions {
    BlendMode mode = BlendMode::normal;
    std::uint8_t alpha = 255;
    bool antialias = true;
};

/// Puts paint on a canvas wherever a shape reports coverage inside the clip.
class Painter : public CoverageSink {
  public:
    Painter(PixelBuffer& canvas, const Clip& clip, const PaintOptions& options)
        : options_(options), canvas_(canvas), clip_(clip) {}

    void solid(std::int64_t row, std::int64_t left, std::int64_t right) final;
    void varied(std::int64_t row, std::int64_t left, std::span<const std::uint8_t> coverage) final;

  protected:
    /// A span of the canvas to paint on, and where it is.
    struct Target {
        std::int64_t row;
        std::int64_t left;
        std::span<std::uint32_t> pixels;
    };

    const PaintOptions options_;

  private:
    virtual void paint(const Target& target) = 0;
    virtual void paint(const Target& target, std::span<const std::uint8_t> coverage) = 0;

    /// Weighs the coverage in the scratch memory and paints by it.
    void paintScratch(std::int64_t row, std::int64_t left, std::span<std::uint8_t> coverage);
    [[nodiscard]] std::span<std::uint8_t> scratch(std::size_t size);
    [[nodiscard]] Target target(std::int64_t row, std::int64_t left, std::size_t size);

    PixelBuffer& canvas_;
    const Clip& clip_;
    std::vector<std::uint8_t> scratch_;
};

/// Paints one straight colour.
class ColorPainter final : public Painter {
  public:
    ColorPainter(PixelBuffer& canvas, const Clip& clip, const PaintOptions& options,
                 std::uint32_t color)
        : Painter(canvas, clip, options), color_(color) {}

  private:
    void paint(const Target& target) override;
    void paint(const Target& target, std::span<const std::uint8_t> coverage) override;

    std::uint32_t color_;
};

/// Paints the pixels of an image.
class ImagePainter final : public Painter {
  public:
    ImagePainter(PixelBuffer& canvas, const Clip& clip, const PaintOptions& options,
                 ImageSource& source)
        : Painter(canvas, clip, options), source_(source) {}

  private:
    void paint(const Target& target) override;
    void paint(const Target& target, std::span<const std::uint8_t> coverage) override;

    ImageSource& source_;
};

}  // namespace pictal::detail
