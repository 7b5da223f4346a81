#include "PictalCore/Platform/ImageIO/detail/PNGColor.h"

#include "PictalCore/Platform/ImageIO/detail/BigEndian.h"
#include "PictalCore/Platform/ImageIO/detail/CodingPoints.h"
#include "PictalCore/Platform/ImageIO/detail/ZlibStream.h"

#include <algorithm>
#include <cmath>

namespace pictal::detail {

using PNG::ColorType;

namespace {

/// A larger profile is no profile of a picture.
constexpr std::size_t maximumProfileSize = std::size_t{16} << 20;

bool isGrey(const PNGFile& file) {
    return file.header.colorType == ColorType::grey ||
           file.header.colorType == ColorType::greyAlpha;
}

/// The profile in an iCCP chunk: a name of up to 79 bytes, a zero, the method zero, a zlib stream.
std::vector<std::byte> inflatedProfile(PNGFile::Bytes chunk) {
    const auto zero = std::ranges::find(chunk, std::byte{0});
    const auto nameLength = static_cast<std::size_t>(zero - chunk.begin());
    if (nameLength < 1 || nameLength > 79 || chunk.size() < nameLength + 2 ||
        chunk[nameLength + 1] != std::byte{0})
        return {};
    const PNGFile::Bytes stream = chunk.subspan(nameLength + 2);
    for (std::size_t room = 16384; room <= maximumProfileSize; room *= 4) {
        std::vector<std::byte> profile(room);
        const Inflation result = inflate(stream, profile);
        if (result.status == Inflation::Status::roomTooSmall) continue;
        profile.resize(result.status == Inflation::Status::done ? result.made : 0);
        return profile;
    }
    return {};
}

/// Takes a profile for the file's colours.
/// @return false for one that is damaged or of another kind of colours
bool take(std::vector<std::byte> profile, const PNGFile& file, PNGColor& color) {
    if (profile.empty()) return false;
    if (isGrey(file)) {
        if (!greyLevelsInSRGB(profile, 2)) return false;
        color.space = CGColorSpace::sRGB();
        color.greyProfile = std::move(profile);
        return true;
    }
    auto space = CGColorSpace::fromICCProfile(profile);
    if (!space) return false;
    color.space = *std::move(space);
    return true;
}

void noteUnused(PNGColor& color, std::string_view what) {
    color.unused += color.unused.empty() ? "" : ", ";
    color.unused += what;
}

bool useProfile(const PNGFile& file, PNGColor& color) {
    if (file.profile.empty()) return false;
    if (!take(inflatedProfile(file.profile), file, color)) {
        noteUnused(color, "a damaged ICC profile");
        return false;
    }
    color.source = PNGColor::Source::profile;
    return true;
}

bool useCodingPoints(const PNGFile& file, PNGColor& color) {
    if (file.codingPoints.empty()) return false;
    if (file.codingPoints.size() != 4) {
        noteUnused(color, "a damaged cICP");
        return false;
    }
    const CodingPoints points(file.codingPoints);
    const auto chromaticities = points.chromaticities();
    const auto curve = points.curve();
    if (!chromaticities || !curve || points.matrix != 0 || points.fullRange != 1) {
        noteUnused(color, points.nameOfUnused());
        return false;
    }
    const bool standardCurve = curve->kind == ToneCurve::Kind::standardRGB;
    if (standardCurve && (points.primaries == 1 || isGrey(file))) {
        color.space = CGColorSpace::sRGB();
    } else if (standardCurve && points.primaries == 12) {
        color.space = CGColorSpace::displayP3();
    } else {
        auto profile =
            isGrey(file) ? makeGreyProfile(*curve) : makeRGBProfile(*chromaticities, *curve);
        if (!profile || !take(*std::move(profile), file, color)) return false;
    }
    color.source = PNGColor::Source::codingPoints;
    return true;
}

/// The gamma of the file in hundred-thousandths; 0 when it says none.
std::uint32_t gammaOf(const PNGFile& file) {
    if (file.gamma.size() != 4) return 0;
    const std::uint32_t gamma = bigEndian32(file.gamma.data());
    // From 0.01 to 100; beyond, no display ever was.
    return gamma >= 1'000 && gamma <= 10'000'000 ? gamma : 0;
}

std::optional<Chromaticities> chromaticitiesOf(const PNGFile& file) {
    if (file.chromaticities.size() != 32) return std::nullopt;
    const auto point = [&](std::size_t index) {
        const std::byte* const at = file.chromaticities.data() + index * 8;
        return Chromaticity{bigEndian32(at) / 1e5, bigEndian32(at + 4) / 1e5};
    };
    return Chromaticities{point(0), point(1), point(2), point(3)};
}

/// Within a hundredth, as files that write two decimals are.
bool areStandard(const Chromaticities& it) {
    const Chromaticities standard;
    const auto near = [](Chromaticity a, Chromaticity b) {
        return std::abs(a.x - b.x) < 0.01 && std::abs(a.y - b.y) < 0.01;
    };
    return near(it.white, standard.white) && near(it.red, standard.red) &&
           near(it.green, standard.green) && near(it.blue, standard.blue);
}

void useMeasurements(const PNGFile& file, PNGColor& color) {
    const std::uint32_t gamma = gammaOf(file);
    const auto chromaticities = isGrey(file) ? std::nullopt : chromaticitiesOf(file);
    if (gamma == 0 && !chromaticities) return;
    // 1 / 2.2 within one in a hundred is how files say sRGB.
    const bool standardCurve = gamma == 0 || (gamma >= 45'000 && gamma <= 45'910);
    const bool standardColors = !chromaticities || areStandard(*chromaticities);
    const ToneCurve curve = gamma == 0 ? ToneCurve{} : ToneCurve::power(1e5 / gamma);
    if (standardCurve && standardColors) {
        color.space = CGColorSpace::sRGB();
    } else {
        auto profile = isGrey(file)
                           ? makeGreyProfile(curve)
                           : makeRGBProfile(chromaticities.value_or(Chromaticities{}), curve);
        if (!profile || !take(*std::move(profile), file, color)) return;
    }
    color.source = PNGColor::Source::measurements;
}

std::string profileDescription(std::span<const std::byte> profile) {
    const std::string name = profileName(profile);
    return name.empty() ? "ICC profile" : "ICC profile " + name;
}

std::string measurementsDescription(const PNGFile& file) {
    const std::uint32_t gamma = gammaOf(file);
    const bool hasColors = !isGrey(file) && chromaticitiesOf(file);
    std::string number = std::to_string(gamma / 1e5);
    number.resize(number.find('.') + 5);
    return (gamma != 0 ? "gamma " + number : "") + (gamma != 0 && hasColors ? ", " : "") +
           (hasColors ? "chromaticities" : "");
}

}  // namespace

PNGColor PNGColor::of(const PNGFile& file) {
    PNGColor color;
    if (useCodingPoints(file, color) || useProfile(file, color)) return color;
    if (file.standardRGB.size() == 1) {
        color.space = CGColorSpace::sRGB();
        color.source = Source::standardRGB;
        return color;
    }
    useMeasurements(file, color);
    return color;
}

std::string PNGColor::description(const PNGFile& file) const {
    switch (source) {
        case Source::nothing:
            break;
        case Source::codingPoints: {
            const CodingPoints points(file.codingPoints);
            return "cICP " + std::to_string(points.primaries) + "-" +
                   std::to_string(points.transfer);
        }
        case Source::profile:
            return profileDescription(greyProfile.empty() ? space.iccProfile() : greyProfile);
        case Source::standardRGB:
            return "sRGB";
        case Source::measurements:
            return measurementsDescription(file);
    }
    return "untagged";
}

}  // namespace pictal::detail
