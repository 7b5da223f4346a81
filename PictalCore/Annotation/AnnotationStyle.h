#pragma once

#include "PictalCore/Annotation/AnnotationMosaicMode.h"
#include "PictalCore/Styling/RGBAColor.h"

namespace pictal {

/// How an annotation looks. Lengths are pixels of the picture that it is drawn on.
///
/// The initialiser and decoding make the widths at least 0 (NaN becomes 0) and the font size at
/// least 1 (NaN becomes 1), and bring the opacity into 0…1 (NaN stays). Assignment stores what it
/// is given.
struct AnnotationStyle {
    /// Outlines, lines, shafts, brush strokes and glyphs; also arrow heads and block mosaics whose
    /// fill does not show.
    RGBAColor stroke = RGBAColor::annotationInk;
    /// Interiors, arrow heads, discs of numbers and block mosaics.
    RGBAColor fill = RGBAColor::annotationTransparent;
    /// Also the width of a smear's brush and the size of its blocks.
    CGFloat lineWidth = 4;
    /// Multiplies the alpha of everything but mosaics.
    CGFloat opacity = 1;
    /// Also sets the diameter of a number's disc.
    CGFloat fontSize = 18;
    RGBAColor textOutline = RGBAColor::annotationTransparent;
    CGFloat textOutlineWidth = 2;
    AnnotationMosaicMode mosaicMode = AnnotationMosaicMode::block;

    /// A plain black pen, four pixels wide, without fill.
    constexpr AnnotationStyle() = default;
    constexpr AnnotationStyle(RGBAColor stroke, RGBAColor fill, CGFloat lineWidth, CGFloat opacity,
                              CGFloat fontSize, RGBAColor textOutline, CGFloat textOutlineWidth,
                              AnnotationMosaicMode mosaicMode);

    friend constexpr bool operator==(const AnnotationStyle&, const AnnotationStyle&) = default;

    static const AnnotationStyle highlight, mosaic, text;
};

constexpr AnnotationStyle::AnnotationStyle(RGBAColor strokeColor, RGBAColor fillColor,
                                           CGFloat width, CGFloat alpha, CGFloat size,
                                           RGBAColor outlineColor, CGFloat outlineWidth,
                                           AnnotationMosaicMode mode)
    : stroke(strokeColor),
      fill(fillColor),
      lineWidth(clampedToNonNegative(width)),
      opacity(clampedToUnit(alpha)),
      fontSize(size > 1 ? size : 1),
      textOutline(outlineColor),
      textOutlineWidth(clampedToNonNegative(outlineWidth)),
      mosaicMode(mode) {}

inline constexpr AnnotationStyle AnnotationStyle::highlight(RGBAColor(0, 0, 0, 0.42),
                                                            RGBAColor(0, 0, 0, 0.12), 0, 1, 18,
                                                            RGBAColor::annotationTransparent, 2,
                                                            AnnotationMosaicMode::block);
inline constexpr AnnotationStyle AnnotationStyle::mosaic(RGBAColor::annotationInk,
                                                         RGBAColor::annotationInk, 12, 1, 18,
                                                         RGBAColor::annotationTransparent, 2,
                                                         AnnotationMosaicMode::block);
inline constexpr AnnotationStyle AnnotationStyle::text(RGBAColor::annotationInk,
                                                       RGBAColor::annotationTransparent, 2, 1, 24,
                                                       RGBAColor(1, 1, 1, 0.94), 2,
                                                       AnnotationMosaicMode::block);

PICTAL_JSON_CODED(AnnotationStyle);

}  // namespace pictal
