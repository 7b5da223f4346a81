#include "PictalCore/Support/TemporaryPreviewFileStore.h"

#include "PictalCore/Platform/Foundation/Folders.h"
#include "PictalCore/Platform/Foundation/UUID.h"
#include "PictalCore/Support/SafeFileNamer.h"

#include <string>

namespace pictal {

namespace fs = std::filesystem;

namespace {

using Time = std::chrono::system_clock::time_point;

std::string fileName(std::string_view fileStem, Time now) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now.time_since_epoch());
    return ".Vistrell-" + SafeFileNamer::stem(fileStem, "preview", 80) + "-" +
           std::to_string(seconds.count()) + "-" + randomUUID() + ".png";
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
    const fs::path folder = directory();
    if (auto made = createPrivateFolder(folder); !made) return std::unexpected(made.error());
    if (auto pruned = pruneExpired(now); !pruned) return std::unexpected(pruned.error());
    fs::path file = folder / fileName(fileStem, now);
    if (auto written = writeFileAtomically(file, data); !written)
        return std::unexpected(written.error());
    return file;
}

std::expected<void, FileError> TemporaryPreviewFileStore::pruneExpired(Time now) const {
    const auto entries = contentsOfFolder(directory());
    if (!entries && entries.error().code == std::errc::no_such_file_or_directory) return {};
    if (!entries) return std::unexpected(entries.error());
    for (const fs::path& entry : *entries) {
        const auto modified = modificationDate(entry);
        if (!modified) return std::unexpected(modified.error());
        std::error_code ignored;
        const std::optional<Time>& date = *modified;
        if (date && age(now, *date) > expirationInterval) fs::remove_all(entry, ignored);
    }
    return {};
}

}  // namespace pictal
