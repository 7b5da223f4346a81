#include "PictalCore/Platform/Graphics/Pixels/ColorManagement.h"

#include <lcms2.h>

namespace pictal::detail::colorManagement {

namespace {

cmsContext handle(const Context& context) {
    return static_cast<cmsContext>(context.get());
}

cmsUInt32Number typeOf(Format format) {
    switch (format) {
        case Format::rgba8:
            return TYPE_RGBA_8;
        case Format::rgbFloat:
            return TYPE_RGB_FLT;
        case Format::rgbDouble:
            return TYPE_RGB_DBL;
        case Format::grey16:
            return TYPE_GRAY_16;
        case Format::rgb16:
            return TYPE_RGB_16;
    }
    return 0;
}

bool hasComponents(const Profile& profile, Format format) {
    const auto space = format == Format::grey16 ? cmsSigGrayData : cmsSigRgbData;
    return profile && cmsGetColorSpace(profile.get()) == space;
}

}  // namespace

void DeleteContext::operator()(void* context) const {
    cmsDeleteContext(static_cast<cmsContext>(context));
}
void CloseProfile::operator()(void* profile) const {
    cmsCloseProfile(profile);
}
void DeleteTransform::operator()(void* transform) const {
    cmsDeleteTransform(transform);
}

Context makeContext() {
    return Context(cmsCreateContext(nullptr, nullptr));
}

Profile openProfile(const Context& context, std::span<const std::byte> bytes) {
    if (!context) return nullptr;
    return Profile(cmsOpenProfileFromMemTHR(handle(context), bytes.data(),
                                            static_cast<cmsUInt32Number>(bytes.size())));
}

Profile makeSRGBProfile(const Context& context) {
    return Profile(context ? cmsCreate_sRGBProfileTHR(handle(context)) : nullptr);
}

Transform makeTransform(const Context& context, const Profile& from, Format fromFormat,
                        const Profile& to, Format toFormat) {
    if (!hasComponents(from, fromFormat) || !hasComponents(to, toFormat)) return nullptr;
    // The cache of the last colour is what threads would fight over. Optimised, whole pictures are
    // far faster; single colours are to be right instead.
    const cmsUInt32Number flags =
        fromFormat == Format::rgba8 ? cmsFLAGS_NOCACHE : cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE;
    return Transform(cmsCreateTransformTHR(handle(context), from.get(), typeOf(fromFormat),
                                           to.get(), typeOf(toFormat), INTENT_RELATIVE_COLORIMETRIC,
                                           flags));
}

void convert(const Transform& transform, const void* from, void* to, std::size_t count) {
    cmsDoTransform(transform.get(), from, to, static_cast<cmsUInt32Number>(count));
}

}  // namespace pictal::detail::colorManagement
