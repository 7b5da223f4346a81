#include "PictalCore/Platform/Text/detail/FontSet.h"

#include "PictalCore/Platform/Text/detail/Emoji.h"
#include "PictalCore/Platform/Text/detail/GraphemeText.h"

#include <array>
#include <memory>
#include <span>

#include <fontconfig/fontconfig.h>
#include <unicode/uchar.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define PICTAL_LEAKS_ARE_FOUND
#include <sanitizer/lsan_interface.h>
#endif
#endif

namespace pictal::detail {

namespace {

struct Destroy {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
    void operator()(FcCharSet* set) const { FcCharSetDestroy(set); }
};
template <class T>
using Owned = std::unique_ptr<T, Destroy>;

/// fontconfig loses a few hundred bytes of the files that it parses, once a process; those leaks
/// are not ours, and hide none of ours.
FcConfig* loadedConfiguration() {
#ifdef PICTAL_LEAKS_ARE_FOUND
    const __lsan::ScopedDisabler fontconfigs;
#endif
    return FcInitLoadConfigAndFonts();
}

/// Of this library alone: what a program does with its own configuration changes no text.
FcConfig* configuration() {
    static FcConfig* const loaded = loadedConfiguration();
    return loaded;
}

const FcChar8* bytes(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}

std::string text(const FcPattern* pattern, const char* object) {
    FcChar8* value = nullptr;
    if (FcPatternGetString(pattern, object, 0, &value) != FcResultMatch) return {};
    return reinterpret_cast<const char*>(value);
}

bool flag(const FcPattern* pattern, const char* object) {
    FcBool value = FcFalse;
    return FcPatternGetBool(pattern, object, 0, &value) == FcResultMatch && value == FcTrue;
}

int number(const FcPattern* pattern, const char* object) {
    int value = 0;
    return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch ? value : 0;
}

Owned<FcPattern> request(std::span<const char* const> families, FontWeight weight) {
    Owned<FcPattern> pattern(FcPatternCreate());
    for (const char* family : families)
        FcPatternAddString(pattern.get(), FC_FAMILY, bytes(family));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT,
                        weight == FontWeight::bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcConfigSubstitute(configuration(), pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

FontFace::Source source(FcPattern* font, FcPattern* wanted) {
    FontFace::Source source;
    source.path = text(font, FC_FILE);
    source.index = static_cast<unsigned>(number(font, FC_INDEX));
    source.hasColor = flag(font, FC_COLOR);
    if (flag(font, FC_VARIABLE)) {
        const Owned<FcPattern> prepared(FcFontRenderPrepare(configuration(), wanted, font));
        source.variations = text(prepared.get(), FC_FONT_VARIATIONS);
    }
    FcCharSet* set = nullptr;
    if (FcPatternGetCharSet(font, FC_CHARSET, 0, &set) == FcResultMatch)
        source.covers = [kept = std::shared_ptr<FcCharSet>(FcCharSetCopy(set), Destroy())](
                            char32_t scalar) { return FcCharSetHasChar(kept.get(), scalar) != 0; };
    else
        source.covers = [](char32_t) { return false; };
    return source;
}

/// Faces that HarfBuzz reads; not the old bitmap and printer formats.
bool isOpenType(const FcPattern* font) {
    const std::string format = text(font, FC_FONTFORMAT);
    return format == "TrueType" || format == "CFF";
}

template <class Accepts>
void addSorted(FcPattern* wanted, const Accepts& accepts, std::deque<FontFace>& faces) {
    FcResult result = FcResultMatch;
    const Owned<FcFontSet> sorted(FcFontSort(configuration(), wanted, FcFalse, nullptr, &result));
    if (!sorted) return;
    for (FcPattern* font : std::span(sorted->fonts, static_cast<std::size_t>(sorted->nfont)))
        if (isOpenType(font) && accepts(font)) faces.emplace_back(source(font, wanted));
}

/// fontconfig tells Chinese apart by country, OpenType by how it is written.
std::string writtenLanguage(const std::string& language) {
    if (!language.starts_with("zh")) return language;
    for (const char* traditional : {"zh-tw", "zh-hk", "zh-mo"})
        if (language == traditional) return "zh-hant" + language.substr(2);
    return "zh-hans";
}

}  // namespace

FontSet::FontSet(FontWeight weight) {
    if (!configuration()) return;
    // Inter by its name: what a system calls its interface font is often something else.
    constexpr std::array interface{"Inter", "system-ui",   "Helvetica",
                                   "Arial", "DejaVu Sans", "sans-serif"};
    const Owned<FcPattern> wanted = request(interface, weight);
    language_ = writtenLanguage(text(wanted.get(), FC_LANG));
    addSorted(wanted.get(), [](const FcPattern* font) { return flag(font, FC_OUTLINE); }, faces_);
    const Owned<FcPattern> emoji = request(std::array{"emoji"}, FontWeight::regular);
    addSorted(emoji.get(), [](const FcPattern* font) { return flag(font, FC_COLOR); }, colorFaces_);
}

const FontSet& FontSet::shared(FontWeight weight) {
    // Never taken down: a text may be drawn while the process ends.
    if (weight == FontWeight::bold) {
        static const FontSet& bold = *new FontSet(FontWeight::bold);
        return bold;
    }
    static const FontSet& regular = *new FontSet(FontWeight::regular);
    return regular;
}

const FontFace* FontSet::face(std::u16string_view character) const {
    switch (presentation(character)) {
        case Presentation::text:
            return outlineFace(character);
        case Presentation::emoji:
            if (const FontFace* face = colorFace(character)) return face;
            return outlineFace(character);
        case Presentation::usual:
            break;
    }
    if (const FontFace* face = outlineFace(character)) return face;
    return colorFace(character);
}

const FontFace* FontSet::outlineFace(std::u16string_view character) const {
    for (const FontFace& face : faces_)
        if (covers(face, character) && (!face.hasColor() || face.draws(character))) return &face;
    return nullptr;
}

const FontFace* FontSet::colorFace(std::u16string_view character) const {
    for (const FontFace& face : colorFaces_)
        if (covers(face, character) && face.draws(character)) return &face;
    return nullptr;
}

bool covers(const FontFace& face, std::u16string_view character) {
    for (std::size_t i = 0; i < character.size();) {
        const char32_t scalar = nextScalar(character, i);
        const bool matters =
            !u_hasBinaryProperty(static_cast<UChar32>(scalar), UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
        if (matters && !face.covers(scalar)) return false;
    }
    return true;
}

bool isSeen(char32_t scalar) {
    const auto value = static_cast<UChar32>(scalar);
    return !u_isUWhiteSpace(value) &&
           !u_hasBinaryProperty(value, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
}

}  // namespace pictal::detail
