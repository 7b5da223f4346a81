#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/AtomicFile.h"
#include "PictalCore/Platform/Foundation/FileError.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <limits>
#include <span>
#include <vector>

/// Reading and writing whole files.
namespace pictal {

/// @param maximumSize  more bytes than this fail with `std::errc::file_too_large`
[[nodiscard]] PICTAL_API std::expected<std::vector<std::byte>, FileError> readFile(
    const std::filesystem::path& path,
    std::uint64_t maximumSize = std::numeric_limits<std::uint64_t>::max());

/// The same for a descriptor that is open already, from where it stands; it stays open.
/// @param name  what an error calls it
[[nodiscard]] PICTAL_API std::expected<std::vector<std::byte>, FileError> readDescriptor(
    int descriptor, const std::filesystem::path& name,
    std::uint64_t maximumSize = std::numeric_limits<std::uint64_t>::max());

/// Writes all bytes, from where the descriptor stands; it stays open.
/// @param name  what an error calls it
[[nodiscard]] PICTAL_API std::expected<void, FileError> writeDescriptor(
    int descriptor, const std::filesystem::path& name, std::span<const std::byte> bytes);

/// Puts a file of these bytes in place, whole or not at all; see `AtomicFile`.
[[nodiscard]] PICTAL_API std::expected<void, FileError> writeFileAtomically(
    const std::filesystem::path& path, std::span<const std::byte> bytes);

/// What a link points to in the end, whether it is there or not; a path that is no link is its own
/// answer. A link that leads in a circle is, too, and opening it fails.
[[nodiscard]] PICTAL_API std::filesystem::path followingLinks(const std::filesystem::path& path);

}  // namespace pictal
