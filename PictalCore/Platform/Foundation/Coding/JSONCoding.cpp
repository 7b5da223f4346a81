#include "PictalCore/Platform/Foundation/Coding/JSONCoding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pictal {

namespace detail {

namespace {

/// Whether there is an array of two elements; an error otherwise.
bool isPair(const JSONDecoder& decoder, std::string_view expected) {
    const auto* array = decoder.value().as<JSONValue::Array>();
    if (array && array->size() == 2) return true;
    decoder.failType(expected);
    return false;
}

}  // namespace

bool JSONDecoder::isNull() const {
    const bool isNull = value_->as<std::nullptr_t>() != nullptr;
    if (isNull) fail(DecodingError::Kind::valueNotFound, "Expected a value but found null.");
    return isNull;
}

const JSONValue::Object* JSONDecoder::object() const {
    const auto* object = value_->as<JSONValue::Object>();
    if (!object) failType("an object");
    return object;
}

std::optional<JSONDecoder> JSONDecoder::optionalMember(std::string_view key) const {
    if (failed()) return std::nullopt;
    const auto* members = object();
    if (!members) return std::nullopt;
    const auto found = std::ranges::find(*members, key, &JSONMember::key);
    if (found == members->end() || found->value.as<std::nullptr_t>()) return std::nullopt;
    return JSONDecoder(found->value, this, found->key);
}

std::optional<JSONDecoder> JSONDecoder::requiredMember(std::string_view key) const {
    std::optional<JSONDecoder> member = optionalMember(key);
    if (member || failed()) return member;
    const auto& members = *value_->as<JSONValue::Object>();
    const auto found = std::ranges::find(members, key, &JSONMember::key);
    if (found == members.end())
        fail(DecodingError::Kind::keyNotFound, "The key \"" + std::string(key) + "\" is missing.");
    else
        (void)JSONDecoder(found->value, this, found->key).isNull();
    return std::nullopt;
}

std::vector<std::pair<std::string_view, JSONDecoder>> JSONDecoder::members() const {
    std::vector<std::pair<std::string_view, JSONDecoder>> result;
    const auto* members = failed() ? nullptr : object();
    if (!members) return result;
    for (const auto& [key, member] : *members)
        result.emplace_back(key, JSONDecoder(member, this, key));
    return result;
}

std::size_t JSONDecoder::elementCount() const {
    const auto* array = value_->as<JSONValue::Array>();
    if (!array) failType("an array");
    return array ? array->size() : 0;
}

JSONDecoder JSONDecoder::element(std::size_t position) const {
    return {(*value_->as<JSONValue::Array>())[position], this, position};
}

void JSONDecoder::fail(DecodingError::Kind kind, std::string reason) const {
    if (failed()) return;
    std::vector<std::string> path;
    for (const JSONDecoder* place = this; place->parent_; place = place->parent_)
        path.push_back(place->key_.data() ? std::string(place->key_)
                                          : std::to_string(place->position_));
    std::ranges::reverse(path);
    *error_ = DecodingError{kind, std::move(path), std::move(reason)};
}

void JSONDecoder::failType(std::string_view expected) const {
    fail(DecodingError::Kind::typeMismatch, "Expected " + std::string(expected) + " but found " +
                                                std::string(value_->typeName()) + ".");
}

bool JSONCodec<bool>::decode(const JSONDecoder& decoder) {
    const auto* flag = decoder.value().as<bool>();
    if (!flag) decoder.failType("a boolean");
    return flag && *flag;
}

CGFloat JSONCodec<CGFloat>::decode(const JSONDecoder& decoder) {
    if (const auto* number = decoder.value().as<double>()) return *number;
    if (const auto* whole = decoder.value().as<std::int64_t>()) return static_cast<CGFloat>(*whole);
    decoder.failType("a number");
    return 0;
}

std::int64_t JSONCodec<std::int64_t>::decode(const JSONDecoder& decoder) {
    if (const auto* whole = decoder.value().as<std::int64_t>()) return *whole;
    const auto* number = decoder.value().as<double>();
    constexpr double limit = 0x1p53;  // from here on a double may stand for its neighbours
    if (!number)
        decoder.failType("a whole number");
    else if (*number != std::trunc(*number))
        decoder.fail(DecodingError::Kind::typeMismatch,
                     "Expected a whole number but found a fraction.");
    else if (*number <= -limit || *number >= limit)
        decoder.fail(DecodingError::Kind::dataCorrupted,
                     "The whole number is too large to be kept exactly.");
    else
        return static_cast<std::int64_t>(*number);
    return 0;
}

std::uint16_t JSONCodec<std::uint16_t>::decode(const JSONDecoder& decoder) {
    const auto whole = JSONCodec<std::int64_t>::decode(decoder);
    if (whole >= 0 && whole <= std::numeric_limits<std::uint16_t>::max())
        return static_cast<std::uint16_t>(whole);
    decoder.fail(DecodingError::Kind::dataCorrupted, "The number is not in 0...65535.");
    return 0;
}

std::string JSONCodec<std::string>::decode(const JSONDecoder& decoder) {
    const auto* text = decoder.value().as<std::string>();
    if (!text) decoder.failType("a string");
    return text ? *text : std::string();
}

JSONValue JSONCodec<CGPoint>::encode(const CGPoint& point) {
    return JSONCodec<std::vector<CGFloat>>::encode({point.x, point.y});
}

CGPoint JSONCodec<CGPoint>::decode(const JSONDecoder& decoder) {
    if (!isPair(decoder, "an array of two numbers")) return {};
    return {decoder.element(0).decode<CGFloat>(), decoder.element(1).decode<CGFloat>()};
}

JSONValue JSONCodec<CGRect>::encode(const CGRect& rect) {
    return JSONCodec<std::vector<CGPoint>>::encode(
        {rect.origin, CGPoint{rect.size.width, rect.size.height}});
}

CGRect JSONCodec<CGRect>::decode(const JSONDecoder& decoder) {
    if (!isPair(decoder, "an array of an origin and a size")) return {};
    const auto origin = decoder.element(0).decode<CGPoint>();
    const auto size = decoder.element(1).decode<CGPoint>();
    return {origin, CGSize{size.x, size.y}};
}

}  // namespace detail
}  // namespace pictal
