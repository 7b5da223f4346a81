#include "PictalCore/Platform/Foundation/detail/JSONCoding.h"

#include <limits>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Kind = DecodingError::Kind;

template <class T>
std::expected<T, DecodingError> decoded(std::string_view text) {
    return detail::decodeDocument<T>(text);
}

template <class T>
void expectFailure(std::string_view text, Kind kind, std::string_view message) {
    const auto result = decoded<T>(text);
    ASSERT_FALSE(result) << text.substr(0, 80);
    EXPECT_EQ(result.error().kind, kind) << text.substr(0, 80);
    EXPECT_EQ(result.error().message(), message);
}

TEST(JSON, WholeNumbers) {
    EXPECT_EQ(decoded<std::int64_t>("9"), 9);
    EXPECT_EQ(decoded<std::int64_t>("9.0"), 9);
    EXPECT_EQ(decoded<std::int64_t>("-9223372036854775808"),
              std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(decoded<std::int64_t>("1e3"), 1000);
    expectFailure<std::int64_t>("9.5", Kind::typeMismatch,
                                "Expected a whole number but found a fraction.");
    expectFailure<std::int64_t>("9223372036854775808", Kind::dataCorrupted,
                                "The number does not fit 64 bits.");
    expectFailure<std::int64_t>("true", Kind::typeMismatch,
                                "Expected a whole number but found a boolean.");
    expectFailure<std::uint16_t>("70000", Kind::dataCorrupted, "The number is not in 0...65535.");
    expectFailure<std::uint16_t>("-1", Kind::dataCorrupted, "The number is not in 0...65535.");
}

TEST(JSON, PointsAndRectangles) {
    EXPECT_EQ(decoded<CGPoint>("[1, -2.5]"), (CGPoint{1, -2.5}));
    const auto rect = decoded<CGRect>("[[50, 40], [-20, -10]]");
    ASSERT_TRUE(rect);
    EXPECT_EQ(rect->size.width, -20);
    expectFailure<CGPoint>("[1]", Kind::typeMismatch,
                           "Expected an array of two numbers but found an array.");
    expectFailure<CGPoint>("[1, 2, 3]", Kind::typeMismatch,
                           "Expected an array of two numbers but found an array.");
    expectFailure<CGRect>("[[1, 2], [3, \"4\"]]", Kind::typeMismatch,
                          "1.1: Expected a number but found a string.");
    expectFailure<CGFloat>("null", Kind::typeMismatch, "Expected a number but found null.");
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
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, Kind::valueNotFound);
    (void)decoder.require<CGFloat>("c");
    EXPECT_EQ(error->message(), "a: Expected a value but found null.") << "the first error stays";
    error.reset();
    (void)decoder.require<CGFloat>("c");
    EXPECT_EQ(error->kind, Kind::keyNotFound);
}

TEST(JSON, RefusesWhatIsNoSoundDocument) {
    struct Case {
        const char* name;
        std::string text;
        const char* message;
    };
    const std::string deep = std::string(10000, '[') + std::string(10000, ']');
    const std::string deepObjects = [] {
        std::string text;
        for (int i = 0; i < 10000; ++i)
            text += R"({"a":)";
        return text;
    }();
    for (const Case& c :
         {Case{"empty", "", "The text is not valid JSON at byte 1."},
          Case{"trailing text", "1 2", "The text is not valid JSON at byte 3."},
          Case{"unclosed", "{\"a\": 1", "The text is not valid JSON at byte 8."},
          Case{"ill-formed UTF-8", "\"\xFF\"", "The text is not valid JSON at byte 2."},
          Case{"deep arrays", deep, "The text is nested deeper than 64 levels."},
          Case{"deep objects", deepObjects, "The text is nested deeper than 64 levels."},
          Case{"same key twice", R"({"a": 1, "b": 2, "a": 3})",
               "The key \"a\" occurs twice in one object."},
          Case{"number too large", "1e999", "A number is out of range at byte 5."},
          Case{"not a number", "NaN", "The text is not valid JSON at byte 1."},
          Case{"longer than 64 MiB", std::string((std::size_t{64} << 20) + 1, ' '),
               "The text is longer than 64 MiB."}}) {
        const auto result = detail::parseJSON(c.text);
        ASSERT_FALSE(result) << c.name;
        EXPECT_EQ(result.error().kind, Kind::dataCorrupted) << c.name;
        EXPECT_EQ(result.error().description, c.message) << c.name;
    }
    EXPECT_TRUE(detail::parseJSON(std::string(64, '[') + std::string(64, ']')));
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
    EXPECT_EQ(refused.error().codingPath, (std::vector<std::string>{"outer", "1"}));
}

TEST(JSON, NumbersSurviveExactly) {
    for (const double number : {0.1, 1.0 / 3, -0.0, 5e-324, 1.7976931348623157e308, 0x1p53 + 2}) {
        const auto text = detail::writeJSON(detail::JSONCodec<CGFloat>::encode(number));
        ASSERT_TRUE(text);
        EXPECT_EQ(decoded<CGFloat>(*text), number);
    }
}

}  // namespace
}  // namespace pictal
