#pragma once

#include "PictalCore/Export.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Makes metadata and error descriptions fit for a log: window titles and the like are withheld,
/// file paths lose all but their last component, a value stays on one line and has a limit.
///
/// `maxLength` counts characters as people do; what is longer is cut there and gets "...". A
/// negative one counts as 0. All other bytes stay as they are, ill-formed ones too.
namespace pictal::LogMetadataSanitizer {

/// @return the value on one line, cut
[[nodiscard]] PICTAL_API std::string sanitize(std::string_view value, std::int64_t maxLength);

/// @return "<redacted-metadata>" for a free-text key, the value with its paths redacted for a path
///     key, the value for any other; the latter two on one line, cut
[[nodiscard]] PICTAL_API std::string sanitize(std::string_view value, std::string_view key,
                                              std::int64_t maxLength);

/// @return the description with its paths redacted, on one line, cut
[[nodiscard]] PICTAL_API std::string sanitizeErrorDescription(std::string_view description,
                                                              std::int64_t maxLength);

/// Whether values of this key say what the user sees: "title", "owner" and "body", and keys that
/// contain "windowTitle", "windowName", "ownerName" or "applicationName". Case does not matter.
[[nodiscard]] PICTAL_API bool isSensitiveFreeTextKey(std::string_view key);

/// Whether values of this key may hold paths: keys that contain "path", "directory", "executable",
/// "bundle", "file" or "url". Case does not matter.
[[nodiscard]] PICTAL_API bool isSensitivePathKey(std::string_view key);

/// Redacts every path in a text. A path begins at "/Users", "/Volumes", "/Applications",
/// "/private", "/var", "/tmp" or "~/", also within a word, and ends before a comma, a semicolon or
/// at the end: spaces may be part of it. Takes time in proportion to the text.
[[nodiscard]] PICTAL_API std::string redactEmbeddedPaths(std::string_view text);

/// "<redacted-path>/" and the last component of a text that begins with "/" or "~"; any other text
/// as it is, on one line.
[[nodiscard]] PICTAL_API std::string redactPath(std::string_view value);

}  // namespace pictal::LogMetadataSanitizer
