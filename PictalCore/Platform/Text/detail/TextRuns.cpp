#include "PictalCore/Platform/Text/detail/TextRuns.h"

#include "PictalCore/Platform/Text/detail/Scripts.h"

#include <algorithm>
#include <memory>
#include <new>
#include <unordered_map>

#include <unicode/ubidi.h>

namespace pictal::detail {

namespace {

struct Close {
    void operator()(UBiDi* bidi) const { ubidi_close(bidi); }
};

/// The level of each unit of the text: odd ones run from right to left.
std::vector<UBiDiLevel> bidiLevels(const std::u16string& units) {
    // Below the first Hebrew letter nothing runs to the left, and nothing asks for it.
    if (std::ranges::all_of(units, [](char16_t unit) { return unit < 0x590; }))
        return std::vector<UBiDiLevel>(units.size(), 0);
    const auto length = static_cast<std::int32_t>(units.size());
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UBiDi, Close> bidi(ubidi_openSized(length, 0, &status));
    if (U_FAILURE(status)) throw std::bad_alloc();
    ubidi_setPara(bidi.get(), units.data(), length, UBIDI_DEFAULT_LTR, nullptr, &status);
    const UBiDiLevel* levels = ubidi_getLevels(bidi.get(), &status);
    if (U_FAILURE(status)) throw std::bad_alloc();
    return {levels, levels + length};
}

}  // namespace

std::vector<const FontFace*> facesOf(const GraphemeText& text, const FontSet& fonts) {
    std::vector<const FontFace*> faces;
    faces.reserve(text.size());
    // A long text has few different characters, and to find that no font has one takes long.
    std::unordered_map<std::u16string_view, const FontFace*> known;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto [entry, isNew] = known.try_emplace(text[i], nullptr);
        if (isNew) entry->second = fonts.face(text[i]);
        faces.push_back(entry->second);
    }
    return faces;
}

std::vector<TextRun> runsInVisualOrder(const GraphemeText& text, const FontSet& fonts) {
    const std::vector<UBiDiLevel> levels = bidiLevels(text.units);
    const std::vector<std::uint32_t> scripts = scriptsOf(text);
    const std::vector<const FontFace*> faces = facesOf(text, fonts);

    std::vector<TextRun> runs;
    std::vector<UBiDiLevel> runLevels;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::int32_t start = text.start(i);
        const std::int32_t length = text.ends[i] - start;
        const UBiDiLevel level = levels[static_cast<std::size_t>(start)];
        const FontFace* face = faces[i] ? faces[i] : fonts.first();
        if (!runs.empty() && runs.back().face == face && runs.back().script == scripts[i] &&
            runLevels.back() == level) {
            runs.back().length += length;
        } else {
            runs.push_back({start, length, face, scripts[i], level % 2 == 1});
            runLevels.push_back(level);
        }
    }

    std::vector<std::int32_t> order(runs.size());
    ubidi_reorderVisual(runLevels.data(), static_cast<std::int32_t>(runs.size()), order.data());
    std::vector<TextRun> visual;
    visual.reserve(runs.size());
    for (const std::int32_t index : order)
        visual.push_back(runs[static_cast<std::size_t>(index)]);
    return visual;
}

}  // namespace pictal::detail
