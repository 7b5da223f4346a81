#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"

#include <algorithm>
#include <array>

#include <lcms2.h>

namespace pictal::detail {

namespace {

struct CloseProfile {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
struct DeleteContext {
    void operator()(cmsContext context) const { cmsDeleteContext(context); }
};
struct DeleteTransform {
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using Profile = std::unique_ptr<void, CloseProfile>;
using Context = std::unique_ptr<_cmsContext_struct, DeleteContext>;

Profile open(cmsContext context, const CGColorSpace& space) {
    const auto bytes = space.iccProfile();
    if (bytes.empty()) return Profile(cmsCreate_sRGBProfileTHR(context));
    Profile profile(cmsOpenProfileFromMemTHR(context, bytes.data(),
                                             static_cast<cmsUInt32Number>(bytes.size())));
    if (profile && cmsGetColorSpace(profile.get()) != cmsSigRgbData) profile.reset();
    return profile;
}

}  // namespace

struct ColorConversion::Transform {
    Context context;
    std::unique_ptr<void, DeleteTransform> handle;
};

ColorConversion::ColorConversion(std::shared_ptr<const Transform> transform)
    : transform_(std::move(transform)) {}

std::optional<ColorConversion> ColorConversion::make(const CGColorSpace& from,
                                                     const CGColorSpace& to) {
    if (from.hasSameNumbersAs(to)) return ColorConversion();
    // A context of its own keeps the library's complaints away from standard error.
    auto transform = std::make_shared<Transform>();
    transform->context.reset(cmsCreateContext(nullptr, nullptr));
    if (!transform->context) return std::nullopt;
    const Profile source = open(transform->context.get(), from);
    const Profile target = open(transform->context.get(), to);
    if (!source || !target) return std::nullopt;
    transform->handle.reset(cmsCreateTransformTHR(transform->context.get(), source.get(),
                                                  TYPE_RGBA_8, target.get(), TYPE_RGBA_8,
                                                  INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOCACHE));
    if (!transform->handle) return std::nullopt;
    return ColorConversion(std::move(transform));
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
        cmsDoTransform(transform_->handle.get(), straight.data(), converted.data(),
                       static_cast<cmsUInt32Number>(count));
        for (std::size_t i = 0; i < count; ++i)
            converted[i] = (converted[i] & 0x00FFFFFF) | (straight[i] & 0xFF000000);
        alpha.premultiply(converted, to.subspan(done, count));
    }
}

}  // namespace pictal::detail
