#include "PictalCore/Support/LogMetadataSanitizer.h"

#include "PictalCore/Platform/Foundation/Unicode.h"

#include <algorithm>
#include <array>

namespace pictal::LogMetadataSanitizer {

namespace {

constexpr std::array<std::string_view, 7> roots{
    "/Users", "/Volumes", "/Applications", "/private", "/var", "/tmp", "~/"};

std::string flattened(std::string_view text) {
    std::string result(text);
    std::ranges::replace_if(
        result, [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return result;
}

std::string capped(std::string text, std::int64_t maxLength) {
    const std::size_t kept = Unicode::prefix(text, maxLength).size();
    if (kept < text.size()) text.replace(kept, std::string::npos, "...");
    return text;
}

/// @param path  not empty
std::string_view lastComponent(std::string_view path) {
    const std::size_t last = path.find_last_not_of('/');
    if (last == std::string_view::npos) return "/";
    path = path.substr(0, last + 1);
    return path.substr(path.rfind('/') + 1);
}

bool containsAnyOf(std::string_view text, std::initializer_list<std::string_view> words) {
    return std::ranges::any_of(words, [&](std::string_view word) { return text.contains(word); });
}

}  // namespace

std::string sanitize(std::string_view value, std::int64_t maxLength) {
    return capped(flattened(value), maxLength);
}

std::string sanitize(std::string_view value, std::string_view key, std::int64_t maxLength) {
    if (isSensitiveFreeTextKey(key)) return "<redacted-metadata>";
    return isSensitivePathKey(key) ? capped(redactEmbeddedPaths(value), maxLength)
                                   : sanitize(value, maxLength);
}

std::string sanitizeErrorDescription(std::string_view description, std::int64_t maxLength) {
    return capped(redactEmbeddedPaths(description), maxLength);
}

bool isSensitiveFreeTextKey(std::string_view key) {
    const std::string name = Unicode::lowercased(key);
    return name == "title" || name == "owner" || name == "body" ||
           containsAnyOf(name, {"windowtitle", "windowname", "ownername", "applicationname"});
}

bool isSensitivePathKey(std::string_view key) {
    return containsAnyOf(Unicode::lowercased(key),
                         {"path", "directory", "executable", "bundle", "file", "url"});
}

std::string redactEmbeddedPaths(std::string_view text) {
    const std::string line = flattened(text);
    std::string result;
    result.reserve(line.size());
    std::string_view rest = line;
    while (!rest.empty()) {
        const bool isPath = std::ranges::any_of(
            roots, [&](std::string_view root) { return rest.starts_with(root); });
        // A text that is no path goes on at least to the next byte that may begin one.
        const std::size_t end = isPath ? rest.find_first_of(",;") : rest.find_first_of("/~", 1);
        const std::string_view piece = rest.substr(0, end);
        if (isPath)
            result += redactPath(piece);
        else
            result += piece;
        rest.remove_prefix(piece.size());
    }
    return result;
}

std::string redactPath(std::string_view value) {
    std::string path = flattened(value);
    if (!path.starts_with('/') && !path.starts_with('~')) return path;
    std::string result = "<redacted-path>/";
    return result += lastComponent(path);
}

}  // namespace pictal::LogMetadataSanitizer
