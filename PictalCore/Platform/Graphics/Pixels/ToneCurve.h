#pragma once

namespace pictal::detail {

/// How a component becomes proportional to light.
struct ToneCurve {
    enum class Kind : unsigned char {
        standardRGB,  ///< of sRGB (IEC 61966-2-1)
        power,        ///< the component raised to `exponent`
        video,        ///< of HDTV cameras (ITU-R BT.709), which other video standards share
    };
    Kind kind = Kind::standardRGB;
    double exponent = 1;

    [[nodiscard]] static constexpr ToneCurve power(double exponent) {
        return {Kind::power, exponent};
    }
};

}  // namespace pictal::detail
