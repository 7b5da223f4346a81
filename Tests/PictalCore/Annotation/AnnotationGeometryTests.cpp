#include "PictalCore/Annotation/AnnotationGeometry.h"
#include "Tests/Support/JSONChecks.h"

#include <limits>

namespace pictal {
namespace {

using Geometry = AnnotationGeometry;
using Kind = DecodingError::Kind;

TEST(AnnotationGeometry, JSONForm) {
    struct Case {
        const char* text;
        Geometry geometry;
    };
    for (const auto& [text, geometry] :
         {Case{R"({"rect":{"_0":[[5.0,6.0],[30.0,40.0]]}})", {Geometry::Rect{{5, 6, 30, 40}}}},
          Case{R"({"rect":{"_0":[[50.0,40.0],[-20.0,-10.0]]}})",
               {Geometry::Rect{{50, 40, -20, -10}}}},
          Case{R"({"line":{"start":[10.0,20.0],"end":[110.5,80.0]}})",
               {Geometry::Line{{10, 20}, {110.5, 80}}}},
          Case{R"({"points":{"_0":[]}})", {Geometry::Points{}}},
          Case{R"({"points":{"_0":[[1.0,2.0],[3.0,4.0]]}})", {Geometry::Points{{{1, 2}, {3, 4}}}}},
          Case{R"({"point":{"_0":[-1.0,2.0]}})", {Geometry::Point{{-1, 2}}}}}) {
        EXPECT_EQ(encodeJSON(geometry), text);
        EXPECT_EQ(decodeJSON<Geometry>(text), geometry) << text;
        expectRoundTrip(geometry, text);
    }
    const auto noted = decodeJSON<Geometry>(R"({"note": 1, "rect": {"_0": [[0, 0], [10, 10]]}})");
    EXPECT_EQ(noted, (Geometry{Geometry::Rect{{0, 0, 10, 10}}})) << "other keys are ignored";
    const auto stored = decodeJSON<Geometry>(R"({"rect": {"_0": [[50, 40], [-20, -10]]}})");
    EXPECT_EQ(stored->as<Geometry::Rect>()->rect.size.width, -20) << "not standardised";
}

TEST(AnnotationGeometry, RefusesWhatIsNoGeometry) {
    static constexpr auto one = "Invalid number of keys found, expected one.";
    struct Case {
        const char* text;
        Kind kind;
        const char* message;
    };
    static constexpr Case cases[] = {
        {"{}", Kind::typeMismatch, one},
        {R"({"circle": {}})", Kind::typeMismatch, one},
        {R"({"rect": {"_0": [[0, 0], [10, 10]]}, "point": {"_0": [1, 2]}})", Kind::typeMismatch,
         one},
        {R"({"rect": null, "point": {"_0": [1, 2]}})", Kind::typeMismatch, one},
        {R"("rect")", Kind::typeMismatch, "Expected an object but found a string."},
        {R"({"point": null})", Kind::valueNotFound, "point: Expected a value but found null."},
        {R"({"point": [1, 2]})", Kind::typeMismatch,
         "point: Expected an object but found an array."},
        {R"({"point": {"x": 1}})", Kind::keyNotFound, "point: The key \"_0\" is missing."},
        {R"({"line": {"end": [1]}})", Kind::keyNotFound, "line: The key \"start\" is missing."},
        {R"({"line": {"start": [1, 2], "end": [1, 2, 3]}})", Kind::typeMismatch,
         "line.end: Expected an array of two numbers but found an array."},
        {R"({"points": {"_0": [[1, 2], [3, "4"]]}})", Kind::typeMismatch,
         "points._0.1.1: Expected a number but found a string."},
        {R"({"rect": {"_0": [[1, 2]]}})", Kind::typeMismatch,
         "rect._0: Expected an array of an origin and a size but found an array."},
    };
    for (const Case& c : cases)
        expectDecodingError<Geometry>(c.text, c.kind, c.message, c.text);
    const auto refused = encodeJSON(Geometry{Geometry::Rect{CGRect::null()}});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().codingPath, (std::vector<std::string>{"rect", "_0", "0", "0"}));
}

TEST(AnnotationGeometry, Equality) {
    constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
    struct Case {
        const char* name;
        Geometry a, b;
        bool equal;
    };
    for (const auto& [name, a, b, equal] :
         {Case{"same area, other signs",
               {Geometry::Rect{{50, 40, -20, -10}}},
               {Geometry::Rect{{30, 30, 20, 10}}},
               true},
          Case{"line reversed",
               {Geometry::Line{{1, 2}, {3, 4}}},
               {Geometry::Line{{3, 4}, {1, 2}}},
               false},
          Case{"empty paths", {Geometry::Points{}}, {Geometry::Points{}}, true},
          Case{"one point moved",
               {Geometry::Points{{{1, 2}, {3, 4}}}},
               {Geometry::Points{{{1, 2}, {3, 4.5}}}},
               false},
          Case{"path of one point and the point",
               {Geometry::Points{{{1, 2}}}},
               {Geometry::Point{{1, 2}}},
               false},
          Case{"NaN", {Geometry::Point{{nan, 2}}}, {Geometry::Point{{nan, 2}}}, false}})
        EXPECT_EQ(a == b, equal) << name;
}

}  // namespace
}  // namespace pictal
