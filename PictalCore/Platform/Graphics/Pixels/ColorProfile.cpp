#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"

#include <algorithm>
#include <memory>

#include <lcms2.h>

namespace pictal::detail {

namespace {

struct Release {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
    void operator()(cmsContext context) const { cmsDeleteContext(context); }
    void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using Profile = std::unique_ptr<void, Release>;
using Curve = std::unique_ptr<cmsToneCurve, Release>;
/// One of its own keeps the library's complaints away from standard error.
using Context = std::unique_ptr<_cmsContext_struct, Release>;

Context makeContext() {
    return Context(cmsCreateContext(nullptr, nullptr));
}

Profile open(const Context& context, std::span<const std::byte> profile) {
    return Profile(cmsOpenProfileFromMemTHR(context.get(), profile.data(),
                                            static_cast<cmsUInt32Number>(profile.size())));
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

cmsCIExyY measured(Chromaticity point) {
    return {point.x, point.y, 1};
}

}  // namespace

std::optional<std::vector<std::byte>> makeRGBProfile(const Chromaticities& chromaticities,
                                                     std::optional<double> exponent) {
    const Context context = makeContext();
    if (!context) return std::nullopt;
    // The constants of IEC 61966-2-1: ((x + 0.055) / 1.055) ^ 2.4, below 0.04045 x / 12.92.
    constexpr std::array standard{2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    const Curve curve(exponent ? cmsBuildGamma(context.get(), *exponent)
                               : cmsBuildParametricToneCurve(context.get(), 4, standard.data()));
    const cmsCIExyY white = measured(chromaticities.white);
    const cmsCIExyYTRIPLE primaries{measured(chromaticities.red), measured(chromaticities.green),
                                    measured(chromaticities.blue)};
    const std::array<cmsToneCurve*, 3> curves{curve.get(), curve.get(), curve.get()};
    if (!curve) return std::nullopt;
    return saved(Profile(cmsCreateRGBProfileTHR(context.get(), &white, &primaries, curves.data())));
}

std::optional<std::vector<std::byte>> makeGreyProfile(double exponent) {
    const Context context = makeContext();
    if (!context) return std::nullopt;
    const Curve curve(cmsBuildGamma(context.get(), exponent));
    if (!curve) return std::nullopt;
    return saved(Profile(cmsCreateGrayProfileTHR(context.get(), cmsD50_xyY(), curve.get())));
}

std::optional<std::vector<WideRGB>> greyLevelsInSRGB(std::span<const std::byte> profile,
                                                     std::size_t count) {
    const Context context = makeContext();
    if (!context) return std::nullopt;
    const Profile source = open(context, profile);
    if (!source || cmsGetColorSpace(source.get()) != cmsSigGrayData) return std::nullopt;
    const Profile target(cmsCreate_sRGBProfileTHR(context.get()));
    const std::unique_ptr<void, void (*)(void*)> transform(
        target ? cmsCreateTransformTHR(context.get(), source.get(), TYPE_GRAY_16, target.get(),
                                       TYPE_RGB_16, INTENT_RELATIVE_COLORIMETRIC,
                                       cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE)
               : nullptr,
        [](void* handle) {
            if (handle) cmsDeleteTransform(handle);
        });
    if (!transform) return std::nullopt;

    std::vector<std::uint16_t> grey(count);
    for (std::size_t i = 0; i < count; ++i)
        grey[i] = static_cast<std::uint16_t>((i * 65535 + (count - 1) / 2) / (count - 1));
    std::vector<WideRGB> levels(count);
    cmsDoTransform(transform.get(), grey.data(), levels.data(),
                   static_cast<cmsUInt32Number>(count));
    return levels;
}

std::string profileName(std::span<const std::byte> profile) {
    const Context context = makeContext();
    if (!context) return {};
    const Profile source = open(context, profile);
    std::array<char, 128> text{};
    if (source)
        cmsGetProfileInfoASCII(source.get(), cmsInfoDescription, "en", "US", text.data(),
                               static_cast<cmsUInt32Number>(text.size() - 1));
    std::string name(text.data());
    std::erase_if(name, [](char c) { return c < ' ' || c > '~'; });
    return name;
}

}  // namespace pictal::detail
