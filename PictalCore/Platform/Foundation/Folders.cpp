#include "PictalCore/Platform/Foundation/Folders.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pictal {

namespace fs = std::filesystem;

namespace {

std::unexpected<FileError> failure(int code, const fs::path& item) {
    return std::unexpected(FileError{{code, std::generic_category()}, item});
}

std::expected<void, FileError> requireOwnFolder(const fs::path& folder) {
    struct stat status{};
    if (::lstat(folder.c_str(), &status) != 0)  // below a file there is nothing either
        return failure(errno == ENOTDIR ? ENOENT : errno, folder);
    if (!S_ISDIR(status.st_mode)) return failure(ENOTDIR, folder);
    if (status.st_uid != ::geteuid()) return failure(EPERM, folder);
    return {};
}

}  // namespace

std::expected<void, FileError> createFolders(const fs::path& folder) {
    const auto made = [&] { return ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST; };
    if (made()) return {};
    const fs::path parent = folder.parent_path();
    if (errno != ENOENT || parent.empty() || parent == folder) return failure(errno, folder);
    if (auto above = createFolders(parent); !above) return above;
    if (made()) return {};
    return failure(errno, folder);
}

std::expected<void, FileError> createPrivateFolder(const fs::path& folder) {
    if (auto made = createFolders(folder); !made) return made;
    if (auto isOwn = requireOwnFolder(folder); !isOwn) return isOwn;
    (void)::fchmodat(AT_FDCWD, folder.c_str(), 0700, AT_SYMLINK_NOFOLLOW);
    return {};
}

std::expected<std::vector<fs::path>, FileError> contentsOfPrivateFolder(const fs::path& folder) {
    if (auto isOwn = requireOwnFolder(folder); !isOwn) return std::unexpected(isOwn.error());
    std::vector<fs::path> entries;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        entries.push_back(entry->path());
    if (error) return std::unexpected(FileError{error, folder});
    return entries;
}

std::expected<std::optional<std::chrono::system_clock::time_point>, FileError> modificationDate(
    const fs::path& item) {
    using Clock = std::chrono::system_clock;
    struct stat status{};
    if (::lstat(item.c_str(), &status) != 0) {
        if (errno == ENOENT) return std::nullopt;
        return failure(errno, item);
    }
    constexpr std::int64_t limit = std::numeric_limits<std::int64_t>::max() / 1'000'000'000 - 1;
    const std::chrono::seconds seconds(
        std::clamp<std::int64_t>(status.st_mtim.tv_sec, -limit, limit));
    return Clock::time_point(std::chrono::duration_cast<Clock::duration>(
        seconds + std::chrono::nanoseconds(status.st_mtim.tv_nsec)));
}

}  // namespace pictal
