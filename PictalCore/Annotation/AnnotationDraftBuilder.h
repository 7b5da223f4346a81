#pragma once

#include "PictalCore/Annotation/ScreenshotAnnotation.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

/// Turns the state of a pointer gesture into the annotation that it describes: the draft while the
/// pointer moves, and what is kept when it ends. Pixels of the picture, y growing upward.
namespace pictal::AnnotationDraftBuilder {

/// Rectangles are made integral, so that their sides fall between pixels; lines keep their
/// fractions. Arguments that the tool does not use are ignored. Nothing is too small: a click
/// without movement is an annotation too.
///
/// @param start    where the gesture began; the place of a text or a number
/// @param current  where the pointer is now; an arrow's head
/// @param points   the path so far, for the brush and for mosaics in `smear` mode; mosaics in
///                 `block` mode are dragged out as rectangles
/// @param text     of a text; white space at its ends is left out
/// @return nothing for a path without points and for a text of white space only
[[nodiscard]] PICTAL_API std::optional<ScreenshotAnnotation> annotation(
    AnnotationTool tool, CGPoint start, CGPoint current, std::span<const CGPoint> points,
    std::string_view text, std::int64_t number, const AnnotationStyle& style);

}  // namespace pictal::AnnotationDraftBuilder
