#include "PictalCore/Annotation/AnnotationGeometry.h"

#include "PictalCore/Annotation/detail/AnnotationCoding.h"

#include <algorithm>

namespace pictal {

namespace detail {

namespace {

using Geometry = AnnotationGeometry;

constexpr std::array<std::string_view, 4> caseNames{"rect", "line", "points", "point"};
static_assert(caseNames.size() == std::variant_size_v<decltype(Geometry::value)>);

JSONValue payload(const Geometry::Rect& rect) {
    return JSONObject().set("_0", rect.rect);
}
JSONValue payload(const Geometry::Line& line) {
    return JSONObject().set("start", line.start).set("end", line.end);
}
JSONValue payload(const Geometry::Points& points) {
    return JSONObject().set("_0", points.points);
}
JSONValue payload(const Geometry::Point& point) {
    return JSONObject().set("_0", point.point);
}

}  // namespace

JSONValue JSONCodec<Geometry>::encode(const Geometry& geometry) {
    const std::string name(caseNames[geometry.value.index()]);
    return JSONObject().set(
        name, std::visit([](const auto& held) { return payload(held); }, geometry.value));
}

Geometry JSONCodec<Geometry>::decode(const JSONDecoder& decoder) {
    std::string_view name;
    int count = 0;
    for (const auto& [key, member] : decoder.members()) {
        if (std::ranges::find(caseNames, key) == caseNames.end()) continue;
        name = key;
        ++count;
    }
    if (count != 1) {
        decoder.fail(DecodingError::Kind::typeMismatch,
                     "Invalid number of keys found, expected one.");
        return {};
    }
    const auto held = decoder.requiredMember(name);
    if (!held) return {};
    if (name == "rect") return {Geometry::Rect{held->require<CGRect>("_0")}};
    if (name == "points") return {Geometry::Points{held->require<std::vector<CGPoint>>("_0")}};
    if (name == "point") return {Geometry::Point{held->require<CGPoint>("_0")}};
    const auto start = held->require<CGPoint>("start");
    return {Geometry::Line{start, held->require<CGPoint>("end")}};
}

}  // namespace detail

PICTAL_DEFINE_JSON(AnnotationGeometry)

}  // namespace pictal
