#include "PictalCore/Platform/Graphics/CGColorSpace.h"

#include "PictalCore/Platform/Graphics/Pixels/ProfileConversion.h"
#include "PictalCore/Platform/Graphics/Pixels/RGBNumbers.h"

#include <algorithm>

namespace pictal {

CGColorSpace CGColorSpace::of(const detail::RGBNumbers& numbers) {
    const auto profile = detail::makeRGBProfile(numbers.chromaticities, numbers.curve);
    if (!profile) return deviceRGB();
    CGColorSpace space(Kind::icc);
    space.profile_ = detail::ProfileConversion::ofSoundProfile(*profile);
    return space;
}

CGColorSpace CGColorSpace::displayP3() {
    static const CGColorSpace space = of(detail::displayP3);
    return space;
}

CGColorSpace CGColorSpace::adobeRGB1998() {
    static const CGColorSpace space = of(detail::adobeRGB1998);
    return space;
}

std::optional<CGColorSpace> CGColorSpace::fromICCProfile(std::span<const std::byte> profile) {
    CGColorSpace space(Kind::icc);
    space.profile_ = detail::ProfileConversion::make(profile);
    if (!space.profile_) return std::nullopt;
    return space;
}

std::span<const std::byte> CGColorSpace::iccProfile() const {
    return profile_ ? profile_->bytes() : std::span<const std::byte>();
}

bool CGColorSpace::hasSameNumbersAs(const CGColorSpace& other) const {
    return (kind_ != Kind::icc && other.kind_ != Kind::icc) || *this == other;
}

bool operator==(const CGColorSpace& a, const CGColorSpace& b) {
    if (a.kind_ != b.kind_) return false;
    return a.profile_ == b.profile_ || std::ranges::equal(a.iccProfile(), b.iccProfile());
}

}  // namespace pictal
