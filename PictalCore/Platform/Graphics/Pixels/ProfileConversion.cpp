#include "PictalCore/Platform/Graphics/Pixels/ProfileConversion.h"

namespace pictal::detail {

using namespace colorManagement;

ProfileConversion::ProfileConversion(std::span<const std::byte> profile)
    : bytes_(profile.begin(), profile.end()),
      context_(makeContext()),
      pixels_(transformToSRGB(Format::rgba8)) {}

std::shared_ptr<const ProfileConversion> ProfileConversion::make(
    std::span<const std::byte> profile) {
    std::shared_ptr<const ProfileConversion> made(new ProfileConversion(profile));
    return made->pixels_ ? made : nullptr;
}

Transform ProfileConversion::transformToSRGB(Format format) const {
    return makeTransform(context_, openProfile(context_, bytes_), format, makeSRGBProfile(context_),
                         format);
}

std::optional<ColorComponents> ProfileConversion::toSRGB(const ColorComponents& color) const {
    std::call_once(colorsOnce_, [this] { colors_ = transformToSRGB(Format::rgbDouble); });
    if (!colors_) return std::nullopt;
    ColorComponents converted{};
    convert(colors_, color.data(), converted.data(), 1);
    return converted;
}

}  // namespace pictal::detail
