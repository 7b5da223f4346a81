#pragma once

#include "PictalCore/Support/LogMetadataSanitizer.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace pictal {

inline constexpr std::array<std::string_view, 7> redactedRoots{
    "/Users", "/Volumes", "/Applications", "/private", "/var", "/tmp", "~/"};

/// The law of redaction: behind a placeholder stands one path component, and nowhere else is a root
/// left. A placeholder's own slash counts for neither.
///
/// @param text  without "<", so that each placeholder is the redaction's
/// @return what got through, or nothing
inline std::string survivingPath(std::string_view text) {
    constexpr std::string_view placeholder = "<redacted-path>/";
    std::string rest = LogMetadataSanitizer::redactEmbeddedPaths(text);
    std::string shortened;
    for (std::size_t at; (at = rest.find(placeholder)) != std::string::npos;) {
        shortened.append(rest, 0, at).append("|");
        rest.erase(0, at + placeholder.size());
        const std::string component = rest.substr(0, rest.find_first_of(",;"));
        if (component.find('/') != std::string::npos) return component;
    }
    shortened += rest;
    for (const std::string_view root : redactedRoots)
        if (const std::size_t at = shortened.find(root); at != std::string::npos)
            return shortened.substr(at);
    return {};
}

}  // namespace pictal
