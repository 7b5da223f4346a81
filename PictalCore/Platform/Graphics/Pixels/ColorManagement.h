#pragma once

#include <cstddef>
#include <memory>
#include <span>

/// What owns the objects of colour management, which are handles without a type. Each object is
/// made in a context of its own, which keeps the library's complaints away from standard error.
namespace pictal::detail::colorManagement {

struct DeleteContext {
    void operator()(void* context) const;
};
struct CloseProfile {
    void operator()(void* profile) const;
};
struct DeleteTransform {
    void operator()(void* transform) const;
};

using Context = std::unique_ptr<void, DeleteContext>;
using Profile = std::unique_ptr<void, CloseProfile>;
using Transform = std::unique_ptr<void, DeleteTransform>;

/// All of these are null when there is no memory, or the profile is damaged.
[[nodiscard]] Context makeContext();
[[nodiscard]] Profile openProfile(const Context& context, std::span<const std::byte> bytes);
[[nodiscard]] Profile makeSRGBProfile(const Context& context);

/// How the components of a pixel are stored.
enum class Format : unsigned char { rgba8, rgbFloat, rgbDouble, grey16, rgb16 };

/// A conversion, relative colorimetric: white stays white. Many threads may use it at once.
/// @return null when either profile is null or has no such components
[[nodiscard]] Transform makeTransform(const Context& context, const Profile& from,
                                      Format fromFormat, const Profile& to, Format toFormat);
void convert(const Transform& transform, const void* from, void* to, std::size_t count);

}  // namespace pictal::detail::colorManagement
