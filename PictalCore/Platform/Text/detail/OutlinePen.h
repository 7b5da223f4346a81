#pragma once

#include "PictalCore/Platform/Graphics/AffineTransform.h"
#include "PictalCore/Platform/Graphics/Path.h"

#include <cstdint>
#include <initializer_list>
#include <vector>

struct hb_font_t;

namespace pictal::detail {

/// Takes a glyph's outline from HarfBuzz, contour by contour, and adds it to a path.
class OutlinePen {
  public:
    /// @param reverses  adds each contour the other way round
    OutlinePen(Path& path, const AffineTransform& placement, bool reverses)
        : path_(path), placement_(placement), reverses_(reverses) {}

    void draw(hb_font_t* font, std::uint32_t glyph);

    void moveTo(CGPoint point);
    void lineTo(CGPoint end);
    void quadTo(CGPoint control, CGPoint end);
    void cubicTo(CGPoint control1, CGPoint control2, CGPoint end);
    void close();

  private:
    void add(Path::Verb verb, std::initializer_list<CGPoint> points);

    Path& path_;
    AffineTransform placement_;
    bool reverses_;
    /// The contour that is under way: its segments, and its points from the start.
    std::vector<Path::Verb> verbs_;
    std::vector<CGPoint> points_;
};

}  // namespace pictal::detail
