#include "pictal/Arguments.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include <fmt/format.h>

namespace pictal::program {

namespace {

constexpr std::string_view whiteSpace = " \t\n\r";

/// The number at the front of the text, which is taken off; nothing where there is none.
std::optional<double> takeNumber(std::string_view& text) {
    // from_chars knows no plus sign, and takes "inf" and "nan".
    std::string_view rest = text;
    if (rest.starts_with('+')) rest.remove_prefix(1);
    const std::size_t digits = rest.starts_with('-') ? 1 : 0;
    if (digits >= rest.size() || std::string_view("0123456789.").find(rest[digits]) == rest.npos)
        return std::nullopt;
    double number = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
    text = rest.substr(static_cast<std::size_t>(end - rest.data()));
    return number;
}

void skipWhiteSpace(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
}

/// The point at the front of the text, which is taken off.
std::optional<CGPoint> takePoint(std::string_view& text) {
    const auto x = takeNumber(text);
    if (!x) return std::nullopt;
    const std::size_t before = text.size();
    skipWhiteSpace(text);
    if (text.starts_with(',')) text.remove_prefix(1);
    skipWhiteSpace(text);
    if (text.size() == before) return std::nullopt;
    const auto y = takeNumber(text);
    if (!y) return std::nullopt;
    return CGPoint{*x, *y};
}

/// Numbers at the front of the text with commas between them, or what else takes their place; all
/// of the text has to be used.
std::optional<std::array<double, 4>> fourNumbers(std::string_view text,
                                                 const std::array<std::string_view, 3>& between) {
    std::array<double, 4> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0) {
            // A separator of white space is white space; around any other there may be some.
            const bool apart = between[i - 1] == " ";
            const std::size_t before = text.size();
            skipWhiteSpace(text);
            if (apart ? text.size() == before : !text.starts_with(between[i - 1]))
                return std::nullopt;
            if (!apart) text.remove_prefix(between[i - 1].size());
            skipWhiteSpace(text);
        }
        const auto number = takeNumber(text);
        if (!number) return std::nullopt;
        numbers[i] = *number;
    }
    if (!text.empty()) return std::nullopt;
    return numbers;
}

std::unexpected<Failure> notUnderstood(std::string_view text, std::string_view wanted) {
    return badInput(fmt::format("{} is not {}", inQuotes(text), wanted));
}

}  // namespace

std::expected<double, Failure> parseNumber(std::string_view text) {
    std::string_view rest = text;
    const auto number = takeNumber(rest);
    if (!number || !rest.empty()) return notUnderstood(text, "a number");
    return *number;
}

std::expected<std::int64_t, Failure> parseWholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range)
        return badInput(fmt::format("{} does not fit 64 bits", inQuotes(text)));
    if (error != std::errc() || end != text.data() + text.size())
        return notUnderstood(text, "a whole number");
    return number;
}

std::expected<CGPoint, Failure> parsePoint(std::string_view text) {
    std::string_view rest = text;
    const auto point = takePoint(rest);
    if (!point || !rest.empty()) return notUnderstood(text, "a point; write it as x,y");
    return *point;
}

std::expected<std::vector<CGPoint>, Failure> parsePoints(std::string_view text) {
    std::vector<CGPoint> points;
    std::string_view rest = text;
    for (skipWhiteSpace(rest); !rest.empty(); skipWhiteSpace(rest)) {
        const std::string_view start = rest;
        const auto point = takePoint(rest);
        if (!point || (!rest.empty() && whiteSpace.find(rest.front()) == rest.npos))
            return notUnderstood(start.substr(0, start.find_first_of(whiteSpace)),
                                 "a point; write points as x,y x,y");
        points.push_back(*point);
    }
    return points;
}

std::expected<CGRect, Failure> parseRect(std::string_view text) {
    if (const auto n = fourNumbers(text, {",", ",", ","}))
        return CGRect((*n)[0], (*n)[1], (*n)[2], (*n)[3]);
    auto sized = fourNumbers(text, {",", " ", "x"});
    if (const auto n = fourNumbers(text, {"x", "+", "+"}); n)
        sized = {{(*n)[2], (*n)[3], (*n)[0], (*n)[1]}};
    if (!sized || (*sized)[2] < 0 || (*sized)[3] < 0)
        return notUnderstood(text, "a rectangle; write it as x,y,width,height");
    return CGRect((*sized)[0], (*sized)[1], (*sized)[2], (*sized)[3]);
}

std::expected<std::pair<CGPoint, CGPoint>, Failure> parseLine(std::string_view text) {
    auto n = fourNumbers(text, {",", ",", ","});
    if (!n) n = fourNumbers(text, {",", " ", ","});
    if (!n) return notUnderstood(text, "a line; write it as x1,y1,x2,y2");
    return std::pair(CGPoint{(*n)[0], (*n)[1]}, CGPoint{(*n)[2], (*n)[3]});
}

CLI::Validator wholeNumber(std::int64_t least, std::int64_t most) {
    const std::string range = most == INT64_MAX ? fmt::format("from {} up", least)
                                                : fmt::format("from {} to {}", least, most);
    // The parser alone would read 010 as 8 and 0x10 as 16.
    const auto toDecimal = [=](std::string& text) -> std::string {
        const auto number = parseWholeNumber(text);
        if (!number || *number < least || *number > most)
            return fmt::format("{} is not a whole number {}", inQuotes(text), range);
        text = std::to_string(*number);
        return {};
    };
    return CLI::Validator(toDecimal, "");
}

void addMaximumBytes(CLI::App& command, std::int64_t& maximum) {
    command.add_option("--max-bytes", maximum, "Refuse a larger input than this")
        ->transform(wholeNumber(1))
        ->type_name("COUNT")
        ->capture_default_str();
}

std::expected<InputFile, Failure> openInput(const std::string& path, std::int64_t maximumBytes) {
    return InputFile::open(path, static_cast<std::uint64_t>(maximumBytes),
                           "; --max-bytes raises the limit");
}

CLI::Validator nameOf(std::string_view what) {
    const auto check = [=](std::string& text) {
        return text.empty() ? fmt::format("needs the name of a {}", what) : std::string();
    };
    return CLI::Validator(check, "");
}

}  // namespace pictal::program
