#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/UserDefaults.h"

#include <map>
#include <mutex>

/// User defaults that last as long as the object: for tests, and for embedders who keep values
/// elsewhere. Safe to use from several threads. Never fails.
namespace pictal {

class PICTAL_API InMemoryUserDefaults final : public UserDefaults {
  public:
    [[nodiscard]] std::expected<std::optional<Object>, UserDefaultsError> object(
        std::string_view key) const override;
    [[nodiscard]] std::expected<void, UserDefaultsError> setObject(std::string_view key,
                                                                   const Object& value) override;

  private:
    mutable std::mutex mutex_;
    std::map<std::string, Object, std::less<>> values_;
};

}  // namespace pictal
