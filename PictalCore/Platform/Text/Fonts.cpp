#include "PictalCore/Platform/Text/Fonts.h"

#include "PictalCore/Platform/Text/TextLine.h"
#include "PictalCore/Platform/Text/detail/TextRuns.h"

#include <algorithm>

namespace pictal::Fonts {

using namespace detail;

bool areInstalled() {
    return FontSet::shared(FontWeight::regular).first() != nullptr;
}

std::vector<char32_t> charactersWithoutGlyph(std::string_view text, FontWeight weight) {
    const FontSet& fonts = FontSet::shared(weight);
    const GraphemeText characters(text, TextLine::maximumScalars);
    const std::vector<const FontFace*> faces = facesOf(characters, fonts);
    std::vector<char32_t> missing;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (faces[i]) continue;
        for (std::size_t position = 0; position < characters[i].size();) {
            const char32_t scalar = nextScalar(characters[i], position);
            const bool shows = !isSeen(scalar) || (fonts.first() && fonts.first()->covers(scalar));
            if (!shows && std::ranges::find(missing, scalar) == missing.end())
                missing.push_back(scalar);
        }
    }
    return missing;
}

}  // namespace pictal::Fonts
