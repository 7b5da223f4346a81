#include "PictalCore/Platform/Foundation/Folders.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>

namespace pictal {

namespace fs = std::filesystem;

namespace {

/// @return 0 or the reason; something that is there already is no error
int makeFolders(const fs::path& folder) {
    if (::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) return 0;
    if (errno != ENOENT) return errno;
    const fs::path parent = folder.parent_path();
    if (parent.empty() || parent == folder) return ENOENT;
    if (const int error = makeFolders(parent)) return error;
    return ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST ? 0 : errno;
}

std::expected<void, FileError> requireFolder(const fs::path& folder) {
    std::error_code error;
    const fs::file_type type = fs::symlink_status(folder, error).type();
    if (type == fs::file_type::directory) return {};
    if (type == fs::file_type::not_found)
        error = make_error_code(std::errc::no_such_file_or_directory);
    else if (!error)
        error = make_error_code(std::errc::not_a_directory);
    return std::unexpected(FileError{error, folder});
}

}  // namespace

std::expected<void, FileError> createPrivateFolder(const fs::path& folder) {
    if (const int error = makeFolders(folder))
        return std::unexpected(FileError{{error, std::generic_category()}, folder});
    if (auto isFolder = requireFolder(folder); !isFolder) return isFolder;
    (void)::fchmodat(AT_FDCWD, folder.c_str(), 0700, AT_SYMLINK_NOFOLLOW);
    return {};
}

std::expected<std::vector<fs::path>, FileError> contentsOfFolder(const fs::path& folder) {
    if (auto isFolder = requireFolder(folder); !isFolder) return std::unexpected(isFolder.error());
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
        return std::unexpected(FileError{{errno, std::generic_category()}, item});
    }
    constexpr std::int64_t limit = std::numeric_limits<std::int64_t>::max() / 1'000'000'000 - 1;
    const std::chrono::seconds seconds(
        std::clamp<std::int64_t>(status.st_mtim.tv_sec, -limit, limit));
    return Clock::time_point(std::chrono::duration_cast<Clock::duration>(
        seconds + std::chrono::nanoseconds(status.st_mtim.tv_nsec)));
}

}  // namespace pictal
