#include "PictalCore/Platform/Graphics/CGColorSpace.h"

#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"

#include <algorithm>

namespace pictal {

std::optional<CGColorSpace> CGColorSpace::fromICCProfile(std::span<const std::byte> profile) {
    CGColorSpace space(Kind::icc);
    space.profile_ = std::make_shared<const std::vector<std::byte>>(profile.begin(), profile.end());
    // A profile that nothing can be converted through says nothing about colours.
    if (!detail::ColorConversion::make(space, sRGB())) return std::nullopt;
    return space;
}

std::span<const std::byte> CGColorSpace::iccProfile() const {
    return profile_ ? std::span<const std::byte>(*profile_) : std::span<const std::byte>();
}

bool CGColorSpace::hasSameNumbersAs(const CGColorSpace& other) const {
    return (kind_ != Kind::icc && other.kind_ != Kind::icc) || *this == other;
}

bool operator==(const CGColorSpace& a, const CGColorSpace& b) {
    if (a.kind_ != b.kind_) return false;
    return a.profile_ == b.profile_ || std::ranges::equal(a.iccProfile(), b.iccProfile());
}

}  // namespace pictal
