#include "PictalCore/OCR/PaddleOCRModelConfigParser.h"

#include <functional>
#include <limits>
#include <ostream>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Parser = PaddleOCRModelConfigParserError;
using Strings = std::vector<std::string>;

PaddleOCRDetectionConfig detection(std::string_view text) {
    return PaddleOCRModelConfigParser::parseDetectionConfig(text).value();
}
PaddleOCRRecognitionConfig recognition(const std::string& text) {
    return PaddleOCRModelConfigParser::parseRecognitionConfig(text + "\ncharacter_dict:\n- a")
        .value();
}
Strings dictionary(const std::string& items) {
    const auto config =
        PaddleOCRModelConfigParser::parseRecognitionConfig("character_dict:\n" + items);
    return config ? config->characterDictionary : Strings{};
}

TEST(PaddleOCRModelConfigParser, AnEmptyTextHasTheDefaults) {
    const PaddleOCRDetectionConfig expected{
        "PP-OCRv6_tiny_det",
        0.2F,
        0.4F,
        3000,
        1.4F,
        736,
        "max",
        4000,
        PaddleOCRImageChannelOrder::bgr,
        {static_cast<float>(1.0 / 255), {0.485F, 0.456F, 0.406F}, {0.229F, 0.224F, 0.225F}}};
    EXPECT_EQ(detection(""), expected);
    EXPECT_EQ(recognition(""),
              (PaddleOCRRecognitionConfig{
                  "PP-OCRv6_tiny_rec", {3, 48, 320}, PaddleOCRImageChannelOrder::bgr, {"a"}}));
    for (const char* text : {"", "character_dict:", "character_dict:\n\nother:\n",
                             "character_dict: []", "character_dict:\r\n- a\r\n- b\r\n"})
        EXPECT_EQ(PaddleOCRModelConfigParser::parseRecognitionConfig(text).error(),
                  Parser::emptyCharacterDictionary())
            << text;
}

TEST(PaddleOCRModelConfigParser, ReadsEveryField) {
    const auto config = detection(
        "Global:\n  model_name: det\nPostProcess:\n  thresh: 0.3\n  box_thresh: 0.6\n"
        "  max_candidates: 1000\n  unclip_ratio: 1.5\n\tresize_long: 5\n  limit_side_len: 960\n"
        "  limit_type: min\n  max_side_limit: -1\n  img_mode: ' Rgb '\n  scale: 1./255.\n"
        "  mean:\n  - 0.5\n  - abc\n  - 1/4\n  std:\n  # of each\n\n    -\t.25.\n");
    EXPECT_EQ(config,
              (PaddleOCRDetectionConfig{"det",
                                        0.3F,
                                        0.6F,
                                        1000,
                                        1.5F,
                                        960,
                                        "min",
                                        -1,
                                        PaddleOCRImageChannelOrder::rgb,
                                        {static_cast<float>(1.0 / 255), {0.5F, 0.25F}, {0.25F}}}));
    EXPECT_EQ(
        recognition("model_name: r\nimg_mode: RGB\nimage_shape:\n- 3\n- '32'\n- x\n- 100"),
        (PaddleOCRRecognitionConfig{"r", {3, 32, 100}, PaddleOCRImageChannelOrder::rgb, {"a"}}));
}

TEST(PaddleOCRModelConfigParser, KeysAreTheFirstLinesThatBeginWithThem) {
    EXPECT_EQ(detection("model_name:").modelName, "");
    EXPECT_EQ(detection("\"thresh\": 0.9\nbox_thresh: 0.7\n  thresh: 0.35").threshold, 0.35F);
    EXPECT_EQ(detection("thresh: x\nthresh: 0.9").threshold, 0.2F);
    EXPECT_EQ(detection("thresh : 0.9").threshold, 0.2F);
    EXPECT_EQ(detection("limit_side_len: 960.0\nresize_long: 640").limitSideLength, 640);
    EXPECT_EQ(detection("limit_side_len: 960.0").limitSideLength, 736);
    EXPECT_EQ(detection("\u00A0\u2003thresh: 0.5\u3000").threshold, 0.5F);
    // CR LF ends no line, a line feed behind it does.
    EXPECT_EQ(detection("thresh: 0.5\r\nbox_thresh: 0.9\r\n").threshold, 0.2F);
    EXPECT_EQ(detection("thresh: 0.5\r\n\nbox_thresh: 0.9\r\n").boxThreshold, 0.9F);
    EXPECT_EQ(detection("thresh: 0.5\r\n\nbox_thresh: 0.9\r\n").threshold, 0.5F);
}

TEST(PaddleOCRModelConfigParser, Numbers) {
    constexpr float infinite = std::numeric_limits<float>::infinity();
    const std::pair<const char*, float> numbers[] = {{"0.35", 0.35F},
                                                     {"'0.5'", 0.5F},
                                                     {"\" .5 \"", 0.5F},
                                                     {"255..", 255},
                                                     {"+1e2", 100},
                                                     {"0x10", 16},
                                                     {"1e50", infinite},
                                                     {"1./4.", 0.25F},
                                                     {"1 / 8", 0.125F},
                                                     {"-1/2", -0.5F},
                                                     {"1e300/1e299", 10},
                                                     // Everything else is the default.
                                                     {"1/0", 0.2F},
                                                     {"1/", 0.2F},
                                                     {"/2", 0.2F},
                                                     {"1/2/3", 0.2F},
                                                     {"0.3 # low", 0.2F},
                                                     {"", 0.2F},
                                                     {".", 0.2F},
                                                     {"1,5", 0.2F},
                                                     {"1//2", 0.2F},
                                                     {"/1/2", 0.2F}};
    for (const auto& [text, value] : numbers)
        EXPECT_EQ(detection("thresh: " + std::string(text)).threshold, value) << text;
    const std::pair<const char*, std::int64_t> integers[] = {
        {"+1500", 1500},
        {"-7", -7},
        {"'8'", 8},
        {"9223372036854775807", 9223372036854775807},
        {"9223372036854775808", 3000},
        {"1e3", 3000},
        {"+-5", 3000},
        {"++5", 3000},
        {"-+5", 3000},
        {"5.", 3000},
        {"5 # five", 3000},
        {"", 3000},
        {"-", 3000},
        {"+", 3000},
        {"' 5'", 3000}};
    for (const auto& [text, value] : integers)
        EXPECT_EQ(detection("max_candidates: " + std::string(text)).maxCandidates, value) << text;
}

TEST(PaddleOCRModelConfigParser, Quotes) {
    const std::pair<const char*, const char*> values[] = {
        {" plain ", "plain"},  {"'it''s'", "it's"},  {"'a'b'", "a'b"}, {"\"a\\\"b\"", "a\"b"},
        {R"("a\\b")", "a\\b"}, {R"("\\"")", "\\\""}, {"'", "'"},       {"''", ""},
        {"'a\"", "'a\""},      {"' a '", " a "},     {"'''", "'"}};
    for (const auto& [text, value] : values)
        EXPECT_EQ(detection("limit_type:" + std::string(text)).limitType, value) << text;
}

TEST(PaddleOCRModelConfigParser, ListsOfCharacters) {
    const std::tuple<const char*, const char*, Strings> cases[] = {
        {"as they are", "- a\n  - b \n\t-  \n-\n- 'c' \n", {"a", "b ", " ", "", "c"}},
        {"quoted",
         "- ''''\n- '\"'\n- \"\\\\\"\n- ' '\n- '\n- \"",
         {"'", "\"", "\\", " ", "'", "\""}},
        {"ends at a key", "- a\nother: 1\n- b", {"a"}},
        {"ends at a blank line", "\n# c\n- a\n\n- b", {"a"}},
        {"a dash is no item", "-a\n- b\n-c\n- d", {"b"}},
        {"a dash of its own", "- -\n- - a", {"-", "- a"}},
        {"more space belongs to it", "-   x", {"  x"}},
        {"the same twice", "- a\n- a", {"a", "a"}},
        {"wide ones", "- \u3000\n- 中", {"\u3000", "中"}},
    };
    for (const auto& [name, items, expected] : cases)
        EXPECT_EQ(dictionary(items), expected) << name;
    EXPECT_EQ(recognition("image_shape:\n- 3 \n- 48 ").imageShape,
              (std::vector<std::int64_t>{3, 48, 320}));
    EXPECT_EQ(detection("mean: [0.5, 0.5, 0.5]").normalize.mean[0], 0.485F);
}

TEST(PaddleOCRModelConfigParser, LargeTexts) {
    std::string text = "character_dict:\n";
    for (int i = 0; i < 20'000; ++i)
        text += i % 3 == 0 ? "- ' '\n" : i % 3 == 1 ? "-  \n" : "- \"\r\n\"\n";
    const auto config = PaddleOCRModelConfigParser::parseRecognitionConfig(text).value();
    ASSERT_EQ(config.characterDictionary.size(), 20'000U);
    EXPECT_EQ(config.characterDictionary[1], " ");
    EXPECT_EQ(config.characterDictionary[19'998], " ");
    EXPECT_EQ(config.characterDictionary[2], "\r\n");
    EXPECT_EQ(detection(std::string(10'000'000, ' ') + "\nthresh: 1").threshold, 1);
}

TEST(PaddleOCRModelConfigParser, Descriptions) {
    EXPECT_EQ(Parser::missingField("thresh").description(),
              "PP-OCR model config is missing thresh.");
    EXPECT_EQ(Parser::missingField("thresh").as<Parser::MissingField>()->name, "thresh");
    EXPECT_EQ(Parser::emptyCharacterDictionary().description(),
              "PP-OCR recognition character dictionary is empty.");
}

}  // namespace
}  // namespace pictal
