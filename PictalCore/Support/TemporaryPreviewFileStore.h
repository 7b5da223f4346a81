#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/Files.h"

#include <chrono>
#include <cstddef>
#include <expected>
#include <filesystem>
#include <span>
#include <string_view>

namespace pictal {

/// Short-lived preview pictures in a hidden folder that only its owner gets into. There is no
/// timer: every write first deletes what has expired, and nothing else ever does.
///
/// The folder belongs to the store alone: whatever lies in it expires, sub-folders whole, links as
/// links; only what another writer has not finished yet is spared. A file or a link in the folder's
/// place is refused with `std::errc::not_a_directory`, another user's folder with
/// `std::errc::operation_not_permitted`.
struct PICTAL_API TemporaryPreviewFileStore {
    std::filesystem::path rootDirectory;
    /// What was last modified longer ago than this has expired; exactly as long ago has not.
    std::chrono::duration<double> expirationInterval;

    /// ".VistrellPreviews" in the root.
    [[nodiscard]] std::filesystem::path directory() const;

    /// Makes the folder if it is missing, deletes what has expired, and writes the bytes, which are
    /// not looked at, to a new file. On failure no file is left behind.
    ///
    /// @param fileStem  any text; what a file name cannot have is replaced, and what is too long
    /// for
    ///     one is cut
    /// @return where the file is: ".Vistrell-STEM-SECONDS-UUID.png" in `directory()`
    [[nodiscard]] std::expected<std::filesystem::path, FileError> write(
        std::span<const std::byte> data, std::string_view fileStem,
        std::chrono::system_clock::time_point now) const;

    /// The same with the writing left to the caller, who may have to remove the temporary file when
    /// a signal ends the process.
    [[nodiscard]] std::expected<AtomicFile, FileError> makeFile(
        std::string_view fileStem, std::chrono::system_clock::time_point now) const;

    /// An entry that cannot be deleted stays; one whose date cannot be read is an error.
    [[nodiscard]] std::expected<void, FileError> pruneExpired(
        std::chrono::system_clock::time_point now) const;

    friend bool operator==(const TemporaryPreviewFileStore&,
                           const TemporaryPreviewFileStore&) = default;
};

}  // namespace pictal
