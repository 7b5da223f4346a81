#pragma once

#include "PictalCore/Export.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <vector>

/// Reading whole files, and writing them so that nobody ever sees half a file.
namespace pictal {

/// What the file system answered, and for which path.
struct PICTAL_API FileError {
    std::error_code code;
    std::filesystem::path path;

    /// "PATH: No space left on device"
    [[nodiscard]] std::string description() const;

    friend bool operator==(const FileError&, const FileError&) = default;
};

/// @param maximumSize  more bytes than this fail with `std::errc::file_too_large`
[[nodiscard]] PICTAL_API std::expected<std::vector<std::byte>, FileError> readFile(
    const std::filesystem::path& path,
    std::uint64_t maximumSize = std::numeric_limits<std::uint64_t>::max());

/// The same for a descriptor that is open already, from where it stands; it stays open.
/// @param name  what an error calls it
[[nodiscard]] PICTAL_API std::expected<std::vector<std::byte>, FileError> readDescriptor(
    int descriptor, const std::filesystem::path& name,
    std::uint64_t maximumSize = std::numeric_limits<std::uint64_t>::max());

/// Writes all bytes to a temporary file beside `path` and renames it into place. On failure the
/// temporary file is gone and `path` is what it was.
[[nodiscard]] PICTAL_API std::expected<void, FileError> writeFileAtomically(
    const std::filesystem::path& path, std::span<const std::byte> bytes);

/// A file that comes into being whole or not at all: bytes go to a hidden temporary file beside the
/// target, and `commit` renames it over the target. Without a commit the destructor removes it.
/// A new file gets mode 0666 less the umask; a replaced one keeps its mode.
class PICTAL_API AtomicFile {
  public:
    [[nodiscard]] static std::expected<AtomicFile, FileError> make(std::filesystem::path target);

    AtomicFile(AtomicFile&& other) noexcept;
    AtomicFile& operator=(AtomicFile&& other) noexcept;
    ~AtomicFile();

    [[nodiscard]] std::expected<void, FileError> write(std::span<const std::byte> bytes);
    [[nodiscard]] std::expected<void, FileError> commit();

    /// Where the bytes are until `commit`; empty afterwards.
    [[nodiscard]] const std::filesystem::path& temporaryPath() const { return temporary_; }

  private:
    AtomicFile(int descriptor, std::filesystem::path target, std::filesystem::path temporary);
    void discard() noexcept;
    [[nodiscard]] FileError failure() const;

    int descriptor_ = -1;
    std::filesystem::path target_;
    std::filesystem::path temporary_;
};

}  // namespace pictal
