#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
#include "PictalCore/Platform/Graphics/Pixels/ProfileConversion.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pictal::detail {

using colorManagement::Format;

namespace {

/// A piece of a row at a time stays in the first cache.
constexpr std::size_t pieceSize = 1024;
using Piece = std::array<std::uint32_t, pieceSize>;

std::uint32_t premultipliedLevel(float component, std::uint32_t alpha) {
    return static_cast<std::uint32_t>(
        std::lround(std::clamp(component, 0.0F, 1.0F) * static_cast<float>(alpha)));
}

/// Eight bits of straight alpha are too few where alpha is low: there, translucent pixels would be
/// five levels off.
void convertTranslucent(const ProfileConversion& conversion, std::span<const std::uint32_t> from,
                        std::span<std::uint32_t> to) {
    using namespace kernels;
    using Components = std::array<float, 3>;
    std::array<Components, pieceSize> straight;
    std::array<std::size_t, pieceSize> places;
    std::size_t count = 0;
    for (std::size_t i = 0; i < from.size(); ++i) {
        const std::uint32_t alpha = alphaOf(from[i]);
        if (alpha == 0 || alpha == 255) continue;
        const auto component = [=](std::uint32_t level) {
            return std::min(static_cast<float>(level) / static_cast<float>(alpha), 1.0F);
        };
        straight[count] = {component(redOf(from[i])), component(greenOf(from[i])),
                           component(blueOf(from[i]))};
        places[count++] = i;
    }
    if (count == 0) return;
    const auto& transform = conversion.transform(Format::rgbFloat);
    if (!transform) return;  // no memory: eight bits it stays
    colorManagement::convert(transform, straight.data(), straight.data(), count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t alpha = alphaOf(from[places[i]]);
        const auto& [red, green, blue] = straight[i];
        to[places[i]] = pixelOf(premultipliedLevel(red, alpha), premultipliedLevel(green, alpha),
                                premultipliedLevel(blue, alpha), alpha);
    }
}

std::optional<RGBNumbers> numbersOf(const CGColorSpace& space) {
    if (space.iccProfile().empty()) return standardRGB;
    if (space == CGColorSpace::displayP3()) return displayP3;
    if (space == CGColorSpace::adobeRGB1998()) return adobeRGB1998;
    return std::nullopt;
}

}  // namespace

std::optional<ColorConversion> ColorConversion::make(const CGColorSpace& from,
                                                     const CGColorSpace& to) {
    ColorConversion conversion;
    if (from.hasSameNumbersAs(to)) return conversion;
    if (from.profile_ && !to.profile_) {
        conversion.conversion_ = from.profile_;
        if (!from.profile_->transform(Format::rgba8)) return std::nullopt;
    } else {
        conversion.conversion_ = ProfileConversion::make(from.iccProfile(), to.iccProfile());
        if (!conversion.conversion_) return std::nullopt;
    }
    return conversion;
}

void ColorConversion::convert(std::span<const std::uint32_t> from,
                              std::span<std::uint32_t> to) const {
    if (!conversion_) {
        if (from.data() != to.data()) std::ranges::copy(from, to.begin());
        return;
    }
    const auto& opaque = conversion_->transform(Format::rgba8);
    const kernels::AlphaKernels& alpha = kernels::alphaKernels();
    Piece sourcePiece;
    Piece straightPiece;
    Piece convertedPiece;
    for (std::size_t done = 0; done < from.size(); done += pieceSize) {
        const std::size_t count = std::min(pieceSize, from.size() - done);
        const auto source = std::span(sourcePiece).first(count);
        const auto straight = std::span(straightPiece).first(count);
        const auto converted = std::span(convertedPiece).first(count);
        const auto target = to.subspan(done, count);
        std::ranges::copy(from.subspan(done, count), source.begin());  // may be the target too
        alpha.unpremultiply(source, straight);
        colorManagement::convert(opaque, straight.data(), converted.data(), count);
        for (std::size_t i = 0; i < count; ++i)
            converted[i] = (converted[i] & 0x00FFFFFF) | (straight[i] & 0xFF000000);
        alpha.premultiply(converted, target);
        convertTranslucent(*conversion_, source, target);
    }
}

std::optional<ColorComponents> ColorConversion::convert(const ColorComponents& color,
                                                        const CGColorSpace& from,
                                                        const CGColorSpace& to) {
    if (from.hasSameNumbersAs(to)) return color;
    const auto target = numbersOf(to);
    if (!target) return std::nullopt;
    if (const auto source = numbersOf(from)) return converted(color, *source, *target);
    // What sRGB does not hold comes out below 0 or above 1, and goes on to a space that does.
    const auto& transform = from.profile_->transform(Format::rgbDouble);
    if (!transform) return std::nullopt;
    ColorComponents inSRGB{};
    colorManagement::convert(transform, color.data(), inSRGB.data(), 1);
    return converted(inSRGB, standardRGB, *target);
}

}  // namespace pictal::detail
