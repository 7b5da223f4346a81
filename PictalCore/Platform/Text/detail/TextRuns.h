#pragma once

#include "PictalCore/Platform/Text/detail/FontSet.h"
#include "PictalCore/Platform/Text/detail/GraphemeText.h"

#include <cstdint>
#include <vector>

namespace pictal::detail {

/// Characters side by side that are set together: one face, one script, one direction.
struct TextRun {
    /// In UTF-16 units of the text.
    std::int32_t start = 0;
    std::int32_t length = 0;
    const FontFace* face = nullptr;
    /// An ISO 15924 code, such as "Arab", its first letter in the highest byte.
    std::uint32_t script = 0;
    bool rightToLeft = false;
};

/// The runs of a line from left to right. Characters that no font shows are in the interface
/// font's, which there has to be.
[[nodiscard]] std::vector<TextRun> runsInVisualOrder(const GraphemeText& text,
                                                     const FontSet& fonts);

/// The face of each character; null where no font shows it.
[[nodiscard]] std::vector<const FontFace*> facesOf(const GraphemeText& text, const FontSet& fonts);

}  // namespace pictal::detail
