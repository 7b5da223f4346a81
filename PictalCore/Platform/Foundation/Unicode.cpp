#include "PictalCore/Platform/Foundation/Unicode.h"

#include <algorithm>
#include <cstdint>

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace pictal::Unicode {

namespace {

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

icu::UnicodeString utf16(std::string_view text) {
    return icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

std::string utf8(const icu::UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

}  // namespace

std::string repaired(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int64_t>(text.size());
    for (std::int64_t i = 0; i < length;) {
        const std::int64_t start = i;
        UChar32 scalar = 0;
        U8_NEXT(bytes, i, length, scalar);
        if (scalar < 0)
            result += "\xEF\xBF\xBD";
        else
            result.append(text, static_cast<std::size_t>(start),
                          static_cast<std::size_t>(i - start));
    }
    return result;
}

std::string_view trimmingWhiteSpace(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    auto end = static_cast<std::int64_t>(text.size());
    std::int64_t start = 0;
    for (std::int64_t next = 0; start < end; start = next) {
        UChar32 scalar = 0;
        U8_NEXT(bytes, next, end, scalar);
        if (scalar < 0 || !u_isUWhiteSpace(scalar)) break;
    }
    for (std::int64_t previous = end; end > start; end = previous) {
        // ICU steps back with 32-bit positions, so it sees the last four bytes only.
        const std::int64_t base = std::max(start, end - 4);
        auto position = static_cast<std::int32_t>(end - base);
        UChar32 scalar = 0;
        U8_PREV(bytes + base, 0, position, scalar);
        previous = base + position;
        if (scalar < 0 || !u_isUWhiteSpace(scalar)) break;
    }
    return text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
}

std::string canonicalForm(std::string_view text) {
    if (isASCII(text)) return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
    icu::UnicodeString decomposed = nfd->normalize(utf16(text), status);
    return U_SUCCESS(status) ? utf8(decomposed) : repaired(text);
}

bool canonicallyEquivalent(std::string_view a, std::string_view b) {
    return a == b || canonicalForm(a) == canonicalForm(b);
}

std::string lowercased(std::string_view text) {
    icu::UnicodeString folded = utf16(text);
    folded.toLower(icu::Locale::getRoot());
    return utf8(folded);
}

}  // namespace pictal::Unicode
