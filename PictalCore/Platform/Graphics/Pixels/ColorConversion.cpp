#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"

#include <algorithm>
#include <array>

namespace pictal::detail {

using namespace colorManagement;

namespace {

struct OwnTransform {
    Context context;
    Transform transform;
};

Profile open(const Context& context, const CGColorSpace& space) {
    const auto bytes = space.iccProfile();
    return bytes.empty() ? makeSRGBProfile(context) : openProfile(context, bytes);
}

}  // namespace

std::optional<ColorConversion> ColorConversion::make(const CGColorSpace& from,
                                                     const CGColorSpace& to) {
    ColorConversion conversion;
    if (from.hasSameNumbersAs(to)) return conversion;
    if (from.profile_ && !to.profile_) {
        conversion.transform_ = {from.profile_, &from.profile_->pixelsToSRGB()};
        return conversion;
    }
    const auto own = std::make_shared<OwnTransform>();
    own->context = makeContext();
    own->transform = makeTransform(own->context, open(own->context, from), Format::rgba8,
                                   open(own->context, to), Format::rgba8);
    if (!own->transform) return std::nullopt;
    conversion.transform_ = {own, &own->transform};
    return conversion;
}

std::optional<ColorComponents> ColorConversion::colorInSRGB(const ColorComponents& color,
                                                            const CGColorSpace& space) {
    return space.profile_ ? space.profile_->toSRGB(color) : std::optional(color);
}

void ColorConversion::convert(std::span<const std::uint32_t> from,
                              std::span<std::uint32_t> to) const {
    if (!transform_) {
        if (from.data() != to.data()) std::ranges::copy(from, to.begin());
        return;
    }
    // Colour management wants straight alpha; a piece at a time stays in the first cache.
    const kernels::AlphaKernels& alpha = kernels::alphaKernels();
    std::array<std::uint32_t, 1024> straightPiece;
    std::array<std::uint32_t, straightPiece.size()> convertedPiece;
    for (std::size_t done = 0; done < from.size(); done += straightPiece.size()) {
        const std::size_t count = std::min(straightPiece.size(), from.size() - done);
        const auto source = from.subspan(done, count);
        const auto straight = std::span(straightPiece).first(count);
        const auto converted = std::span(convertedPiece).first(count);
        alpha.unpremultiply(source, straight);
        colorManagement::convert(*transform_, straight.data(), converted.data(), count);
        for (std::size_t i = 0; i < count; ++i)
            converted[i] = (converted[i] & 0x00FFFFFF) | (straight[i] & 0xFF000000);
        alpha.premultiply(converted, to.subspan(done, count));
    }
}

}  // namespace pictal::detail
