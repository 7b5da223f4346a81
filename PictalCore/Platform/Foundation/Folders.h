#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/FileError.h"

#include <chrono>
#include <expected>
#include <filesystem>
#include <optional>
#include <vector>

/// Folders that only their owner gets into, and the age of what is in them. A link counts as a
/// link, never as what it points to.
namespace pictal {

/// Makes the folder, and the folders above it that are missing, with mode 0700. What is there
/// already stays as it is.
[[nodiscard]] PICTAL_API std::expected<void, FileError> createFolders(
    const std::filesystem::path& folder);

/// The same, and the folder itself is nobody else's: one that is there already is set to 0700 as
/// well.
///
/// @return `std::errc::not_a_directory` if there is a file or a link in its place,
///     `std::errc::operation_not_permitted` if it is another user's
[[nodiscard]] PICTAL_API std::expected<void, FileError> createPrivateFolder(
    const std::filesystem::path& folder);

/// The entries, hidden ones too, in the file system's order.
///
/// @return `std::errc::no_such_file_or_directory` if there is nothing at the path,
///     `std::errc::not_a_directory` if there is a file or a link,
///     `std::errc::operation_not_permitted` if it is another user's
[[nodiscard]] PICTAL_API std::expected<std::vector<std::filesystem::path>, FileError>
contentsOfPrivateFolder(const std::filesystem::path& folder);

/// When the content last changed; nothing if there is no such item. Dates that a time point cannot
/// hold (before 1678, after 2261) become the nearest one.
[[nodiscard]] PICTAL_API
    std::expected<std::optional<std::chrono::system_clock::time_point>, FileError>
    modificationDate(const std::filesystem::path& item);

}  // namespace pictal
