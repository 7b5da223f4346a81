#pragma once

#include "PictalCore/Export.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace pictal {

/// What the file system answered, and for which path.
struct PICTAL_API FileError {
    std::error_code code;
    std::filesystem::path path;

    /// "PATH: No space left on device"
    [[nodiscard]] std::string description() const;

    friend bool operator==(const FileError&, const FileError&) = default;
};

}  // namespace pictal
