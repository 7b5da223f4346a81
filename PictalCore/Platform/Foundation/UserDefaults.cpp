#include "PictalCore/Platform/Foundation/UserDefaults.h"

#include <utility>

namespace pictal {

UserDefaults::~UserDefaults() = default;

std::expected<std::optional<UserDefaults::Data>, UserDefaultsError> UserDefaults::data(
    std::string_view key) const {
    auto value = object(key);
    if (!value) return std::unexpected(std::move(value.error()));
    if (!*value || !std::holds_alternative<Data>(**value)) return std::nullopt;
    return std::get<Data>(*std::move(*value));
}

}  // namespace pictal
