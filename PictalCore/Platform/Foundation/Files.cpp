#include "PictalCore/Platform/Foundation/Files.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pictal {

namespace fs = std::filesystem;

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// Closes a descriptor that is only read from.
struct Descriptor {
    int value;
    ~Descriptor() {
        if (value >= 0) ::close(value);
    }
};

}  // namespace

std::expected<std::vector<std::byte>, FileError> readFile(const fs::path& path,
                                                          std::uint64_t maximumSize) {
    const Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC)};
    if (file.value < 0) return std::unexpected(FileError{lastError(), path});
    return readDescriptor(file.value, path, maximumSize);
}

std::expected<std::vector<std::byte>, FileError> readDescriptor(int descriptor,
                                                                const fs::path& name,
                                                                std::uint64_t maximumSize) {
    struct stat status{};
    if (::fstat(descriptor, &status) != 0) return std::unexpected(FileError{lastError(), name});
    if (S_ISDIR(status.st_mode))
        return std::unexpected(FileError{make_error_code(std::errc::is_a_directory), name});

    // One byte more than the size says, so that a file of that size ends in a single read; a pipe
    // or a growing file goes on as long as it has bytes.
    std::vector<std::byte> bytes;
    std::size_t size = 0;
    const auto expectedSize = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
    bytes.resize(static_cast<std::size_t>(std::min(expectedSize, maximumSize)) + 1);
    for (;;) {
        if (size == bytes.size()) bytes.resize(bytes.size() + std::max<std::size_t>(size, 65536));
        const ssize_t count = ::read(descriptor, bytes.data() + size, bytes.size() - size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::unexpected(FileError{lastError(), name});
        if (count == 0) break;
        size += static_cast<std::size_t>(count);
        if (size > maximumSize)
            return std::unexpected(FileError{make_error_code(std::errc::file_too_large), name});
    }
    bytes.resize(size);
    return bytes;
}

std::expected<void, FileError> writeDescriptor(int descriptor, const fs::path& name,
                                               std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::unexpected(FileError{lastError(), name});
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

std::expected<void, FileError> writeFileAtomically(const fs::path& path,
                                                   std::span<const std::byte> bytes) {
    auto file = AtomicFile::make(path);
    if (!file) return std::unexpected(file.error());
    if (auto written = file->write(bytes); !written) return written;
    return file->commit();
}

fs::path followingLinks(const fs::path& path) {
    constexpr int limit = 40;  // the system's own
    fs::path end = path;
    std::error_code error;
    for (int links = 0; fs::is_symlink(fs::symlink_status(end, error)); ++links) {
        const fs::path target = fs::read_symlink(end, error);
        if (error || links == limit) return path;
        end = end.parent_path() / target;
    }
    return end;
}

}  // namespace pictal
