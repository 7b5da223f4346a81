// Reading one pixel's colour: how long it takes, whatever the size of the image.

#include "PictalCore/Color/CGImageColorSampler.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"

#include <string>

#include <benchmark/benchmark.h>

namespace {

using namespace pictal;

CGImage picture(std::int64_t width, std::int64_t height, const CGColorSpace& space) {
    const std::vector<std::byte> bytes(static_cast<std::size_t>(width * height * 4),
                                       std::byte{0xC0});
    return CGImage::fromBytes(bytes, {width, height, width * 4}, space).value();
}

void sample(benchmark::State& state, const CGImage& image, ColorEncoding encoding) {
    CGFloat x = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CGImageColorSampler::rgbColor(image, {x, x}, encoding));
        x = x < 1e5 ? x + 1 : 0;
    }
}

const bool registered = [] {
    const auto fromFile =
        CGColorSpace::fromICCProfile(*detail::makeRGBProfile({}, detail::ToneCurve::power(1.8)));
    const auto p3 = CGColorSpace::displayP3();
    struct Case {
        const char* name;
        std::int64_t width;
        std::int64_t height;
        CGColorSpace space;
    };
    for (const auto& [name, width, height, space] : {Case{"1x1", 1, 1, p3},
                                                     {"3840x2160", 3840, 2160, p3},
                                                     {"100x100000", 100, 100'000, p3},
                                                     {"profile of a file", 1, 1, *fromFile}})
        benchmark::RegisterBenchmark(
            (std::string("ColorSample/") + name).c_str(),
            [image = picture(width, height, space)](benchmark::State& state) {
                sample(state, image, ColorEncoding::adobeRGB1998);
            });
    return true;
}();

}  // namespace
