#include "PictalCore/Annotation/ScreenshotAnnotation.h"
#include "PictalCore/Styling/Coding/StyleCoding.h"

#include <algorithm>

namespace pictal {

namespace detail {

template <>
struct JSONCodec<AnnotationMosaicMode> {
    static JSONValue encode(AnnotationMosaicMode mode) {
        return JSONValue{std::string(rawValue(mode))};
    }
    static AnnotationMosaicMode decode(const JSONDecoder& decoder) {
        const auto text = decoder.decode<std::string>();
        if (text == "pixelate") return AnnotationMosaicMode::block;
        const auto mode = fromRawValue<AnnotationMosaicMode>(text);
        if (!mode)
            decoder.fail(DecodingError::Kind::dataCorrupted,
                         "Unknown annotation mosaic mode: " + text);
        return mode.value_or(AnnotationMosaicMode::block);
    }
};

template <>
struct JSONFields<AnnotationStyle> {
    // The last two are younger than the others: stored styles may lack them.
    static constexpr std::tuple list{
        field("stroke", &AnnotationStyle::stroke),
        field("fill", &AnnotationStyle::fill),
        field("lineWidth", &AnnotationStyle::lineWidth),
        field("opacity", &AnnotationStyle::opacity),
        field("fontSize", &AnnotationStyle::fontSize),
        field("textOutline", &AnnotationStyle::textOutline),
        field("textOutlineWidth", &AnnotationStyle::textOutlineWidth, unchanged),
        field("mosaicMode", &AnnotationStyle::mosaicMode, unchanged)};

    static constexpr AnnotationStyle adjusted(const AnnotationStyle& style) {
        return {style.stroke,   style.fill,        style.lineWidth,        style.opacity,
                style.fontSize, style.textOutline, style.textOutlineWidth, style.mosaicMode};
    }
};

template <>
struct JSONFields<AnnotationGeometry::Rect> {
    static constexpr std::tuple list{field("_0", &AnnotationGeometry::Rect::rect)};
};
template <>
struct JSONFields<AnnotationGeometry::Line> {
    static constexpr std::tuple list{field("start", &AnnotationGeometry::Line::start),
                                     field("end", &AnnotationGeometry::Line::end)};
};
template <>
struct JSONFields<AnnotationGeometry::Points> {
    static constexpr std::tuple list{field("_0", &AnnotationGeometry::Points::points)};
};
template <>
struct JSONFields<AnnotationGeometry::Point> {
    static constexpr std::tuple list{field("_0", &AnnotationGeometry::Point::point)};
};

/// An object with one key, the name of the case, over the fields of that case.
template <>
struct JSONCodec<AnnotationGeometry> {
    using Cases = decltype(AnnotationGeometry::value);
    static constexpr std::array<std::string_view, std::variant_size_v<Cases>> names{
        "rect", "line", "points", "point"};

    static JSONValue encode(const AnnotationGeometry& geometry) {
        return std::visit(
            [&](const auto& held) -> JSONValue {
                return JSONObject().set(std::string(names[geometry.value.index()]), held);
            },
            geometry.value);
    }
    static AnnotationGeometry decode(const JSONDecoder& decoder) {
        const auto known = [](const auto& member) {
            return std::ranges::find(names, member.first) != names.end();
        };
        const auto members = decoder.members();
        if (std::ranges::count_if(members, known) != 1) {
            decoder.fail(DecodingError::Kind::typeMismatch,
                         "Invalid number of keys found, expected one.");
            return {};
        }
        const std::string_view name = std::ranges::find_if(members, known)->first;
        if (name == names[0]) return {decoder.require<AnnotationGeometry::Rect>(name)};
        if (name == names[1]) return {decoder.require<AnnotationGeometry::Line>(name)};
        if (name == names[2]) return {decoder.require<AnnotationGeometry::Points>(name)};
        return {decoder.require<AnnotationGeometry::Point>(name)};
    }
};

template <>
struct JSONFields<ScreenshotAnnotation> {
    static constexpr std::tuple list{field("tool", &ScreenshotAnnotation::tool),
                                     field("geometry", &ScreenshotAnnotation::geometry),
                                     field("style", &ScreenshotAnnotation::style),
                                     field("text", &ScreenshotAnnotation::text)};
};

}  // namespace detail

PICTAL_DEFINE_JSON(AnnotationGeometry)
PICTAL_DEFINE_JSON(AnnotationMosaicMode)
PICTAL_DEFINE_JSON(AnnotationStyle)
PICTAL_DEFINE_JSON(AnnotationTool)
PICTAL_DEFINE_JSON(ScreenshotAnnotation)
PICTAL_DEFINE_JSON(std::vector<ScreenshotAnnotation>)

}  // namespace pictal
