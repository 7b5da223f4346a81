#include "PictalCore/Platform/Text/detail/FontFace.h"

#include "PictalCore/Platform/Text/detail/OutlinePen.h"

#include <array>
#include <span>
#include <vector>

#include <hb-ot.h>
#include <hb.h>

namespace pictal::detail {

namespace {

struct Destroy {
    void operator()(hb_blob_t* blob) const { hb_blob_destroy(blob); }
    void operator()(hb_face_t* face) const { hb_face_destroy(face); }
    void operator()(hb_buffer_t* buffer) const { hb_buffer_destroy(buffer); }
};
template <class T>
using Owned = std::unique_ptr<T, Destroy>;

std::span<const char> bytesOf(hb_blob_t* blob) {
    unsigned length = 0;
    const char* bytes = hb_blob_get_data(blob, &length);
    return {bytes, length};
}

bool hasTable(hb_face_t* face, hb_tag_t tag) {
    const Owned<hb_blob_t> table(hb_face_reference_table(face, tag));
    return hb_blob_get_length(table.get()) > 0;
}

/// A variable font of which no named instance is meant.
constexpr unsigned variableIndex = 0x8000;

void setVariations(hb_font_t* font, std::string_view list) {
    std::vector<hb_variation_t> variations;
    while (!list.empty()) {
        const std::string_view one = list.substr(0, list.find(','));
        list.remove_prefix(std::min(one.size() + 1, list.size()));
        hb_variation_t variation{};
        if (hb_variation_from_string(one.data(), static_cast<int>(one.size()), &variation))
            variations.push_back(variation);
    }
    if (!variations.empty())
        hb_font_set_variations(font, variations.data(), static_cast<unsigned>(variations.size()));
}

/// The box in the font's header, twice as large: a variable font's is that of its default, and
/// pictures and some glyphs of careless fonts stand out of it.
CGRect glyphBounds(hb_face_t* face, CGFloat unitsPerEm) {
    CGFloat left = -unitsPerEm, bottom = -unitsPerEm, right = unitsPerEm, top = unitsPerEm;
    const Owned<hb_blob_t> header(hb_face_reference_table(face, HB_TAG('h', 'e', 'a', 'd')));
    constexpr std::size_t boxAt = 36;
    const auto bytes = bytesOf(header.get());
    if (bytes.size() >= boxAt + 8) {
        const auto coordinate = [&](std::size_t i) {
            const auto high = static_cast<std::uint8_t>(bytes[boxAt + 2 * i]);
            const auto low = static_cast<std::uint8_t>(bytes[boxAt + 2 * i + 1]);
            return static_cast<CGFloat>(static_cast<std::int16_t>(high << 8 | low));
        };
        left = std::min(left, coordinate(0));
        bottom = std::min(bottom, coordinate(1));
        right = std::max(right, coordinate(2));
        top = std::max(top, coordinate(3));
    }
    return {2 * left, 2 * bottom, 2 * (right - left), 2 * (top - bottom)};
}

}  // namespace

FontFace::FontFace(Source source) : source_(std::move(source)) {}

FontFace::~FontFace() {
    hb_font_destroy(opened_.font);
}

const FontFace::Opened& FontFace::opened() const {
    std::call_once(once_, [this] { open(); });
    return opened_;
}

void FontFace::open() const {
    const Owned<hb_blob_t> file(hb_blob_create_from_file(source_.path.c_str()));
    const unsigned instance = source_.index >> 16;
    const unsigned index = instance == variableIndex ? source_.index & 0xFFFF : source_.index;
    const Owned<hb_face_t> face(hb_face_create(file.get(), index));
    hb_font_t* font = hb_font_create(face.get());
    setVariations(font, source_.variations);

    Opened& opened = opened_;
    opened.font = font;
    opened.isReadable = hb_face_get_glyph_count(face.get()) > 0;
    opened.hasPictures = hb_ot_color_has_png(face.get()) != 0;
    // Compact outlines run left around what is inside, TrueType's run right.
    opened.windsLeft = hasTable(face.get(), HB_TAG('C', 'F', 'F', ' ')) ||
                       hasTable(face.get(), HB_TAG('C', 'F', 'F', '2'));
    opened.metrics.unitsPerEm = hb_face_get_upem(face.get());
    opened.metrics.glyphBounds = glyphBounds(face.get(), opened.metrics.unitsPerEm);
    hb_font_extents_t extents{};
    if (hb_font_get_h_extents(font, &extents)) {
        opened.metrics.ascent = extents.ascender;
        opened.metrics.descent = -extents.descender;
    }
    hb_font_make_immutable(font);
}

bool FontFace::covers(char32_t scalar) const {
    return source_.covers(scalar) && opened().isReadable;
}

bool FontFace::draws(std::u16string_view text) const {
    const Owned<hb_buffer_t> buffer(hb_buffer_create());
    const auto length = static_cast<int>(text.size());
    hb_buffer_add_utf16(buffer.get(), reinterpret_cast<const std::uint16_t*>(text.data()), length,
                        0, length);
    hb_buffer_guess_segment_properties(buffer.get());
    hb_shape(font(), buffer.get(), nullptr, 0);
    unsigned count = 0;
    const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(buffer.get(), &count);
    bool anything = false;
    for (const hb_glyph_info_t& glyph : std::span(glyphs, count)) {
        if (glyph.codepoint == 0) return false;
        hb_glyph_extents_t extents{};
        const bool shows =
            picture(glyph.codepoint) ||
            (hb_font_get_glyph_extents(font(), glyph.codepoint, &extents) && extents.width != 0);
        anything = anything || shows;
    }
    return anything;
}

void FontFace::addOutline(std::uint32_t glyph, CGPoint origin, CGFloat scale, Path& path) const {
    const Opened& face = opened();
    OutlinePen pen(path, {scale, 0, 0, scale, origin.x, origin.y}, face.windsLeft);
    pen.draw(face.font, glyph);
}

std::optional<FontFace::Picture> FontFace::picture(std::uint32_t glyph) const {
    const Opened& face = opened();
    if (!face.hasPictures) return std::nullopt;
    std::shared_ptr<hb_blob_t> blob(hb_ot_color_glyph_reference_png(face.font, glyph), Destroy());
    const auto bytes = bytesOf(blob.get());
    hb_glyph_extents_t extents{};
    if (bytes.empty() || !hb_font_get_glyph_extents(face.font, glyph, &extents))
        return std::nullopt;
    // Extents are measured from the upper left corner, their height downward.
    return Picture{{bytes.data(), bytes.size()},
                   {static_cast<CGFloat>(extents.x_bearing),
                    static_cast<CGFloat>(extents.y_bearing) + extents.height,
                    static_cast<CGFloat>(extents.width), -static_cast<CGFloat>(extents.height)},
                   std::move(blob)};
}

}  // namespace pictal::detail
