#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Text/FontWeight.h"

#include <string_view>
#include <vector>

/// What the fonts of the system can show. They are looked up once, at the first question; fonts
/// that are installed later are seen by the next process.
namespace pictal::Fonts {

/// Whether there is any font that text can be drawn with. Without one, text draws nothing.
[[nodiscard]] PICTAL_API bool areInstalled();

/// The characters of a text that no font shows as they stand there, each once, in their order; an
/// empty box is drawn in place of each. Looks as far as a `TextLine` does. All of them, but for
/// spaces and what is never seen, when there is no font.
[[nodiscard]] PICTAL_API std::vector<char32_t> charactersWithoutGlyph(
    std::string_view text, FontWeight weight = FontWeight::regular);

}  // namespace pictal::Fonts
