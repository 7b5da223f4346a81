#pragma once

#include "PictalCore/Platform/Graphics/Pixels/RGBNumbers.h"
#include "PictalCore/Platform/ImageIO/detail/PNGFile.h"

#include <optional>
#include <string_view>

namespace pictal::detail {

/// The colours of a cICP chunk, by the code points of ITU-T H.273.
struct CodingPoints {
    int primaries, transfer, matrix, fullRange;

    explicit CodingPoints(PNGFile::Bytes chunk)
        : primaries(std::to_integer<int>(chunk[0])),
          transfer(std::to_integer<int>(chunk[1])),
          matrix(std::to_integer<int>(chunk[2])),
          fullRange(std::to_integer<int>(chunk[3])) {}

    [[nodiscard]] std::optional<Chromaticities> chromaticities() const {
        switch (primaries) {
            case 1:
                return standardRGB.chromaticities;
            case 9:  // ITU-R BT.2020
                return Chromaticities{
                    .red = {0.708, 0.292}, .green = {0.170, 0.797}, .blue = {0.131, 0.046}};
            case 12:
                return displayP3.chromaticities;
            default:
                return std::nullopt;
        }
    }
    [[nodiscard]] std::optional<ToneCurve> curve() const {
        switch (transfer) {
            case 1:
            case 6:
            case 14:
            case 15:
                return ToneCurve{.kind = ToneCurve::Kind::video};
            case 8:
                return ToneCurve::power(1);
            case 13:
                return ToneCurve{};
            default:  // of which 16 and 18 are for brighter light than a picture of ours holds
                return std::nullopt;
        }
    }
    [[nodiscard]] std::string_view nameOfUnused() const {
        return transfer == 16   ? "cICP with PQ"
               : transfer == 18 ? "cICP with HLG"
                                : "an unknown cICP";
    }
};

}  // namespace pictal::detail
