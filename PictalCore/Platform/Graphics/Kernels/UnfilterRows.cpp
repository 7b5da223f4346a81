#include "PictalCore/Platform/Graphics/Kernels/UnfilterRows.h"

#include <bit>
#include <cstring>

namespace pictal::kernels {

namespace {

/// The four components of a pixel in 16 bits each, and four more that are not used: vectors of
/// this size are the processor's own. Every pixel waits for the one on its left, so that only the
/// components go side by side.
using Components [[gnu::vector_size(16)]] = std::int16_t;
using Halves [[gnu::vector_size(16)]] = std::uint64_t;

Components componentsOf(std::uint32_t word) {
    std::uint64_t spread = (word | std::uint64_t{word} << 16) & 0x0000'FFFF'0000'FFFF;
    spread = (spread | spread << 8) & 0x00FF'00FF'00FF'00FF;
    return std::bit_cast<Components>(Halves{spread, 0});
}

std::uint32_t wordOf(Components components) {
    std::uint64_t spread = std::bit_cast<Halves>(components)[0];
    spread = (spread | spread >> 8) & 0x0000'FFFF'0000'FFFF;
    return static_cast<std::uint32_t>(spread | spread >> 16);
}

Components chosen(Components mask, Components yes, Components no) {
    return (mask & yes) | (~mask & no);
}

/// Of left, up and upper left the one that is nearest to left + up − upLeft, in this order when two
/// are as near. Written with a = left and so on: where c lies between a and b, the sum does too,
/// and c is nearest unless 3c − a − b passes one of them.
Components paethPrediction(Components left, Components up, Components threeUpLeftMinusUp,
                           Components upLeft) {
    const Components threshold = threeUpLeftMinusUp - left;
    const Components low = left < up ? left : up;
    const Components high = left < up ? up : left;
    return chosen(low >= threshold, high, chosen(threshold >= high, low, upLeft));
}

/// Four sums of bytes, without carries from one to the next.
std::uint32_t sum(std::uint32_t a, std::uint32_t b) {
    return ((a & 0x7F7F7F7F) + (b & 0x7F7F7F7F)) ^ ((a ^ b) & 0x80808080);
}

/// Four means of bytes, rounded down.
std::uint32_t mean(std::uint32_t a, std::uint32_t b) {
    return (a & b) + (((a ^ b) >> 1) & 0x7F7F7F7F);
}

/// @param alpha  is or-ed to every pixel
template <std::size_t pixelBytes, std::uint32_t alpha>
void unfilter(RowFilter filter, const std::uint8_t* from, std::span<const std::uint32_t> above,
              std::span<std::uint32_t> to) {
    const auto stored = [=](std::size_t i) {
        std::uint32_t word = 0;
        std::memcpy(&word, from + i * pixelBytes, 4);
        return word;
    };
    std::uint32_t left = 0;
    switch (filter) {
        case RowFilter::none:
            for (std::size_t i = 0; i < to.size(); ++i)
                to[i] = stored(i) | alpha;
            break;
        case RowFilter::sub:
            for (std::size_t i = 0; i < to.size(); ++i) {
                left = sum(stored(i), left);
                to[i] = left | alpha;
            }
            break;
        case RowFilter::up:
            for (std::size_t i = 0; i < to.size(); ++i)
                to[i] = sum(stored(i), above[i]) | alpha;
            break;
        case RowFilter::average:
            for (std::size_t i = 0; i < to.size(); ++i) {
                left = sum(stored(i), mean(left, above[i]));
                to[i] = left | alpha;
            }
            break;
        case RowFilter::paeth: {
            Components leftOne{};
            Components upLeft{};
            const Components byte = Components{} + 255;
            for (std::size_t i = 0; i < to.size(); ++i) {
                const Components up = componentsOf(above[i]);
                const Components prediction =
                    paethPrediction(leftOne, up, upLeft + upLeft + upLeft - up, upLeft);
                leftOne = (componentsOf(stored(i)) + prediction) & byte;
                upLeft = up;
                to[i] = wordOf(leftOne) | alpha;
            }
            break;
        }
    }
}

}  // namespace

void unfilterRGB(RowFilter filter, const std::uint8_t* from, std::span<const std::uint32_t> above,
                 std::span<std::uint32_t> to) {
    unfilter<3, 0xFF000000>(filter, from, above, to);
}

void unfilterRGBA(RowFilter filter, const std::uint8_t* from, std::span<const std::uint32_t> above,
                  std::span<std::uint32_t> to) {
    unfilter<4, 0>(filter, from, above, to);
}

}  // namespace pictal::kernels
