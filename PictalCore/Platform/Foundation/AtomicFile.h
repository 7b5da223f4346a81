#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/FileError.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <span>

namespace pictal {

/// A file that comes into being whole or not at all: bytes go to a hidden temporary file beside the
/// target, and `commit` renames it over the target. Without a commit the destructor removes it.
///
/// A new file gets mode 0666 less the umask. A replaced one keeps its permissions, its owner and
/// its group, as far as that is allowed; a group that cannot be kept may do no more than anybody.
/// Nobody may read the temporary file who may not read the target.
class PICTAL_API AtomicFile {
  public:
    /// Refuses a target that is there and may not be written. An error names the folder where it
    /// was the folder that refused.
    [[nodiscard]] static std::expected<AtomicFile, FileError> make(std::filesystem::path target);

    AtomicFile(AtomicFile&& other) noexcept;
    AtomicFile& operator=(AtomicFile&& other) noexcept;
    ~AtomicFile();

    [[nodiscard]] std::expected<void, FileError> write(std::span<const std::byte> bytes);
    /// Waits for the disk before the renaming, so that a power failure leaves the old file or the
    /// new one.
    [[nodiscard]] std::expected<void, FileError> commit();

    [[nodiscard]] const std::filesystem::path& target() const { return target_; }
    /// Where the bytes are until `commit`; empty afterwards.
    [[nodiscard]] const std::filesystem::path& temporaryPath() const { return temporary_; }

    /// Removes the item, a folder with all that is in it, unless it is the temporary file of
    /// somebody who is writing at this moment, in this process or another one.
    static void removeUnlessBeingWritten(const std::filesystem::path& item);

  private:
    AtomicFile(int descriptor, std::filesystem::path target, std::filesystem::path temporary);
    void discard() noexcept;

    int descriptor_ = -1;
    std::filesystem::path target_;
    std::filesystem::path temporary_;
};

}  // namespace pictal
