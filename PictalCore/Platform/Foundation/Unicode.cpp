#include "PictalCore/Platform/Foundation/Unicode.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
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

/// The ends of characters as people count them, in a text that must stay where it is.
class Characters {
  public:
    explicit Characters(std::string_view text) {
        UErrorCode status = U_ZERO_ERROR;
        units_.adoptInstead(
            utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
        iterator_.reset(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        if (U_SUCCESS(status)) iterator_->setText(units_.getAlias(), status);
        if (U_FAILURE(status)) throw std::bad_alloc();  // nothing else can fail here
    }
    icu::BreakIterator* operator->() const { return iterator_.get(); }

  private:
    icu::LocalUTextPointer units_;
    std::unique_ptr<icu::BreakIterator> iterator_;
};

/// The iterator counts in 32 bits.
std::string_view countable(std::string_view text) {
    return text.substr(0, std::numeric_limits<std::int32_t>::max());
}

}  // namespace

char32_t nextScalar(std::string_view text, std::size_t& position) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int64_t>(text.size());
    auto next = static_cast<std::int64_t>(position);
    UChar32 scalar = 0;
    U8_NEXT_OR_FFFD(bytes, next, length, scalar);  // NOLINT(bugprone-inc-dec-in-conditions)
    position = static_cast<std::size_t>(next);
    return static_cast<char32_t>(scalar);
}

std::string repaired(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t start = i;
        if (nextScalar(text, i) == U'\uFFFD')
            result += "\uFFFD";
        else
            result += text.substr(start, i - start);
    }
    return result;
}

std::string_view trimmingWhiteSpace(std::string_view text) {
    std::size_t start = text.size();
    std::size_t end = start;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t scalarStart = i;
        if (u_isUWhiteSpace(static_cast<UChar32>(nextScalar(text, i)))) continue;
        start = std::min(start, scalarStart);
        end = i;
    }
    return text.substr(start, end - start);
}

std::string canonicalForm(std::string_view text) {
    if (isASCII(text)) return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(status);
    const icu::UnicodeString decomposed = nfd->normalize(utf16(text), status);
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

bool isAlphanumeric(char32_t scalar) {
    return (U_GET_GC_MASK(static_cast<UChar32>(scalar)) &
            (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

std::string_view prefix(std::string_view text, std::int64_t count) {
    if (count <= 0) return text.substr(0, 0);
    // A character has at least one byte, so a short text is within the count.
    if (text.size() <= static_cast<std::uint64_t>(count)) return text;

    const Characters characters(countable(text));
    for (std::int64_t i = 0; i < count; ++i)
        if (characters->next() == icu::BreakIterator::DONE) return text;
    return text.substr(0, static_cast<std::size_t>(characters->current()));
}

std::string_view prefixOfBytes(std::string_view text, std::size_t size) {
    if (text.size() <= size) return text;
    const std::string_view seen = countable(text);
    auto end = static_cast<std::int32_t>(std::min(size, seen.size()));
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(seen.data());
    if (static_cast<std::size_t>(end) < seen.size()) U8_SET_CP_START(bytes, 0, end);
    const Characters characters(seen);
    const bool fits = characters->isBoundary(end) != 0;
    return text.substr(0, static_cast<std::size_t>(fits ? end : characters->preceding(end)));
}

}  // namespace pictal::Unicode
