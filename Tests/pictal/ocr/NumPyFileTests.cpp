#include "pictal/ocr/NumPyFile.h"

#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace pictal::program {
namespace {

using namespace std::string_literals;

/// A file as the format's description has it, put together by hand.
std::string fileOf(const std::string& dictionary, const std::string& data = {}, char version = 1) {
    const std::size_t length = dictionary.size();
    std::string text = "\x93NUMPY"s + version + '\0';
    for (int i = 0; i < (version == 1 ? 2 : 4); ++i)
        text += static_cast<char>(length >> 8 * i & 255);
    return text + dictionary + data;
}

std::expected<FloatArray, std::string> parsed(const std::string& file) {
    return parsedNumPyFile(std::as_bytes(std::span(file)));
}

const std::string usual = "{'descr': '<f4', 'fortran_order': False, 'shape': (2, 3), }    \n";
const std::string sixValues(24, '\0');

TEST(NumPyFile, ReadsEveryVersionAndSpelling) {
    for (const char version : {'\1', '\2', '\3'}) {
        // 1 and -2 in the six's first and last place, little-endian.
        std::string data = sixValues;
        data.replace(0, 4, "\0\0\x80\x3F"s);
        data.replace(20, 4, "\0\0\0\xC0"s);
        const auto array = parsed(fileOf(usual, data, version)).value();
        EXPECT_EQ(array.shape, (std::vector<std::int64_t>{2, 3}));
        EXPECT_EQ(array.data, (std::vector<float>{1, 0, 0, 0, 0, -2}));
    }
    const auto other =
        parsed(fileOf("{\"shape\":(6,),\"fortran_order\":False,\"descr\":\"<f4\"}", sixValues));
    EXPECT_EQ(other->shape, std::vector<std::int64_t>{6});
    EXPECT_EQ(
        parsed(fileOf("{'descr': '<f4', 'fortran_order': False, 'shape': ()}", "\0\0\x80\x3F"s))
            ->data,
        std::vector<float>{1});
    EXPECT_TRUE(
        parsed(fileOf("{'descr': '<f4', 'fortran_order': False, 'shape': (0, 7)}"))->data.empty());
}

TEST(NumPyFile, RefusesWhatItDoesNotUnderstand) {
    const auto dictionary = [](const std::string& type, const std::string& order,
                               const std::string& shape) {
        return "{'descr': " + type + ", 'fortran_order': " + order + ", 'shape': " + shape + "}";
    };
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"nothing", "", "is no .npy file"},
        {"another file", "\x89PNG\r\n\x1A\n", "is no .npy file"},
        {"only the magic", "\x93NUMPY"s, "ends within its header"},
        {"version 4", fileOf(usual, sixValues, 4), "version"},
        {"version 0", fileOf(usual, sixValues, 0), "version"},
        {"a cut header", fileOf(usual).substr(0, 40), "ends within its header"},
        {"a cut length", fileOf(usual, "", 2).substr(0, 11), "ends within its header"},
        {"a header of 100 MB", "\x93NUMPY\2\0\0\xE1\xF5\5"s + usual, "longer than 64 KiB"},
        {"doubles", fileOf(dictionary("'<f8'", "False", "(3,)"), sixValues), "<f8"},
        {"big-endian", fileOf(dictionary("'>f4'", "False", "(6,)"), sixValues), ">f4"},
        {"columns first", fileOf(dictionary("'<f4'", "True", "(2, 3)"), sixValues), "Fortran"},
        {"a value too few", fileOf(usual, sixValues.substr(4)), "ends before its last value"},
        {"half a value", fileOf(usual, sixValues.substr(2)), "ends before its last value"},
        {"a byte too many", fileOf(usual, sixValues + "x"), "behind its last value"},
        {"a shape that overflows",
         fileOf(dictionary("'<f4'", "False", "(4294967296, 4294967296)"), sixValues), "larger"},
        {"bytes that overflow", fileOf(dictionary("'<f4'", "False", "(4611686018427387904,)"), ""),
         "ends before"},
        {"a negative side", fileOf(dictionary("'<f4'", "False", "(-2, -3)"), sixValues),
         "understood"},
        {"a structure", fileOf(dictionary("[('a', '<f4')]", "False", "(6,)"), sixValues),
         "understood"},
        {"no order", fileOf("{'descr': '<f4', 'shape': (6,)}", sixValues), "understood"},
        {"a key twice",
         fileOf("{'shape': (6,), 'shape': (6,), 'descr': '<f4', 'fortran_order': False}",
                sixValues),
         "understood"},
        {"another key",
         fileOf("{'shape': (6,), 'descr': '<f4', 'fortran_order': False, 'x': 1}", sixValues),
         "understood"},
        {"not closed", fileOf("{'descr': '<f4', 'fortran_order': False, 'shape': (6,)", sixValues),
         "understood"},
        {"more behind", fileOf(usual + "{}", sixValues), "understood"},
        {"no commas", fileOf("{'descr': '<f4' 'fortran_order': False 'shape': (6,)}", sixValues),
         "understood"},
    };
    for (const auto& [name, file, reason] : cases) {
        const auto array = parsed(file);
        ASSERT_FALSE(array) << name;
        EXPECT_NE(array.error().find(reason), std::string::npos) << name << ": " << array.error();
    }
}

TEST(NumPyFile, WritesWhatOthersRead) {
    const std::vector<float> data{1.5F, -0.0F, 3e38F};
    const std::vector<std::int64_t> shape{1, 3, 1};
    const auto file = numPyFile(shape, data);
    const std::string text(reinterpret_cast<const char*>(file.data()), file.size());
    // The header ends with a line feed at a multiple of 64, as NumPy itself writes it.
    EXPECT_EQ(text.substr(0, 10), "\x93NUMPY\1\0\x76\0"s);
    EXPECT_EQ(text.substr(10, 61), "{'descr': '<f4', 'fortran_order': False, 'shape': (1, 3, 1, )");
    EXPECT_EQ(text[127], '\n');
    EXPECT_EQ(text.size(), 128U + 12);
    EXPECT_EQ(std::memcmp(text.data() + 128, data.data(), 12), 0);
    const auto again = parsedNumPyFile(file).value();
    EXPECT_EQ(again.shape, shape);
    EXPECT_EQ(again.data, data);
    for (std::size_t sides = 0; sides < 40; ++sides) {
        const std::vector<std::int64_t> ones(sides, 1);
        const auto one = numPyFile(ones, std::vector{7.0F});
        EXPECT_EQ(one.size() % 64, 4U) << sides;
        EXPECT_EQ(parsedNumPyFile(one)->shape, ones);
    }
}

}  // namespace
}  // namespace pictal::program
