#pragma once

#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"
#include "PictalCore/Platform/ImageIO/detail/PNGFile.h"

namespace pictal::detail {

/// What a file says its numbers mean. A profile counts before the sRGB mark, and that before gamma
/// and chromaticities; what cannot be used counts as absent.
struct PNGColor {
    /// The space of the pixels that are read.
    CGColorSpace space;
    /// A grey file's profile, through which its levels go to sRGB; empty: red = green = blue.
    std::vector<std::byte> greyProfile;
    /// Which chunk says it.
    enum class Source { nothing, codingPoints, profile, standardRGB, measurements };
    Source source = Source::nothing;
    /// As `PNG::Info::unusedColor`.
    std::string unused;

    [[nodiscard]] static PNGColor of(const PNGFile& file);
    /// As `PNG::Info::colorSpace`, of the same file.
    [[nodiscard]] std::string description(const PNGFile& file) const;
};

}  // namespace pictal::detail
