#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/RawValue.h"
#include "pictal/InputFile.h"
#include "pictal/InputOutput.h"
#include "pictal/Messages.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

/// Values as people type them. All of the text has to be understood; what is not is an error that
/// quotes it.
namespace pictal::program {

/// A finite decimal number: "12", "-.5", "1e3".
[[nodiscard]] std::expected<double, Failure> parseNumber(std::string_view text);

/// A whole number that fits: "12", "-3".
[[nodiscard]] std::expected<std::int64_t, Failure> parseWholeNumber(std::string_view text);

/// "x,y" or "x y".
[[nodiscard]] std::expected<CGPoint, Failure> parsePoint(std::string_view text);

/// Points apart by white space: "10,20 30,40.5".
[[nodiscard]] std::expected<std::vector<CGPoint>, Failure> parsePoints(std::string_view text);

/// A rectangle, its corner and its size: "x,y,w,h", "WxH+X+Y" or "X,Y WxH". The size may be
/// negative in the first.
[[nodiscard]] std::expected<CGRect, Failure> parseRect(std::string_view text);

/// Two points: "x1,y1,x2,y2" or "x1,y1 x2,y2".
[[nodiscard]] std::expected<std::pair<CGPoint, CGPoint>, Failure> parseLine(std::string_view text);

/// For an option that takes a whole number of such a size, in decimal digits.
[[nodiscard]] CLI::Validator wholeNumber(std::int64_t least, std::int64_t most = INT64_MAX);

/// For an option that takes the name of a file or folder: an empty one is none.
[[nodiscard]] CLI::Validator nameOf(std::string_view what);

/// For an option that takes a case of an enumeration by its raw value.
template <RawRepresentable E>
[[nodiscard]] CLI::Validator choice() {
    std::string names;
    for (const E value : allCases<E>())
        names += (names.empty() ? "" : ", ") + std::string(rawValue(value));
    // The parser's own transformer would take the numbers of the cases as well.
    const auto toNumber = [names](std::string& text) {
        const std::optional<E> value = fromRawValue<E>(text);
        if (!value) return inQuotes(text) + " is none of " + names;
        text = std::to_string(static_cast<int>(*value));
        return std::string();
    };
    return CLI::Validator(toNumber, "{" + names + "}");
}

/// Adds --max-bytes, which limits an input.
void addMaximumBytes(CLI::App& command, std::int64_t& maximum);
/// Opens one under that limit; the refusal names the option.
[[nodiscard]] std::expected<InputFile, Failure> openInput(const std::string& path,
                                                          std::int64_t maximumBytes);

/// Reads a value of the library from a JSON file; - is standard input.
template <class T>
[[nodiscard]] std::expected<T, Failure> readJSON(const std::string& path) {
    const auto text = readTextInput(path);
    if (!text) return std::unexpected(text.error());
    auto value = decodeJSON<T>(*text);
    if (!value) return badInput(inputName(path) + ": " + value.error().description());
    return *std::move(value);
}

}  // namespace pictal::program
