#pragma once

#include "PictalCore/Platform/ImageIO/PNG.h"

#include <utility>

namespace pictal::detail {

/// Puts a file together, chunk by chunk, in the order of the members.
class PNGChunkWriter {
  public:
    void begin(std::int64_t width, std::int64_t height, PNG::ColorType colorType, int bitDepth);
    /// The sRGB mark or the profile; nothing for device RGB.
    void colorSpace(const CGColorSpace& space);
    /// @param colors  straight, the translucent ones first
    void palette(std::span<const std::uint32_t> colors);
    /// A piece of the zlib stream of filtered rows.
    void imageData(std::span<const std::byte> stream);
    void end();

    /// What was put together since the last call.
    [[nodiscard]] std::vector<std::byte> take() { return std::exchange(bytes_, {}); }

  private:
    void chunk(std::string_view type, std::span<const std::byte> data);

    std::vector<std::byte> bytes_;
};

}  // namespace pictal::detail
