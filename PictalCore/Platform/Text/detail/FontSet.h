#pragma once

#include "PictalCore/Platform/Text/FontWeight.h"
#include "PictalCore/Platform/Text/detail/FontFace.h"

#include <deque>
#include <string>
#include <string_view>

namespace pictal::detail {

/// The faces of the system in the order in which they are asked: the interface font first.
class FontSet {
  public:
    /// Looked up at the first call, for the rest of the process.
    [[nodiscard]] static const FontSet& shared(FontWeight weight);

    explicit FontSet(FontWeight weight);

    /// The interface font; nothing when there is no font at all.
    [[nodiscard]] const FontFace* first() const {
        return faces_.empty() ? nullptr : &faces_.front();
    }

    /// The first face that shows a character as people count them, a coloured one first where the
    /// character is a picture by itself.
    /// @return nothing when none does
    [[nodiscard]] const FontFace* face(std::u16string_view character) const;

    /// Of the user, as OpenType tells written languages apart.
    [[nodiscard]] const std::string& language() const { return language_; }

  private:
    [[nodiscard]] const FontFace* outlineFace(std::u16string_view character) const;
    [[nodiscard]] const FontFace* colorFace(std::u16string_view character) const;

    std::deque<FontFace> faces_;
    std::deque<FontFace> colorFaces_;
    std::string language_;
};

/// Whether all of the character that is ever seen has a glyph.
[[nodiscard]] bool covers(const FontFace& face, std::u16string_view character);

/// Whether a scalar shows by itself: no space, and nothing that only steers other characters.
[[nodiscard]] bool isSeen(char32_t scalar);

}  // namespace pictal::detail
