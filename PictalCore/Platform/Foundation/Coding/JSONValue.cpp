#include "PictalCore/Platform/Foundation/Coding/JSONValue.h"

#include "PictalCore/Platform/Foundation/Unicode.h"

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <unordered_set>

#include <nlohmann/json.hpp>

namespace pictal::detail {

namespace {

constexpr std::size_t maximumDepth = 64;  // far above any form here; parsing never recurses deeper
constexpr std::size_t maximumSize = std::size_t{64} << 20;
/// Of values and keys. A stroke of a million points has three million; a tree of this many takes up
/// to 350 MB.
constexpr std::size_t maximumCount = 4'000'000;

DecodingError corrupted(std::string reason) {
    return {DecodingError::Kind::dataCorrupted, {}, std::move(reason)};
}

/// Builds the tree from the parser's events and stops it at the first thing that is refused.
class TreeBuilder : public nlohmann::json_sax<nlohmann::json> {
  public:
    JSONValue root;
    DecodingError error;

    bool null() override { return add(JSONValue{nullptr}); }
    bool boolean(bool value) override { return add(JSONValue{value}); }
    bool number_integer(number_integer_t value) override { return add(JSONValue{value}); }
    bool number_unsigned(number_unsigned_t value) override {
        if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return add(JSONValue{static_cast<double>(value)});
        return add(JSONValue{static_cast<std::int64_t>(value)});
    }
    bool number_float(number_float_t value, const string_t&) override {
        return add(JSONValue{value});
    }
    bool string(string_t& value) override { return add(JSONValue{std::move(value)}); }
    bool binary(binary_t&) override { return refuse("Binary data is no JSON."); }

    bool start_object(std::size_t) override { return open(JSONValue{JSONValue::Object{}}); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(JSONValue{JSONValue::Array{}}); }
    bool end_array() override { return close(); }

    bool key(string_t& name) override {
        if (!countOne()) return false;
        if (!levels_.back().keys.insert(name).second)
            return refuse("The key \"" + name + "\" occurs twice in one object.");
        pendingKey_ = std::move(name);
        return true;
    }

    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::detail::exception& exception) override {
        constexpr int numberOverflow = 406;
        const bool overflow = exception.id == numberOverflow;
        return refuse((overflow ? "A number is out of range at byte "
                                : "The text is not valid JSON at byte ") +
                      std::to_string(position) + ".");
    }

  private:
    struct Level {
        JSONValue container;
        std::string key;  // under which the container goes into its parent
        std::unordered_set<std::string> keys;
    };

    bool refuse(std::string reason) {
        error = corrupted(std::move(reason));
        return false;
    }
    bool countOne() {
        return ++count_ <= maximumCount ||
               refuse("The text has more than 4,000,000 values and keys.");
    }
    bool add(JSONValue value) {
        if (!countOne()) return false;
        if (levels_.empty()) {
            root = std::move(value);
        } else if (auto* array = std::get_if<JSONValue::Array>(&levels_.back().container.value)) {
            array->push_back(std::move(value));
        } else {
            std::get<JSONValue::Object>(levels_.back().container.value)
                .emplace_back(std::move(pendingKey_), std::move(value));
        }
        return true;
    }
    bool open(JSONValue container) {
        if (levels_.size() == maximumDepth)
            return refuse("The text is nested deeper than " + std::to_string(maximumDepth) +
                          " levels.");
        levels_.push_back({std::move(container), std::move(pendingKey_), {}});
        return true;
    }
    bool close() {
        Level level = std::move(levels_.back());
        levels_.pop_back();
        pendingKey_ = std::move(level.key);
        return add(std::move(level.container));
    }

    std::vector<Level> levels_;
    std::string pendingKey_;
    std::size_t count_ = 0;
};

/// Makes nlohmann's tree of a value and stops at the first thing that JSON cannot say.
class TreeConverter {
  public:
    using Tree = nlohmann::ordered_json;
    std::optional<EncodingError> error;

    Tree converted(const JSONValue& value) {
        if (const auto* flag = value.as<bool>()) return *flag;
        if (const auto* whole = value.as<std::int64_t>()) return *whole;
        if (const auto* text = value.as<std::string>()) return *text;
        if (const auto* array = value.as<JSONValue::Array>()) return converted(*array);
        if (const auto* object = value.as<JSONValue::Object>()) return converted(*object);
        const auto* number = value.as<double>();
        if (!number) return nullptr;
        if (!std::isfinite(*number)) refuse("JSON has no number that is not finite.");
        return *number;
    }

  private:
    void refuse(std::string reason) { error = EncodingError{path_, std::move(reason)}; }

    Tree child(std::string key, const JSONValue& value) {
        path_.push_back(std::move(key));
        Tree result = converted(value);
        path_.pop_back();
        return result;
    }
    Tree converted(const JSONValue::Array& array) {
        Tree::array_t result;
        result.reserve(array.size());
        for (std::size_t i = 0; i < array.size() && !error; ++i)
            result.push_back(child(std::to_string(i), array[i]));
        return result;
    }
    Tree converted(const JSONValue::Object& object) {
        Tree::object_t result;
        std::unordered_set<std::string> keys;
        for (const auto& [key, member] : object) {
            std::string written = Unicode::repaired(key);
            if (!error && !keys.insert(written).second)
                refuse("Two keys are both written as \"" + written + "\".");
            if (error) break;
            Tree tree = child(key, member);
            result.emplace_back(std::move(written), std::move(tree));
        }
        return result;
    }

    std::vector<std::string> path_;
};

}  // namespace

std::string_view JSONValue::typeName() const {
    static constexpr std::array<std::string_view, 7> names{
        "null", "a boolean", "a number", "a number", "a string", "an array", "an object"};
    return names[value.index()];
}

std::expected<JSONValue, DecodingError> parseJSON(std::string_view text) {
    if (text.size() > maximumSize)
        return std::unexpected(corrupted("The text is longer than 64 MiB."));
    // The parser would take it for the end of the text.
    if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos)
        return std::unexpected(
            corrupted("The text has a zero byte at byte " + std::to_string(zero + 1) + "."));
    TreeBuilder builder;
    if (!nlohmann::json::sax_parse(text.begin(), text.end(), &builder))
        return std::unexpected(std::move(builder.error));
    return std::move(builder.root);
}

std::expected<std::string, EncodingError> writeJSON(const JSONValue& value) {
    TreeConverter converter;
    const auto tree = converter.converted(value);
    if (converter.error) return std::unexpected(*std::move(converter.error));
    return tree.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace pictal::detail
