#include "PictalCore/Platform/Foundation/AtomicFile.h"

#include "PictalCore/Platform/Foundation/Files.h"

#include <cerrno>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pictal {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view prefix = ".pictal-";
constexpr std::string_view suffix = ".tmp";

fs::path folderOf(const fs::path& target) {
    return target.has_parent_path() ? target.parent_path() : fs::path(".");
}

/// What went wrong with the entry of `target` in its folder.
std::unexpected<FileError> refusal(const fs::path& target) {
    const std::error_code code(errno, std::generic_category());
    const bool isTheFolders =
        errno == EACCES || errno == EPERM || errno == EROFS || errno == ENOENT || errno == ENOTDIR;
    return std::unexpected(FileError{code, isTheFolders ? folderOf(target) : target});
}

std::unexpected<FileError> failure(const fs::path& target) {
    return std::unexpected(FileError{{errno, std::generic_category()}, target});
}

fs::path temporaryBeside(const fs::path& target) {
    static constexpr char digits[] = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::random_device random;
    std::string name(prefix);
    for (int i = 0; i < 12; ++i)
        name += digits[random() % 36];
    return target.parent_path() / name.append(suffix);
}

bool isTemporary(const fs::path& item) {
    const std::string name = item.filename().string();
    return name.starts_with(prefix) && name.ends_with(suffix);
}

/// Until its lock is there, another process may take the file for one that is left over.
/// @return false if one did
bool lock(int descriptor) {
    while (::flock(descriptor, LOCK_EX) != 0)
        if (errno != EINTR) return true;  // a file system without locks
    struct stat status{};
    return ::fstat(descriptor, &status) != 0 || status.st_nlink > 0;
}

void takeOver(int descriptor, const struct stat& old) {
    mode_t mode = old.st_mode & 0777;
    if (::fchown(descriptor, old.st_uid, old.st_gid) != 0 &&
        ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0)
        mode &= 0707 | (mode & 07) << 3;  // the group is another one
    (void)::fchmod(descriptor, mode);
}

}  // namespace

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
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
    if (descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
}

std::expected<AtomicFile, FileError> AtomicFile::make(fs::path target) {
    struct stat old{};
    const bool replaces = ::stat(target.c_str(), &old) == 0;
    if (!replaces && errno != ENOENT) return failure(target);
    if (replaces && S_ISDIR(old.st_mode))
        return std::unexpected(FileError{make_error_code(std::errc::is_a_directory), target});
    // The folder's permission would do for the renaming, but not for the wish behind a read-only
    // file.
    if (replaces && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        return failure(target);
    for (;;) {
        fs::path temporary = temporaryBeside(target);
        const int descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                      replaces ? 0600 : 0666);
        if (descriptor < 0 && errno == EEXIST) continue;
        if (descriptor < 0) return refusal(target);
        if (!lock(descriptor)) {
            ::close(descriptor);
            continue;
        }
        if (replaces) takeOver(descriptor, old);
        return AtomicFile{descriptor, std::move(target), std::move(temporary)};
    }
}

std::expected<void, FileError> AtomicFile::write(std::span<const std::byte> bytes) {
    return writeDescriptor(descriptor_, target_, bytes);
}

std::expected<void, FileError> AtomicFile::commit() {
    while (::fsync(descriptor_) != 0) {
        if (errno == EINTR) continue;
        if (errno == EINVAL) break;  // a file system that has nothing to wait for
        return failure(target_);
    }
    // Closed only afterwards: the lock keeps others from removing what is to be renamed.
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) return refusal(target_);
    temporary_.clear();
    ::close(std::exchange(descriptor_, -1));
    return {};
}

void AtomicFile::removeUnlessBeingWritten(const fs::path& item) {
    const int descriptor =
        isTemporary(item) ? ::open(item.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)
                          : -1;
    const bool isBeingWritten =
        descriptor >= 0 && ::flock(descriptor, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    std::error_code ignored;
    if (!isBeingWritten) fs::remove_all(item, ignored);
    if (descriptor >= 0) ::close(descriptor);
}

}  // namespace pictal
