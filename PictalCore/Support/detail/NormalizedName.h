#pragma once

#include "PictalCore/Platform/Foundation/Unicode.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace pictal::detail {

/// A name as switches accept it: white space at the ends and case do not matter, "_" is "-".
[[nodiscard]] inline std::string normalizedName(std::string_view text) {
    std::string name = Unicode::lowercased(Unicode::trimmingWhiteSpace(text));
    std::ranges::replace(name, '_', '-');
    return name;
}

/// One of the names that a value goes by.
template <class T>
struct Alias {
    T value;
    std::string_view name;
};
template <class T>
Alias(T, const char*) -> Alias<T>;

}  // namespace pictal::detail
