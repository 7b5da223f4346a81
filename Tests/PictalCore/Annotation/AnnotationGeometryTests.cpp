#include "PictalCore/Annotation/AnnotationGeometry.h"
#include "Tests/Support/JSONChecks.h"

namespace pictal {
namespace {

using Geometry = AnnotationGeometry;
using Kind = DecodingError::Kind;

TEST(AnnotationGeometry, JSONForm) {
    struct Case {
        const char* text;
        Geometry geometry;
    };
    for (const auto& [text, geometry] : {
             Case{R"({"rect":{"_0":[[50.0,40.0],[-20.0,-10.0]]}})",
                  {Geometry::Rect{{50, 40, -20, -10}}}},
             Case{R"({"line":{"start":[10.0,20.0],"end":[110.5,80.0]}})",
                  {Geometry::Line{{10, 20}, {110.5, 80}}}},
             Case{R"({"points":{"_0":[]}})", {Geometry::Points{}}},
             Case{R"({"points":{"_0":[[1.0,2.0],[3.0,4.0]]}})",
                  {Geometry::Points{{{1, 2}, {3, 4}}}}},
             Case{R"({"point":{"_0":[-1.0,2.0]}})", {Geometry::Point{{-1, 2}}}},
         }) {
        EXPECT_EQ(encodeJSON(geometry), text);
        EXPECT_EQ(decodeJSON<Geometry>(text), geometry) << text;
        expectRoundTrip(geometry);
    }
    EXPECT_EQ(decodeJSON<Geometry>(R"({"note": 1, "point": {"_0": [1, 2]}})"),
              (Geometry{Geometry::Point{{1, 2}}}))
        << "other keys are ignored";
}

TEST(AnnotationGeometry, RefusesWhatIsNoGeometry) {
    constexpr auto one = "Invalid number of keys found, expected one.";
    expectDecodingErrors<Geometry>({
        {"{}", Kind::typeMismatch, one},
        {R"({"circle": {}})", Kind::typeMismatch, one},
        {R"({"rect": {"_0": [[0, 0], [1, 1]]}, "point": null})", Kind::typeMismatch, one},
        {"[]", Kind::typeMismatch, "Expected an object but found an array."},
        {R"({"point": null})", Kind::valueNotFound, "point: Expected a value but found null."},
        {R"({"rect": {"x": 1}})", Kind::keyNotFound, R"(rect: The key "_0" is missing.)"},
        {R"({"line": {"end": [1]}})", Kind::keyNotFound, R"(line: The key "start" is missing.)"},
        {R"({"points": {"_0": [[1, 2], [3, "4"]]}})", Kind::typeMismatch,
         "points._0.1.1: Expected a number but found a string."},
    });
}

TEST(AnnotationGeometry, Equality) {
    EXPECT_EQ((Geometry{Geometry::Rect{{50, 40, -20, -10}}}),
              (Geometry{Geometry::Rect{{30, 30, 20, 10}}}));
    EXPECT_NE((Geometry{Geometry::Line{{1, 2}, {3, 4}}}),
              (Geometry{Geometry::Line{{3, 4}, {1, 2}}}));
    EXPECT_NE((Geometry{Geometry::Points{{{1, 2}, {3, 4}}}}),
              (Geometry{Geometry::Points{{{1, 2}, {3, 4.5}}}}));
    EXPECT_NE((Geometry{Geometry::Points{{{1, 2}}}}), (Geometry{Geometry::Point{{1, 2}}}));
}

}  // namespace
}  // namespace pictal
