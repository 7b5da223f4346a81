#include "PictalCore/Annotation/AnnotationGeometry.h"
#include "Tests/Support/JSONChecks.h"

namespace pictal {
namespace {

using Geometry = AnnotationGeometry;
using enum DecodingError::Kind;

TEST(AnnotationGeometry, JSONForm) {
    const auto check = [](const char* text, const Geometry& geometry) {
        EXPECT_EQ(encodeJSON(geometry), text);
        EXPECT_EQ(decodeJSON<Geometry>(text), geometry) << text;
    };
    check(R"({"rect":{"_0":[[50.0,40.0],[-20.0,-10.0]]}})", {Geometry::Rect{{50, 40, -20, -10}}});
    check(R"({"line":{"start":[10.0,20.0],"end":[110.5,80.0]}})",
          {Geometry::Line{{10, 20}, {110.5, 80}}});
    check(R"({"points":{"_0":[[1.0,2.0],[3.0,4.0]]}})", {Geometry::Points{{{1, 2}, {3, 4}}}});
    check(R"({"point":{"_0":[-1.0,2.0]}})", {Geometry::Point{{-1, 2}}});
    EXPECT_EQ(decodeJSON<Geometry>(R"({"note": 1, "point": {"_0": [1, 2]}})"),
              (Geometry{Geometry::Point{{1, 2}}}))
        << "other keys are ignored";
}

TEST(AnnotationGeometry, RefusesWhatIsNoGeometry) {
    constexpr auto one = "Invalid number of keys found, expected one.";
    expectDecodingErrors<Geometry>({
        {"{}", typeMismatch, one},
        {R"({"circle": {}})", typeMismatch, one},
        {R"({"rect": {"_0": [[0, 0], [1, 1]]}, "point": null})", typeMismatch, one},
        {R"({"point": null})", valueNotFound, "point: Expected a value but found null."},
        {R"({"line": {"end": [1]}})", keyNotFound, R"(line: The key "start" is missing.)"},
    });
}

TEST(AnnotationGeometry, Equality) {
    EXPECT_EQ((Geometry{Geometry::Rect{{50, 40, -20, -10}}}),
              (Geometry{Geometry::Rect{{30, 30, 20, 10}}}));
    EXPECT_NE((Geometry{Geometry::Points{{{1, 2}}}}), (Geometry{Geometry::Point{{1, 2}}}));
}

}  // namespace
}  // namespace pictal
