// Runs the scrolling analyzer over the pairs of frames that script/pages has rendered, and tells by
// kind how many answers are exact, wrong, or none. script/offsets builds and starts it.

#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Platform/Registration/ImageRegistration.h"
#include "PictalCore/Scrolling/ScrollingFrameAnalyzer.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace pictal {
namespace {

struct Pair {
    std::string kind, seed, size, previous, current;
    double x = 0, y = 0;
    bool honest = false;
};

struct Options {
    std::string folder;
    int noise = 0;
    bool withhold = false;
    bool verbose = false;
    bool timed = false;
};

struct Tally {
    int pairs = 0, honest = 0, exact = 0, near = 0, wrong = 0, none = 0, declined = 0;
};

CGImage readPicture(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    const std::string text = bytes.str();
    const auto image = PNG::read(std::as_bytes(std::span(text)));
    if (image) return *image;
    std::fprintf(stderr, "%s: %s\n", path.c_str(), image.error().description().c_str());
    std::exit(2);
}

CGImage withNoise(const CGImage& image, int levels, unsigned seed) {
    std::vector<std::uint32_t> pixels;
    std::minstd_rand random(seed);
    const auto disturbed = [&](std::uint32_t component) {
        const int step = static_cast<int>(random() >> 8) % (2 * levels + 1) - levels;
        return static_cast<std::uint32_t>(std::clamp(static_cast<int>(component) + step, 0, 255));
    };
    for (std::int64_t y = 0; y < image.height(); ++y)
        for (const std::uint32_t pixel : image.row(y))
            pixels.push_back(kernels::pixelOf(disturbed(kernels::redOf(pixel)),
                                              disturbed(kernels::greenOf(pixel)),
                                              disturbed(kernels::blueOf(pixel)), 255));
    return CGImage::fromBytes(std::as_bytes(std::span(pixels)),
                              {image.width(), image.height(), image.width() * 4},
                              image.colorSpace())
        .value();
}

bool picturesAgree(const CGImage& a, const CGImage& b) {
    for (std::int64_t y = 0; y < a.height(); ++y)
        if (!std::ranges::equal(a.row(y), b.row(y))) return false;
    return true;
}

double milliseconds(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double copyTime(const CGImage& a, const CGImage& b) {
    static std::vector<std::uint32_t> target;
    target.resize(static_cast<std::size_t>(a.width() * a.height() * 2));
    double best = 1e9;
    for (int i = 0; i < 3; ++i)
        best = std::min(
            best, milliseconds([&] {
                std::uint32_t* to = target.data();
                for (const CGImage* image : {&a, &b})
                    for (std::int64_t y = 0; y < image->height(); ++y, to += image->width())
                        std::memcpy(to, image->row(y).data(), image->row(y).size_bytes());
            }));
    return best;
}

ScrollingFrameMeasurement measured(const Pair& pair, const CGImage& previous,
                                   const CGImage& current, const Options& options) {
    if (!options.withhold) return ScrollingFrameAnalyzer().measure(previous, current).value();
    const ImageRegistration registration(current, previous, {std::llround(pair.y)});
    const auto convert = [](const auto& from) -> std::optional<ImageTranslation> {
        if (!from) return std::nullopt;
        return ImageTranslation{from->x, from->y, from->confidence};
    };
    ScrollingFrameMeasurement result;
    std::vector<ImageTranslation> bands;
    for (const auto& rows : ScrollingConsensus::comparisonBands(current.height()))
        if (const auto band = convert(registration.rows(rows.top, rows.height)))
            bands.push_back(*band);
    result.wholeFrame = convert(registration.whole());
    result.accepted = ScrollingConsensus::accepted(bands, result.wholeFrame, current.height());
    return result;
}

void judge(const Pair& pair, const ScrollingFrameMeasurement& measurement, Tally& tally,
           const Options& options) {
    const auto analysis = ScrollingConsensus::classified(measurement.accepted);
    const auto* shifted = analysis.as<ScrollingFrameAnalysis::Shifted>();
    const bool answered = !analysis.as<ScrollingFrameAnalysis::NoReliableMatch>();
    const double offset = shifted ? static_cast<double>(shifted->verticalOffset) : 0;
    const bool unchanged = answered && !shifted;
    // A movement of up to three pixels counts as none.
    const double error = unchanged && std::abs(pair.y) <= 4 ? 0 : std::abs(offset - pair.y);
    const bool wrong = answered && (error > 3 || (!pair.honest && unchanged && pair.y != 0));
    ++tally.pairs;
    tally.honest += pair.honest;
    tally.wrong += wrong;
    tally.exact += pair.honest && answered && error <= 1;
    tally.near += pair.honest && answered && error > 1 && error <= 3;
    tally.none += pair.honest && !answered;
    tally.declined += !pair.honest && !wrong;
    const bool bad = wrong || (pair.honest && !(answered && error <= 1));
    if (!options.verbose && !bad) return;
    const auto& whole = measurement.wholeFrame;
    std::printf("  %-10s %s-%s %s true (%g, %g) %s, got %g; whole (%g, %g, %.2f) bands",
                wrong ? "WRONG"
                : bad ? "not exact"
                      : "fine",
                pair.kind.c_str(), pair.seed.c_str(), pair.size.c_str(), pair.x, pair.y,
                pair.honest ? "" : "not to be told", answered ? offset : NAN,
                whole ? whole->x : NAN, whole ? whole->y : NAN,
                whole ? static_cast<double>(whole->confidence) : NAN);
    for (const auto& band : measurement.bands)
        if (band.translation)
            std::printf(" %g:%.2f", band.translation->y,
                        static_cast<double>(band.translation->confidence));
        else
            std::printf(" -");
    std::printf("\n");
}

void run(const Options& options) {
    std::map<std::string, Tally> kinds;
    std::map<std::string, std::vector<double>> ratios;
    std::ifstream list(options.folder + "/pairs.tsv");
    std::string line;
    unsigned number = 0;
    while (std::getline(list, line)) {
        std::istringstream fields(line);
        Pair pair;
        std::string honest;
        fields >> pair.kind >> pair.seed >> pair.size >> pair.previous >> pair.current >> pair.x >>
            pair.y >> honest;
        pair.honest = honest == "yes";
        CGImage previous = readPicture(options.folder + "/" + pair.previous);
        CGImage current = readPicture(options.folder + "/" + pair.current);
        // Nobody can tell a list of equal rows from one that did not move.
        if (picturesAgree(previous, current)) {
            pair.honest = true;
            pair.y = 0;
        }
        if (options.noise > 0) {
            previous = withNoise(previous, options.noise, 2 * ++number);
            current = withNoise(current, options.noise, 2 * number + 1);
        }
        judge(pair, measured(pair, previous, current, options), kinds[pair.kind], options);
        if (options.timed) {
            std::vector<double> times;
            for (int i = 0; i < 5; ++i)
                times.push_back(milliseconds(
                    [&] { (void)ScrollingFrameAnalyzer().measure(previous, current); }));
            std::ranges::sort(times);
            const double ratio = times[2] / copyTime(current, previous);
            ratios[pair.size].push_back(ratio);
            if (ratio > 4)
                std::printf("  slow: %s-%s %s %.2f x copy\n", pair.kind.c_str(), pair.seed.c_str(),
                            pair.size.c_str(), ratio);
        }
    }
    std::printf("%-20s %6s %6s %6s %6s %6s %6s %9s\n", "kind", "pairs", "honest", "exact", "near",
                "none", "wrong", "declined");
    Tally sum;
    for (auto& [kind, t] : kinds) {
        std::printf("%-20s %6d %6d %6d %6d %6d %6d %9d\n", kind.c_str(), t.pairs, t.honest, t.exact,
                    t.near, t.none, t.wrong, t.declined);
        sum.pairs += t.pairs;
        sum.honest += t.honest;
        sum.exact += t.exact;
        sum.near += t.near;
        sum.none += t.none;
        sum.wrong += t.wrong;
        sum.declined += t.declined;
    }
    std::printf("%-20s %6d %6d %6d %6d %6d %6d %9d  exact %.1f %%\n", "all", sum.pairs, sum.honest,
                sum.exact, sum.near, sum.none, sum.wrong, sum.declined,
                100.0 * sum.exact / std::max(1, sum.honest));
    for (auto& [size, values] : ratios) {
        std::ranges::sort(values);
        std::printf("%-12s %.2f x copying both frames in the median of %zu pairs, %.2f at most\n",
                    size.c_str(), values[values.size() / 2], values.size(), values.back());
    }
}

}  // namespace
}  // namespace pictal

int main(int argc, char** argv) {
    pictal::Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--noise" && i + 1 < argc)
            options.noise = std::atoi(argv[++i]);
        else if (argument == "--withhold")
            options.withhold = true;
        else if (argument == "--verbose")
            options.verbose = true;
        else if (argument == "--time")
            options.timed = true;
        else
            options.folder = argument;
    }
    pictal::run(options);
}
