#include "PictalCore/OCR/detail/TensorPlanes.h"

#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"
#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"
#include "PictalCore/Platform/Graphics/Pixels/ScaledRows.h"

#include <cstdint>
#include <vector>

namespace pictal::detail {

namespace {

/// Premultiplied pixels over white. No component is above its alpha, so nothing overflows.
void putOnWhite(std::span<std::uint32_t> pixels) {
    for (std::uint32_t& pixel : pixels)
        pixel += (255 - kernels::alphaOf(pixel)) * 0x010101U;
}

}  // namespace

bool isPossible(const PaddleOCRImageSize& size) {
    return size.width <= maximumSide && size.height <= maximumSide &&
           size.width * size.height <= maximumPixelBytes / 4;
}

bool drawPlanes(const CGImage& image, const PaddleOCRImageSize& size,
                PaddleOCRImageChannelOrder order, const std::array<LevelTable, 3>& tables,
                const TensorPlanes& to) {
    const auto conversion = ColorConversion::make(image.colorSpace(), CGColorSpace::sRGB());
    if (!conversion) return false;
    const std::array<int, 3> shifts =
        order == PaddleOCRImageChannelOrder::rgb ? std::array{0, 8, 16} : std::array{16, 8, 0};
    ScaledRows rows(image, ScaledRows::Axis::whole(image.width(), size.width),
                    ScaledRows::Axis::whole(image.height(), size.height),
                    kernels::Shrinking::cubic);
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(size.width));
    for (std::int64_t y = 0; y < size.height; ++y) {
        conversion->convert(rows.row(y), pixels);
        if (!image.isOpaque()) putOnWhite(pixels);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const auto row = to.data.subspan(channel * to.planeLength +
                                             static_cast<std::size_t>(y) * to.rowLength);
            const LevelTable& table = tables[channel];
            for (std::size_t x = 0; x < pixels.size(); ++x)
                row[x] = table[pixels[x] >> shifts[channel] & 255];
        }
    }
    return true;
}

}  // namespace pictal::detail
