#include "PictalCore/Platform/Foundation/UserDefaults.h"

#include <utility>

namespace pictal {

std::string UserDefaultsError::description() const {
    return path.empty() ? reason : path.string() + ": " + reason;
}

UserDefaults::~UserDefaults() = default;

std::expected<std::optional<UserDefaults::Data>, UserDefaultsError> UserDefaults::data(
    std::string_view key) const {
    auto result = object(key);
    if (!result) return std::unexpected(std::move(result.error()));
    std::optional<Object> value = *std::move(result);
    if (!value || !std::holds_alternative<Data>(*value)) return std::nullopt;
    return std::get<Data>(*std::move(value));
}

}  // namespace pictal
