#include "PictalCore/Platform/Text/detail/Emoji.h"

#include "PictalCore/Platform/Text/detail/GraphemeText.h"

#include <unicode/uchar.h>

namespace pictal::detail {

Presentation presentation(std::u16string_view character) {
    constexpr char32_t textSelector = 0xFE0E, emojiSelector = 0xFE0F, keycap = 0x20E3;
    if (character.size() == 1 && character.front() < 0x80) return Presentation::usual;

    const auto is = [](char32_t scalar, UProperty property) {
        return u_hasBinaryProperty(static_cast<UChar32>(scalar), property) != 0;
    };
    std::size_t position = 0;
    const char32_t first = nextScalar(character, position);
    if (!is(first, UCHAR_EMOJI)) return Presentation::usual;
    Presentation result =
        is(first, UCHAR_EMOJI_PRESENTATION) ? Presentation::emoji : Presentation::usual;
    while (position < character.size()) {
        const char32_t scalar = nextScalar(character, position);
        if (scalar == textSelector) return Presentation::text;
        // A second picture behind a joiner, a skin colour, the other half of a flag.
        if (scalar == emojiSelector || scalar == keycap || is(scalar, UCHAR_EMOJI))
            result = Presentation::emoji;
    }
    return result;
}

}  // namespace pictal::detail
