#pragma once

#include "PictalCore/Platform/Foundation/CGGeometry.h"
#include "PictalCore/Platform/Graphics/Path.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

struct hb_blob_t;
struct hb_font_t;

namespace pictal::detail {

/// A face of a font file, for any number of threads. Its file is opened when it is first needed:
/// most faces of a system never are. Lengths are in units of the face, `unitsPerEm` to its size.
class FontFace {
  public:
    struct Source {
        std::string path;
        /// The face within the file, and in the upper half its named instance.
        unsigned index = 0;
        /// Where a variable font stands: "wght=700,wdth=100".
        std::string variations;
        /// Whether it has colours, in whatever form.
        bool hasColor = false;
        /// Which scalars the face has glyphs for.
        std::function<bool(char32_t)> covers;
    };
    struct Metrics {
        CGFloat unitsPerEm = 1;
        CGFloat ascent = 0;
        CGFloat descent = 0;
        /// Holds every glyph, measured from its origin.
        CGRect glyphBounds;
    };

    explicit FontFace(Source source);
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;
    ~FontFace();

    /// Whether the face can be read and has a glyph for the scalar.
    [[nodiscard]] bool covers(char32_t scalar) const;
    [[nodiscard]] bool hasColor() const { return source_.hasColor; }
    /// Whether what the text becomes in this face can be drawn: outlines, or pictures that are PNG.
    [[nodiscard]] bool draws(std::u16string_view text) const;

    /// What HarfBuzz shapes with; an empty font when the file cannot be read.
    [[nodiscard]] hb_font_t* font() const { return opened().font; }
    [[nodiscard]] const Metrics& metrics() const { return opened().metrics; }

    /// Adds the outline at a place and a scale. The contours of all faces wind the same way round.
    void addOutline(std::uint32_t glyph, CGPoint origin, CGFloat scale, Path& path) const;

    struct Picture {
        std::string_view png;
        /// Measured from the glyph's origin.
        CGRect rect;
        std::shared_ptr<hb_blob_t> owner;
    };
    [[nodiscard]] std::optional<Picture> picture(std::uint32_t glyph) const;

  private:
    struct Opened {
        hb_font_t* font = nullptr;
        Metrics metrics;
        bool isReadable = false;
        bool hasPictures = false;
        bool windsLeft = false;
    };
    const Opened& opened() const;
    void open() const;

    Source source_;
    mutable std::once_flag once_;
    mutable Opened opened_;
};

}  // namespace pictal::detail
