#include "PictalCore/Platform/Foundation/InMemoryUserDefaults.h"

namespace pictal {

std::expected<std::optional<UserDefaults::Object>, UserDefaultsError> InMemoryUserDefaults::object(
    std::string_view key) const {
    const std::lock_guard lock(mutex_);
    const auto found = values_.find(key);
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

std::expected<void, UserDefaultsError> InMemoryUserDefaults::setObject(std::string_view key,
                                                                       const Object& value) {
    const std::lock_guard lock(mutex_);
    values_.insert_or_assign(std::string(key), value);
    return {};
}

}  // namespace pictal
