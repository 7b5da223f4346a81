#include "PictalCore/Platform/Foundation/Unicode.h"
#include "PictalCore/Support/LogMetadataSanitizer.h"
#include "PictalCore/Support/SafeFileNamer.h"
#include "Tests/Support/Redaction.h"

#include <cstdlib>

namespace {

using namespace pictal;

void require(bool holds) {
    if (!holds) std::abort();
}

void checkRedaction(std::string text) {
    require(survivingPath(text).empty());
    const std::string line = LogMetadataSanitizer::sanitizeErrorDescription(text, 40);
    require(line.find_first_of("\t\r\n") == std::string::npos);
    require(line.size() <= Unicode::prefix(line, 43).size());
}

void checkFileName(std::string_view text, std::int64_t maxLength) {
    const std::string stem = SafeFileNamer::stem(text, "", maxLength);
    for (std::size_t i = 0; i < stem.size();) {
        const char32_t scalar = Unicode::nextScalar(stem, i);
        require(scalar == U'-' || scalar == U'_' || Unicode::isAlphanumeric(scalar));
    }
    require(!stem.starts_with('-') && !stem.ends_with('-') && !stem.contains("--"));
    require(Unicode::prefix(stem, maxLength) == stem);
    if (!stem.empty()) require(SafeFileNamer::stem(stem, "", maxLength) == stem);
}

}  // namespace

/// The first byte is a length, the rest is text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::int64_t length = data[0];
    checkFileName(text, length);
    require(Unicode::repaired(Unicode::prefix(text, length)) ==
            Unicode::prefix(Unicode::repaired(text), length));
    std::ranges::replace(text, '<', '(');
    checkRedaction(std::move(text));
    return 0;
}
