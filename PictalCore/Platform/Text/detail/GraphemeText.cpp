#include "PictalCore/Platform/Text/detail/GraphemeText.h"

#include "PictalCore/Platform/Foundation/Unicode.h"

#include <algorithm>
#include <memory>
#include <new>

#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

namespace pictal::detail {

namespace {

bool becomesSpace(char32_t scalar) {
    return (U_GET_GC_MASK(static_cast<UChar32>(scalar)) &
            (U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK)) != 0;
}

/// Up to so many scalars, a line break of two counting as one.
std::u16string cleaned(std::string_view text, std::size_t maximum) {
    std::u16string units;
    units.reserve(std::min(text.size(), maximum));
    char32_t before = 0;
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size() && count < maximum;) {
        const char32_t scalar = Unicode::nextScalar(text, i);
        const bool breakGoesOn = scalar == U'\n' && before == U'\r';
        before = scalar;
        if (breakGoesOn) continue;
        ++count;
        if (becomesSpace(scalar)) {
            units += u' ';
        } else if (scalar > 0xFFFF) {
            units += static_cast<char16_t>(U16_LEAD(scalar));
            units += static_cast<char16_t>(U16_TRAIL(scalar));
        } else {
            units += static_cast<char16_t>(scalar);
        }
    }
    return units;
}

struct Close {
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};

std::vector<std::int32_t> characterEnds(const std::u16string& units) {
    std::vector<std::int32_t> ends;
    if (std::ranges::all_of(units, [](char16_t unit) { return unit < 0x80; })) {
        for (std::size_t i = 1; i <= units.size(); ++i)
            ends.push_back(static_cast<std::int32_t>(i));
        return ends;
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UBreakIterator, Close> characters(ubrk_open(
        UBRK_CHARACTER, "", units.data(), static_cast<std::int32_t>(units.size()), &status));
    if (U_FAILURE(status)) throw std::bad_alloc();  // nothing else can fail here
    for (std::int32_t end = ubrk_next(characters.get()); end != UBRK_DONE;
         end = ubrk_next(characters.get()))
        ends.push_back(end);
    return ends;
}

}  // namespace

GraphemeText::GraphemeText(std::string_view text, std::size_t maximumScalars)
    // One more shows whether the last character goes on.
    : units(cleaned(text, maximumScalars + 1)), ends(characterEnds(units)) {
    const auto length = static_cast<std::int32_t>(units.size());
    if (u_countChar32(units.data(), length) <= static_cast<std::int32_t>(maximumScalars)) return;
    ends.pop_back();
    units.resize(static_cast<std::size_t>(ends.empty() ? 0 : ends.back()));
}

char32_t nextScalar(std::u16string_view text, std::size_t& position) {
    UChar32 scalar = 0;
    U16_NEXT(text.data(), position, text.size(), scalar);  // NOLINT(bugprone-inc-dec-in-conditions)
    return static_cast<char32_t>(scalar);
}

}  // namespace pictal::detail
