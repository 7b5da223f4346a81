#include "PictalCore/Support/TemporaryPreviewFileStore.h"

#include "PictalCore/Platform/Foundation/Folders.h"
#include "PictalCore/Platform/Foundation/UUID.h"
#include "PictalCore/Platform/Foundation/Unicode.h"
#include "PictalCore/Support/SafeFileNamer.h"

#include <string>

namespace pictal {

namespace fs = std::filesystem;

namespace {

using Time = std::chrono::system_clock::time_point;

std::string fileName(std::string_view fileStem, Time now) {
    constexpr std::size_t longest = 255;  // bytes; file systems take no more
    constexpr std::string_view start = ".Vistrell-";
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now.time_since_epoch());
    const std::string end = "-" + std::to_string(seconds.count()) + "-" + randomUUID() + ".png";
    const std::size_t room = longest - start.size() - end.size();
    std::string stem = SafeFileNamer::stem(fileStem, "preview", 80);
    if (stem.size() > room)
        stem = SafeFileNamer::stem(Unicode::prefixOfBytes(stem, room), "preview", 80);
    return std::string(start).append(stem).append(end);
}

/// The difference of two time points may not fit their own integers.
std::chrono::duration<double> age(Time now, Time modified) {
    using Ticks = std::chrono::duration<long double, Time::period>;
    return Ticks(now.time_since_epoch()) - Ticks(modified.time_since_epoch());
}

}  // namespace

fs::path TemporaryPreviewFileStore::directory() const {
    return rootDirectory / ".VistrellPreviews";
}

std::expected<fs::path, FileError> TemporaryPreviewFileStore::write(std::span<const std::byte> data,
                                                                    std::string_view fileStem,
                                                                    Time now) const {
    auto file = makeFile(fileStem, now);
    if (!file) return std::unexpected(file.error());
    auto written = file->write(data);
    if (written) written = file->commit();
    if (!written) return std::unexpected(written.error());
    return file->target();
}

std::expected<AtomicFile, FileError> TemporaryPreviewFileStore::makeFile(std::string_view fileStem,
                                                                         Time now) const {
    const fs::path folder = directory();
    if (auto made = createPrivateFolder(folder); !made) return std::unexpected(made.error());
    if (auto pruned = pruneExpired(now); !pruned) return std::unexpected(pruned.error());
    return AtomicFile::make(folder / fileName(fileStem, now));
}

std::expected<void, FileError> TemporaryPreviewFileStore::pruneExpired(Time now) const {
    const auto entries = contentsOfPrivateFolder(directory());
    if (!entries && entries.error().code == std::errc::no_such_file_or_directory) return {};
    if (!entries) return std::unexpected(entries.error());
    for (const fs::path& entry : *entries) {
        const auto modified = modificationDate(entry);
        if (!modified) return std::unexpected(modified.error());
        const std::optional<Time>& date = *modified;
        if (date && age(now, *date) > expirationInterval)
            AtomicFile::removeUnlessBeingWritten(entry);
    }
    return {};
}

}  // namespace pictal
