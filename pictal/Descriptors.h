#pragma once

#include "PictalCore/Platform/Foundation/Files.h"
#include "pictal/Outcome.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// What reading and writing share: open files, their names and what goes wrong with them.
namespace pictal::program {

/// Owns an open file; a negative one is none.
class Descriptor {
  public:
    explicit Descriptor(int value = -1) : value_(value) {}
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { (void)close(); }

    [[nodiscard]] explicit operator bool() const { return value_ >= 0; }
    [[nodiscard]] int value() const { return value_; }
    /// Whether that went well; `errno` says why not.
    bool close();

  private:
    int value_;
};

/// Keeps the first three descriptors from being given to files: one that the caller closed answers
/// as a closed one does, and no message ends in a picture.
void reserveStandardDescriptors();

/// Where a link leads in the end, whether there is something or not; links to the program's own
/// descriptors are such an end.
[[nodiscard]] std::filesystem::path followingLinks(std::filesystem::path path);

/// The descriptor that "/proc/self/fd/3" or another name of it stands for.
[[nodiscard]] std::optional<int> ownDescriptor(const std::filesystem::path& path);

[[nodiscard]] std::expected<void, Failure> writeAll(int descriptor, const std::string& name,
                                                    std::span<const std::byte> bytes);

/// "NAME: No space left on device", of `errno`.
[[nodiscard]] std::string lastErrorOf(std::string_view name);

/// A path that leads nowhere is wrong use; what the disk refuses is not.
[[nodiscard]] Failure failure(const FileError& error);

}  // namespace pictal::program
