#include "PictalCore/Platform/Graphics/Pixels/ProfileConversion.h"

namespace pictal::detail {

using namespace colorManagement;

ProfileConversion::ProfileConversion(Bytes from, Bytes to)
    : from_(from.begin(), from.end()), to_(to.begin(), to.end()), context_(makeContext()) {}

std::shared_ptr<const ProfileConversion> ProfileConversion::make(Bytes from, Bytes to) {
    const std::shared_ptr<const ProfileConversion> made(new ProfileConversion(from, to));
    return made->transform(Format::rgba8) ? made : nullptr;
}

std::shared_ptr<const ProfileConversion> ProfileConversion::ofSoundProfile(Bytes profile) {
    return std::shared_ptr<const ProfileConversion>(new ProfileConversion(profile, {}));
}

const Transform& ProfileConversion::transform(Format format) const {
    static_assert(static_cast<std::size_t>(Format::rgba8) == 0 &&
                  static_cast<std::size_t>(Format::rgbDouble) == 2);
    Made& made = made_[static_cast<std::size_t>(format)];
    const auto open = [this](Bytes bytes) {
        return bytes.empty() ? makeSRGBProfile(context_) : openProfile(context_, bytes);
    };
    std::call_once(made.once, [&] {
        made.transform = makeTransform(context_, open(from_), format, open(to_), format);
    });
    return made.transform;
}

}  // namespace pictal::detail
