#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"

#include "PictalCore/Platform/Graphics/Pixels/ColorManagement.h"

#include <algorithm>
#include <memory>

#include <lcms2.h>

namespace pictal::detail {

using namespace colorManagement;

namespace {

struct FreeCurve {
    void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using Curve = std::unique_ptr<cmsToneCurve, FreeCurve>;

cmsContext handle(const Context& context) {
    return static_cast<cmsContext>(context.get());
}

std::optional<std::vector<std::byte>> saved(const Profile& profile) {
    cmsUInt32Number size = 0;
    if (!profile || !cmsSaveProfileToMem(profile.get(), nullptr, &size)) return std::nullopt;
    std::vector<std::byte> bytes(size);
    if (!cmsSaveProfileToMem(profile.get(), bytes.data(), &size)) return std::nullopt;
    // The date of making; without one, equal profiles are equal bytes.
    std::ranges::fill(std::span(bytes).subspan(24, 12), std::byte{0});
    return bytes;
}

/// Null when there is no memory.
Curve made(const Context& context, const ToneCurve& curve) {
    // Below the last number x times the fourth, else (x times the second plus the third) to the
    // power of the first: ((x + 0.055) / 1.055) ^ 2.4 and ((x + 0.099) / 1.099) ^ (1 / 0.45).
    using Parameters = std::array<double, 5>;
    constexpr Parameters standard{2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    constexpr Parameters video{1 / 0.45, 1 / 1.099, 0.099 / 1.099, 1 / 4.5, 0.081};
    if (curve.kind == ToneCurve::Kind::power)
        return Curve(cmsBuildGamma(handle(context), curve.exponent));
    const Parameters& parameters = curve.kind == ToneCurve::Kind::video ? video : standard;
    return Curve(cmsBuildParametricToneCurve(handle(context), 4, parameters.data()));
}

cmsCIExyY measured(Chromaticity point) {
    return {point.x, point.y, 1};
}

}  // namespace

std::optional<std::vector<std::byte>> makeRGBProfile(const Chromaticities& chromaticities,
                                                     const ToneCurve& toneCurve) {
    const Context context = makeContext();
    if (!context) return std::nullopt;
    const Curve curve = made(context, toneCurve);
    const cmsCIExyY white = measured(chromaticities.white);
    const cmsCIExyYTRIPLE primaries{measured(chromaticities.red), measured(chromaticities.green),
                                    measured(chromaticities.blue)};
    const std::array<cmsToneCurve*, 3> curves{curve.get(), curve.get(), curve.get()};
    if (!curve) return std::nullopt;
    return saved(
        Profile(cmsCreateRGBProfileTHR(handle(context), &white, &primaries, curves.data())));
}

std::optional<std::vector<std::byte>> makeGreyProfile(const ToneCurve& toneCurve) {
    const Context context = makeContext();
    if (!context) return std::nullopt;
    const Curve curve = made(context, toneCurve);
    if (!curve) return std::nullopt;
    return saved(Profile(cmsCreateGrayProfileTHR(handle(context), cmsD50_xyY(), curve.get())));
}

std::optional<std::vector<WideRGB>> greyLevelsInSRGB(std::span<const std::byte> profile,
                                                     std::size_t count) {
    const Context context = makeContext();
    const Transform transform =
        makeTransform(context, openProfile(context, profile), Format::grey16,
                      makeSRGBProfile(context), Format::rgb16);
    if (!transform) return std::nullopt;

    std::vector<std::uint16_t> grey(count);
    for (std::size_t i = 0; i < count; ++i)
        grey[i] = static_cast<std::uint16_t>((i * 65535 + (count - 1) / 2) / (count - 1));
    std::vector<WideRGB> levels(count);
    convert(transform, grey.data(), levels.data(), count);
    return levels;
}

std::string profileName(std::span<const std::byte> profile) {
    const Context context = makeContext();
    const Profile source = openProfile(context, profile);
    std::array<char, 128> text{};
    if (source)
        cmsGetProfileInfoASCII(source.get(), cmsInfoDescription, "en", "US", text.data(),
                               static_cast<cmsUInt32Number>(text.size() - 1));
    std::string name(text.data());
    std::erase_if(name, [](char c) { return c < ' ' || c > '~'; });
    return name;
}

}  // namespace pictal::detail
