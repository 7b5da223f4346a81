#include "PictalCore/Platform/Text/TextLine.h"

#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Platform/Text/detail/TextRuns.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <span>
#include <utility>

#include <hb.h>

namespace pictal {

using detail::FontFace;
using detail::FontSet;

struct TextLine::Glyphs {
    struct Glyph {
        const FontFace* face;
        std::uint32_t index;
        CGPoint origin;
    };
    CGFloat size = 0;
    std::vector<Glyph> all;

    [[nodiscard]] CGFloat scale(const FontFace& face) const {
        return size / face.metrics().unitsPerEm;
    }

    /// Calls for each glyph that may show within the rectangle.
    template <class Visit>
    void forEachVisible(const CGRect& visible, const Visit& visit) const {
        for (const Glyph& glyph : all) {
            const CGRect& bounds = glyph.face->metrics().glyphBounds;
            const CGFloat s = scale(*glyph.face);
            const bool shows = glyph.origin.x + bounds.minX() * s <= visible.maxX() &&
                               glyph.origin.x + bounds.maxX() * s >= visible.minX() &&
                               glyph.origin.y + bounds.minY() * s <= visible.maxY() &&
                               glyph.origin.y + bounds.maxY() * s >= visible.minY();
            if (shows) visit(glyph, s);
        }
    }
};

namespace {

CGRect scaled(const CGRect& rect, CGFloat scale, CGPoint origin) {
    return {origin.x + rect.minX() * scale, origin.y + rect.minY() * scale, rect.width() * scale,
            rect.height() * scale};
}

constexpr CGRect everywhere{
    -std::numeric_limits<CGFloat>::max() / 2, -std::numeric_limits<CGFloat>::max() / 2,
    std::numeric_limits<CGFloat>::max(), std::numeric_limits<CGFloat>::max()};

/// A buffer that shapes the runs of one text.
class Shaper {
  public:
    Shaper(const std::u16string& units, const std::string& language)
        : units_(units), language_(hb_language_from_string(language.c_str(), -1)) {}
    Shaper(const Shaper&) = delete;
    Shaper& operator=(const Shaper&) = delete;
    ~Shaper() { hb_buffer_destroy(buffer_); }

    /// Calls for each glyph from left to right with its position; units of the face.
    template <class Visit>
    void shape(const detail::TextRun& run, const Visit& visit) {
        hb_buffer_clear_contents(buffer_);
        hb_buffer_add_utf16(buffer_, reinterpret_cast<const std::uint16_t*>(units_.data()),
                            static_cast<int>(units_.size()), static_cast<unsigned>(run.start),
                            run.length);
        hb_buffer_set_direction(buffer_, run.rightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
        hb_buffer_set_script(buffer_, hb_script_from_iso15924_tag(run.script));
        hb_buffer_set_language(buffer_, language_);
        hb_shape(run.face->font(), buffer_, nullptr, 0);
        unsigned count = 0;
        const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer_, &count);
        const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer_, nullptr);
        for (unsigned i = 0; i < count; ++i)
            visit(infos[i].codepoint, positions[i]);
    }

  private:
    hb_buffer_t* buffer_ = hb_buffer_create();
    const std::u16string& units_;
    hb_language_t language_;
};

/// A font's pictures are small; one that claims to be huge is damaged.
constexpr PNG::ReadLimits glyphLimits{.maximumPixels = 1 << 22};

std::optional<CGImage> decoded(std::string_view png) {
    auto image = PNG::read(std::as_bytes(std::span(png)), glyphLimits);
    if (!image) return std::nullopt;
    return *std::move(image);
}

}  // namespace

TextLine::TextLine(TextLine&&) noexcept = default;
TextLine& TextLine::operator=(TextLine&&) noexcept = default;
TextLine::~TextLine() = default;

TextLine::TextLine(std::string_view text, CGFloat size, FontWeight weight) {
    auto glyphs = std::make_unique<Glyphs>();
    const FontSet& fonts = FontSet::shared(weight);
    if (fonts.first() && size > 0 && std::isfinite(size)) {
        glyphs->size = size;
        const detail::GraphemeText characters(text, maximumScalars);
        Shaper shaper(characters.units, fonts.language());
        const auto runs = detail::runsInVisualOrder(characters, fonts);
        for (const detail::TextRun& run : runs) {
            const CGFloat scale = glyphs->scale(*run.face);
            ascent_ = std::max(ascent_, run.face->metrics().ascent * scale);
            descent_ = std::max(descent_, run.face->metrics().descent * scale);
            shaper.shape(run, [&](std::uint32_t glyph, const hb_glyph_position_t& position) {
                glyphs->all.push_back(
                    {run.face,
                     glyph,
                     {width_ + position.x_offset * scale, position.y_offset * scale}});
                width_ += position.x_advance * scale;
            });
        }
        if (runs.empty()) {
            const FontFace& first = *fonts.first();
            ascent_ = first.metrics().ascent * glyphs->scale(first);
            descent_ = first.metrics().descent * glyphs->scale(first);
        }
    }
    glyphs_ = std::move(glyphs);
}

Path TextLine::outlines(const CGRect& visible) const {
    Path path;
    glyphs_->forEachVisible(visible, [&](const Glyphs::Glyph& glyph, CGFloat scale) {
        glyph.face->addOutline(glyph.index, glyph.origin, scale, path);
    });
    return path;
}

Path TextLine::outlines() const {
    return outlines(everywhere);
}

std::vector<TextLine::ColorGlyph> TextLine::colorGlyphs(const CGRect& visible) const {
    std::vector<ColorGlyph> result;
    std::map<std::pair<const FontFace*, std::uint32_t>, std::optional<CGImage>> images;
    glyphs_->forEachVisible(visible, [&](const Glyphs::Glyph& glyph, CGFloat scale) {
        const auto picture = glyph.face->picture(glyph.index);
        if (!picture) return;
        const auto [entry, isNew] = images.try_emplace({glyph.face, glyph.index});
        if (isNew) entry->second = decoded(picture->png);
        if (entry->second)
            result.push_back({*entry->second, scaled(picture->rect, scale, glyph.origin)});
    });
    return result;
}

}  // namespace pictal
