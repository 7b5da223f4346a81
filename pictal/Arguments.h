#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/RawValue.h"
#include "PictalCore/Styling/RGBAColor.h"
#include "pictal/InputOutput.h"
#include "pictal/Program.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// As CSS writes colours: "#f80", "#ff880080", "rgb(255 136 0 / 50%)", "hsl(32, 100%, 50%)",
/// "rebeccapurple", "transparent".
[[nodiscard]] std::expected<RGBAColor, Failure> parseColor(std::string_view text);

/// For an option that takes a case of an enumeration by its raw value.
template <RawRepresentable E>
[[nodiscard]] CLI::Validator choice() {
    std::string names;
    for (const E value : allCases<E>())
        names += (names.empty() ? "" : ", ") + std::string(rawValue(value));
    // The parser's own transformer would take the numbers of the cases as well.
    const auto toNumber = [names](std::string& text) {
        const std::optional<E> value = fromRawValue<E>(text);
        if (!value) return "\"" + text + "\" is none of " + names;
        text = std::to_string(static_cast<int>(*value));
        return std::string();
    };
    return CLI::Validator(toNumber, "{" + names + "}");
}

/// Reads a value of the library from a JSON file; - is standard input.
template <class T>
[[nodiscard]] std::expected<T, Failure> readJSON(const std::string& path) {
    const auto text = readTextInput(path);
    if (!text) return std::unexpected(text.error());
    auto value = decodeJSON<T>(*text);
    if (!value)
        return badInput((path == "-" ? "standard input" : path) + ": " +
                        value.error().description());
    return *std::move(value);
}

}  // namespace pictal::program
