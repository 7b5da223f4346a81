#pragma once

#include "PictalCore/Platform/Foundation/UserDefaults.h"
#include "PictalCore/Platform/Foundation/detail/SQLiteDatabase.h"

#include <chrono>
#include <expected>
#include <filesystem>
#include <optional>
#include <string_view>

/// The SQLite file of user defaults: how it comes into being, how it is told from any other file,
/// and its one table.
namespace pictal::detail {

/// Makes an empty file for its owner only, as SQLite would not, and the folders that are missing.
///
/// @return whether there was none. One that is there is never opened, since closing it would
///     release the locks that this process holds on it.
[[nodiscard]] std::expected<bool, UserDefaultsError> makeUserDefaultsFile(
    const std::filesystem::path& path);

/// Refuses a file that is damaged or of another kind. A new file is empty.
[[nodiscard]] std::expected<SQLiteDatabase, UserDefaultsError> openUserDefaultsFile(
    const std::filesystem::path& path, std::chrono::milliseconds busyTimeout);

[[nodiscard]] std::expected<std::optional<UserDefaults::Object>, UserDefaultsError> selectObject(
    const SQLiteDatabase& database, std::string_view key);

/// Only within a transaction; fails when an earlier failure has already ended it.
[[nodiscard]] std::expected<void, UserDefaultsError> insertObject(
    const SQLiteDatabase& database, std::string_view key, const UserDefaults::Object& value);

}  // namespace pictal::detail
