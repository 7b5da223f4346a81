#include "PictalCore/Support/SafeFileNamer.h"

#include "PictalCore/Platform/Foundation/Unicode.h"

namespace pictal::SafeFileNamer {

namespace {

std::string cleaned(std::string_view raw) {
    std::string result;
    bool separated = false;
    for (std::size_t i = 0; i < raw.size();) {
        const std::size_t start = i;
        const char32_t scalar = Unicode::nextScalar(raw, i);
        if (scalar != U'_' && !Unicode::isAlphanumeric(scalar)) {
            separated = true;
            continue;
        }
        if (separated && !result.empty()) result += '-';
        separated = false;
        result += raw.substr(start, i - start);
    }
    return result;
}

std::string_view trimmingSeparators(std::string_view text) {
    const std::size_t start = text.find_first_not_of("-_");
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of("-_") + 1 - start);
}

}  // namespace

std::string stem(std::string_view raw, std::string_view fallback, std::int64_t maxLength) {
    std::string result = cleaned(raw);
    if (result.empty()) result = fallback.empty() ? "file" : fallback;
    const std::string_view kept = Unicode::prefix(result, maxLength);
    return kept.size() == result.size() ? result : std::string(trimmingSeparators(kept));
}

}  // namespace pictal::SafeFileNamer
