#pragma once

#include <string_view>

namespace pictal::detail {

/// How a character wants to be shown.
enum class Presentation {
    usual,  ///< like the text around it
    text,   ///< without colour, whatever it is
    emoji,  ///< as a coloured picture
};

/// Of a character as people count them.
[[nodiscard]] Presentation presentation(std::u16string_view character);

}  // namespace pictal::detail
