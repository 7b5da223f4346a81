#include "PictalCore/Platform/Text/detail/OutlinePen.h"

#include <algorithm>

#include <hb.h>

namespace pictal::detail {

namespace {

OutlinePen& pen(void* data) {
    return *static_cast<OutlinePen*>(data);
}

void move(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
    pen(data).moveTo({x, y});
}
void line(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
    pen(data).lineTo({x, y});
}
void quad(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float controlX, float controlY, float x,
          float y, void*) {
    pen(data).quadTo({controlX, controlY}, {x, y});
}
void cubic(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x1, float y1, float x2, float y2,
           float x, float y, void*) {
    pen(data).cubicTo({x1, y1}, {x2, y2}, {x, y});
}
void closePath(hb_draw_funcs_t*, void* data, hb_draw_state_t*, void*) {
    pen(data).close();
}

hb_draw_funcs_t* penFunctions() {
    static hb_draw_funcs_t* const functions = [] {
        hb_draw_funcs_t* made = hb_draw_funcs_create();
        hb_draw_funcs_set_move_to_func(made, move, nullptr, nullptr);
        hb_draw_funcs_set_line_to_func(made, line, nullptr, nullptr);
        hb_draw_funcs_set_quadratic_to_func(made, quad, nullptr, nullptr);
        hb_draw_funcs_set_cubic_to_func(made, cubic, nullptr, nullptr);
        hb_draw_funcs_set_close_path_func(made, closePath, nullptr, nullptr);
        hb_draw_funcs_make_immutable(made);
        return made;
    }();
    return functions;
}

}  // namespace

void OutlinePen::draw(hb_font_t* font, std::uint32_t glyph) {
    hb_font_get_glyph_shape(font, glyph, penFunctions(), this);
}

void OutlinePen::add(Path::Verb verb, std::initializer_list<CGPoint> points) {
    verbs_.push_back(verb);
    for (const CGPoint point : points)
        points_.push_back(placement_.applied(point));
}

void OutlinePen::moveTo(CGPoint point) {
    verbs_.clear();
    points_ = {placement_.applied(point)};
}
void OutlinePen::lineTo(CGPoint end) {
    add(Path::Verb::line, {end});
}
void OutlinePen::quadTo(CGPoint control, CGPoint end) {
    add(Path::Verb::quad, {control, end});
}
void OutlinePen::cubicTo(CGPoint control1, CGPoint control2, CGPoint end) {
    add(Path::Verb::cubic, {control1, control2, end});
}

// A contour's points are a chain, and so they are backward: each segment's control points lie
// between its ends.
void OutlinePen::close() {
    if (points_.empty()) return;
    if (reverses_) {
        std::ranges::reverse(points_);
        std::ranges::reverse(verbs_);
    }
    const CGPoint* point = points_.data();
    path_.moveTo(*point++);
    for (const Path::Verb verb : verbs_) {
        if (verb == Path::Verb::line) {
            path_.lineTo(point[0]);
            point += 1;
        } else if (verb == Path::Verb::quad) {
            path_.quadCurveTo(point[0], point[1]);
            point += 2;
        } else {
            path_.curveTo(point[0], point[1], point[2]);
            point += 3;
        }
    }
    path_.close();
    verbs_.clear();
    points_.clear();
}

}  // namespace pictal::detail
