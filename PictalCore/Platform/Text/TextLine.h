#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/Graphics/Path.h"
#include "PictalCore/Platform/Text/FontWeight.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace pictal {

/// One line of typeset text in the interface font, with other fonts where that has no glyph. Units
/// are those of the size; the origin is the baseline's left end and y grows upward.
///
/// Text is UTF-8 and runs in its own directions, the line as its first letter does. A line break, a
/// tab and every other control character is one space. Only the first 100,000 scalars are set, cut
/// between characters as people count them.
class PICTAL_API TextLine {
  public:
    static constexpr std::size_t maximumScalars = 100'000;

    /// A glyph that is a picture: it fills the rectangle.
    struct ColorGlyph {
        CGImage image;
        CGRect rect;
    };

    /// A size that is not finite or not above 0 sets nothing, as does a system without fonts.
    TextLine(std::string_view text, CGFloat size, FontWeight weight = FontWeight::regular);
    TextLine(TextLine&&) noexcept;
    TextLine& operator=(TextLine&&) noexcept;
    ~TextLine();

    /// From the origin to where a next line could go on.
    [[nodiscard]] CGFloat width() const { return width_; }
    /// The greatest of the fonts that the line uses, above and below the baseline. An empty line
    /// has those of the interface font.
    [[nodiscard]] CGFloat ascent() const { return ascent_; }
    [[nodiscard]] CGFloat descent() const { return descent_; }

    /// The outlines of all glyphs, to be filled with the non-zero rule: where glyphs overlap, they
    /// are one area.
    /// @param visible  glyphs that lie outside may be left out
    [[nodiscard]] Path outlines(const CGRect& visible) const;
    [[nodiscard]] Path outlines() const;

    /// The glyphs that are pictures and can be seen within the rectangle. Each picture is decoded
    /// once.
    [[nodiscard]] std::vector<ColorGlyph> colorGlyphs(const CGRect& visible) const;

  private:
    struct Glyphs;

    std::unique_ptr<const Glyphs> glyphs_;
    CGFloat width_ = 0;
    CGFloat ascent_ = 0;
    CGFloat descent_ = 0;
};

}  // namespace pictal
