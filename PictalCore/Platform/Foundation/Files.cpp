#include "PictalCore/Platform/Foundation/Files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <random>
#include <utility>

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

fs::path temporaryBeside(const fs::path& target) {
    static constexpr char digits[] = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::random_device random;
    std::string name = ".pictal-";
    for (int i = 0; i < 12; ++i)
        name += digits[random() % 36];
    return target.parent_path() / (name + ".tmp");
}

}  // namespace

std::string FileError::description() const {
    return path.string() + ": " + code.message();
}

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

std::expected<void, FileError> writeFileAtomically(const fs::path& path,
                                                   std::span<const std::byte> bytes) {
    auto file = AtomicFile::make(path);
    if (!file) return std::unexpected(file.error());
    if (auto written = file->write(bytes); !written) return written;
    return file->commit();
}

AtomicFile::AtomicFile(int descriptor, fs::path target, fs::path temporary)
    : descriptor_(descriptor), target_(std::move(target)), temporary_(std::move(temporary)) {}

AtomicFile::AtomicFile(AtomicFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)),
      target_(std::move(other.target_)),
      temporary_(std::exchange(other.temporary_, {})) {}

AtomicFile& AtomicFile::operator=(AtomicFile&& other) noexcept {
    if (this != &other) {
        discard();
        descriptor_ = std::exchange(other.descriptor_, -1);
        target_ = std::move(other.target_);
        temporary_ = std::exchange(other.temporary_, {});
    }
    return *this;
}

AtomicFile::~AtomicFile() {
    discard();
}

void AtomicFile::discard() noexcept {
    if (descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

FileError AtomicFile::failure() const {
    return {lastError(), target_};
}

std::expected<AtomicFile, FileError> AtomicFile::make(fs::path target) {
    struct stat status{};
    const bool replaces = ::stat(target.c_str(), &status) == 0;
    if (!replaces && errno != ENOENT) return std::unexpected(FileError{lastError(), target});
    if (replaces && S_ISDIR(status.st_mode))
        return std::unexpected(FileError{make_error_code(std::errc::is_a_directory), target});
    for (;;) {
        fs::path temporary = temporaryBeside(target);
        const int descriptor =
            ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0) {
            if (replaces) (void)::fchmod(descriptor, status.st_mode & 07777);
            return AtomicFile{descriptor, std::move(target), std::move(temporary)};
        }
        if (errno != EEXIST) return std::unexpected(FileError{lastError(), target});
    }
}

std::expected<void, FileError> AtomicFile::write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::unexpected(failure());
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

std::expected<void, FileError> AtomicFile::commit() {
    if (::close(std::exchange(descriptor_, -1)) != 0) return std::unexpected(failure());
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) return std::unexpected(failure());
    temporary_.clear();
    return {};
}

}  // namespace pictal
