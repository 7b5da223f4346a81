#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"

#include <limits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using namespace std::string_literals;
using enum DecodingError::Kind;

template <class T>
std::expected<T, DecodingError> decoded(std::string_view text) {
    return detail::decodeDocument<T>(text);
}

template <class T>
void expectFailure(std::string_view text, DecodingError::Kind kind, std::string_view message) {
    const auto result = decoded<T>(text);
    ASSERT_FALSE(result) << message;
    EXPECT_EQ(result.error().kind, kind) << message;
    EXPECT_EQ(result.error().description(), message);
}

TEST(JSON, WholeNumbers) {
    EXPECT_EQ(decoded<std::int64_t>("9.0"), 9);
    EXPECT_EQ(decoded<std::int64_t>("-9223372036854775808"),
              std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(decoded<std::int64_t>("1e3"), 1000);
    expectFailure<std::int64_t>("9.5", typeMismatch,
                                "Expected a whole number but found a fraction.");
    EXPECT_EQ(decoded<std::int64_t>("-9007199254740991.0"), -9007199254740991);
    for (const char* text : {"9223372036854775808", "-9223372036854775809", "9007199254740993.0",
                             "9007199254740992.0", "-9007199254740992.0", "1e30"})
        expectFailure<std::int64_t>(text, dataCorrupted,
                                    "The whole number is too large to be kept exactly.");
    expectFailure<std::int64_t>("true", typeMismatch,
                                "Expected a whole number but found a boolean.");
}

TEST(JSON, PointsAndRectangles) {
    EXPECT_EQ(decoded<CGPoint>("[1, -2.5]"), (CGPoint{1, -2.5}));
    EXPECT_EQ(decoded<CGRect>("[[50, 40], [-20, -10]]").value().size.width, -20);
    for (const char* text : {"[1]", "[1, 2, 3]"})
        expectFailure<CGPoint>(text, typeMismatch,
                               "Expected an array of two numbers but found an array.");
    expectFailure<CGRect>("[[1, 2], [3, \"4\"]]", typeMismatch,
                          "1.1: Expected a number but found a string.");
}

TEST(JSON, MembersThatAreMissingOrNull) {
    const auto tree = detail::parseJSON(R"({"a": null, "b": 2})");
    ASSERT_TRUE(tree);
    std::optional<DecodingError> error;
    const detail::JSONDecoder decoder(*tree, error);
    EXPECT_EQ(decoder.optional<CGFloat>("a"), std::nullopt);
    EXPECT_EQ(decoder.optional<CGFloat>("c"), std::nullopt);
    EXPECT_EQ(decoder.optional<CGFloat>("b"), 2);
    EXPECT_FALSE(error);
    (void)decoder.require<CGFloat>("a");
    (void)decoder.require<CGFloat>("c");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, valueNotFound);
    EXPECT_EQ(error->description(), "a: Expected a value but found null.")
        << "the first error stays";
    error.reset();
    (void)decoder.require<CGFloat>("c");
    EXPECT_EQ(error->kind, keyNotFound);
}

TEST(JSON, ANullWhereAValueIsRequired) {
    constexpr const char* reason = "Expected a value but found null.";
    expectFailure<CGFloat>("null", valueNotFound, reason);
    expectFailure<std::vector<std::string>>("null", valueNotFound, reason);
    expectFailure<std::vector<CGPoint>>("[[1, 2], [3, null]]", valueNotFound,
                                        "1.1: Expected a value but found null.");
}

TEST(JSON, RefusesWhatIsNoSoundDocument) {
    const auto check = [](const std::string& text, const char* message) {
        const auto result = detail::parseJSON(text);
        ASSERT_FALSE(result) << message;
        EXPECT_EQ(result.error().kind, dataCorrupted) << message;
        EXPECT_EQ(result.error().reason, message) << text.substr(0, 80);
    };
    std::string deepObjects;
    for (int i = 0; i < 10000; ++i)
        deepObjects += R"({"a":)";
    check("", "The text is not valid JSON at byte 1.");
    check("1 2", "The text is not valid JSON at byte 3.");
    check("{\"a\": 1", "The text is not valid JSON at byte 8.");
    check("[]\0garbage"s, "The text has a zero byte at byte 3.");
    check("\"a\0b\""s, "The text has a zero byte at byte 3.");
    check("\"\xFF\"", "The text is not valid JSON at byte 2.");
    check("NaN", "The text is not valid JSON at byte 1.");
    check(std::string(10000, '['), "The text is nested deeper than 64 levels.");
    check(deepObjects, "The text is nested deeper than 64 levels.");
    check(R"({"a": 1, "b": 2, "a": 3})", "The key \"a\" occurs twice in one object.");
    check("1e999", "A number is out of range at byte 5.");
    check(std::string((std::size_t{64} << 20) + 1, ' '), "The text is longer than 64 MiB.");
    EXPECT_TRUE(detail::parseJSON(std::string(64, '[') + std::string(64, ']')));

    std::string zeros = R"([{"a":0})";  // four values and keys
    for (int i = 0; i < 3'999'996; ++i)
        zeros += ",0";
    EXPECT_TRUE(detail::parseJSON(zeros + "]"));
    check(zeros + ",0]", "The text has more than 4,000,000 values and keys.");
}

TEST(JSON, WritesCompactlyAndRefusesWhatJSONCannotSay) {
    detail::JSONObject object;
    object.set("point", CGPoint{1, 2.5}).set("text", std::string("a\xFF"));
    object.setIfPresent("absent", std::optional<CGFloat>());
    EXPECT_EQ(detail::writeJSON(object), "{\"point\":[1.0,2.5],\"text\":\"a\xEF\xBF\xBD\"}");
    detail::JSONObject bad;
    bad.set("outer", std::vector<CGFloat>{0, std::numeric_limits<CGFloat>::infinity()});
    const auto refused = detail::writeJSON(bad);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().description(), "outer.1: JSON has no number that is not finite.");
    detail::JSONObject alike;
    alike.set("outer", detail::JSONValue(detail::JSONObject().set("\xFF", true).set("\xFE", true)));
    EXPECT_EQ(detail::writeJSON(alike).error().description(),
              "outer: Two keys are both written as \"\uFFFD\".");
    for (const double number : {0.1, 1.0 / 3, -0.0, 5e-324, 1.7976931348623157e308, 0x1p53 + 2})
        EXPECT_EQ(decoded<CGFloat>(*detail::writeJSON(detail::JSONCodec<CGFloat>::encode(number))),
                  number);
}

}  // namespace
}  // namespace pictal
