#include "PictalCore/Color/ColorSampler.h"

namespace pictal::ColorSampler {

namespace {

double squaredDistance(const RGBColor& a, const RGBColor& b) {
    const double red = a.red - b.red;
    const double green = a.green - b.green;
    const double blue = a.blue - b.blue;
    return red * red + green * green + blue * blue;
}

}  // namespace

const std::vector<NamedColor>& defaultNames() {
    static const std::vector<NamedColor> names{
        {"Black", {0, 0, 0, 1}},
        {"White", {1, 1, 1, 1}},
        {"Red", {1, 0, 0, 1}},
        {"Orange", {1, 0.5, 0, 1}},
        {"Yellow", {1, 1, 0, 1}},
        {"Green", {0, 0.7, 0.18, 1}},
        {"Cyan", {0, 0.72, 0.86, 1}},
        {"Blue", {0, 0.25, 1, 1}},
        {"Purple", {0.52, 0.28, 0.9, 1}},
        {"Pink", {1, 0.27, 0.56, 1}},
        {"Gray", {0.5, 0.5, 0.5, 1}},
    };
    return names;
}

std::string nearestName(const RGBColor& color, std::span<const NamedColor> names) {
    if (names.empty()) return "Unknown";
    const NamedColor* best = &names.front();
    double bestDistance = squaredDistance(color, best->color);
    for (const NamedColor& candidate : names.subspan(1)) {
        const double distance = squaredDistance(color, candidate.color);
        if (!(distance < bestDistance)) continue;
        best = &candidate;
        bestDistance = distance;
    }
    return best->name;
}

ColorSample sample(const RGBColor& color, ColorEncoding encoding,
                   std::span<const NamedColor> names) {
    return {color, encoding, nearestName(color, names)};
}

}  // namespace pictal::ColorSampler
