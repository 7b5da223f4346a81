#pragma once

#include "PictalCore/Platform/Foundation/JSON.h"

#include <fstream>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

/// What tests of coded types share.
namespace pictal {

/// Failures show coded values as JSON.
template <class T>
    requires requires(const T& value) { encodeJSON(value); }
void PrintTo(const T& value, std::ostream* out) {
    const auto text = encodeJSON(value);
    *out << (text ? *text : text.error().description());
}

/// Encodes the value, decodes it and encodes it again: equality does not see everything (a
/// rectangle's stored signs), the text does.
template <class T>
void expectRoundTrip(const T& value) {
    const auto text = encodeJSON(value);
    ASSERT_TRUE(text) << text.error().description();
    const auto again = decodeJSON<T>(*text);
    ASSERT_TRUE(again) << again.error().description() << "\nin " << *text;
    EXPECT_EQ(*again, value);
    EXPECT_EQ(encodeJSON(*again), text);
}

/// Text that does not decode, and how the error reads.
struct BadJSON {
    std::string text;
    DecodingError::Kind kind;
    const char* message;
};

template <class T>
void expectDecodingErrors(std::initializer_list<BadJSON> cases) {
    for (const auto& [text, kind, message] : cases) {
        const auto result = decodeJSON<T>(text);
        ASSERT_FALSE(result) << "decoded in spite of: " << message;
        EXPECT_EQ(result.error().description(), message);
        EXPECT_EQ(result.error().kind, kind) << message;
    }
}

/// A copy of `text` with its one occurrence of `was` replaced; a failure if there is none or more.
inline std::string patched(std::string text, std::string_view was, std::string_view now) {
    const std::size_t at = text.find(was);
    EXPECT_TRUE(at != std::string::npos && text.find(was, at + 1) == std::string::npos) << was;
    return at == std::string::npos ? text : text.replace(at, was.size(), now);
}

/// The JSON samples of a guide in docs/, in order.
inline std::vector<std::string> samplesOfGuide(const std::string& name) {
    std::ifstream guide(PICTAL_SOURCE_DIR "/docs/" + name);
    std::vector<std::string> samples;
    bool inside = false;
    for (std::string line; std::getline(guide, line);) {
        if (inside && !line.starts_with("```")) samples.back() += line + "\n";
        if (line == "```json") samples.emplace_back();
        if (line.starts_with("```")) inside = line == "```json";
    }
    return samples;
}

}  // namespace pictal
