#include "PictalCore/Color/CGImageColorSampler.h"
#include "pictal/Arguments.h"
#include "pictal/Images.h"
#include "pictal/InputOutput.h"
#include "pictal/JSONOutput.h"
#include "pictal/Loupe.h"
#include "pictal/commands/Commands.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <fmt/format.h>
#include <unistd.h>

namespace pictal::program {

namespace {

struct PickOptions {
    ImageInput input;
    std::string x;
    std::string y;
    ColorEncoding encoding = ColorEncoding::sRGB;
    bool json = false;
    std::int64_t loupeSide = 0;
    std::string loupePath;
};

/// The pixel that a point falls on, inside the image as the sampler has it.
struct Place {
    std::int64_t x;
    std::int64_t y;
    bool clamped;
};

Place placeOf(CGPoint point, const CGImage& image) {
    const auto inside = [](CGFloat coordinate, std::int64_t count) {
        return std::clamp(std::floor(coordinate), 0.0, static_cast<CGFloat>(count - 1));
    };
    const CGPoint kept{inside(point.x, image.width()), inside(point.y, image.height())};
    return {static_cast<std::int64_t>(kept.x), static_cast<std::int64_t>(kept.y),
            kept != CGPoint{std::floor(point.x), std::floor(point.y)}};
}

/// A block of the colour for terminals that say that they show any, unless the user wants none.
std::string swatch(const RGBColor& color) {
    const auto variable = [](const char* name) {
        const char* const value = std::getenv(name);
        return std::string_view(value ? value : "");
    };
    const std::string_view terminal = variable("COLORTERM");
    if (!::isatty(STDOUT_FILENO) || (terminal != "truecolor" && terminal != "24bit") ||
        !variable("NO_COLOR").empty())
        return {};
    const auto level = [](double component) { return std::lround(component * 255); };
    return fmt::format("\x1B[48;2;{};{};{}m  \x1B[0m ", level(color.red), level(color.green),
                       level(color.blue));
}

std::string lineOf(const ColorSample& sample) {
    const RGBColor& color = sample.color;
    std::string line = fmt::format("{}{}\t{}\t{}", swatch(color), color.hexString(),
                                   color.rgbString(), sample.nearestName);
    if (color.alpha < 1)
        line += fmt::format("\talpha {:.0f}, values premultiplied", color.alpha * 255);
    return line + "\n";
}

std::expected<void, Failure> print(const ColorSample& sample, const Place& place, bool json) {
    if (!json) return printText(lineOf(sample));
    const auto color = JSONText::of(sample.color);
    if (!color) return std::unexpected(color.error());
    return printJSON(JSONText::object({{"x", place.x},
                                       {"y", place.y},
                                       {"color", *color},
                                       {"encoding", rawValue(sample.encoding)},
                                       {"nearestName", sample.nearestName},
                                       {"hex", sample.color.hexString()},
                                       {"rgb", sample.color.rgbString()}}));
}

Outcome run(const PickOptions& options) {
    if (options.loupePath.empty() != (options.loupeSide == 0))
        return badInput("--loupe and -o go together: the loupe is a picture");
    if (options.loupePath == "-")
        return badInput("the loupe needs a file: the colour goes to standard output");
    const auto x = parseNumber(options.x);
    if (!x) return std::unexpected(x.error());
    const auto y = parseNumber(options.y);
    if (!y) return std::unexpected(y.error());
    const auto image = options.input.read();
    if (!image) return std::unexpected(image.error());

    const Place place = placeOf({*x, *y}, *image);
    if (place.clamped)
        complain(fmt::format("{}, {} is outside the picture; this is {}, {}", options.x, options.y,
                             place.x, place.y));
    const auto sample = CGImageColorSampler::sample(*image, {*x, *y}, options.encoding);
    if (!sample) return workFailed("there is no memory to convert the colour");
    if (options.loupeSide > 0) {
        const auto loupe = loupePicture(*image, place.x, place.y, options.loupeSide);
        if (!loupe) return workFailed("there is no memory for the loupe");
        const ImageOutput output{.path = options.loupePath};
        if (const auto written = output.write(*loupe); !written)
            return std::unexpected(written.error());
    }
    return doneIf(print(*sample, place, options.json));
}

}  // namespace

void addPick(Program& program) {
    program.add<PickOptions>(
        "pick", "Say the colour of a pixel",
        "Prints hex, RGB and the nearest name, apart by tabs; behind them the alpha of a "
        "translucent\n"
        "pixel, whose values are premultiplied, as pixels are stored.\n\n"
        "Examples:\n"
        "  pictal pick in.png 120 80\n"
        "  pictal pick in.png 120 80 --encoding displayP3 --json\n"
        "  pictal pick in.png 120 80 --loupe 15 -o loupe.png",
        [](CLI::App& command, PickOptions& options) {
            options.input.addTo(command);
            command.add_option("X", options.x, "Pixels from the left edge")
                ->required()
                ->type_name("NUMBER");
            command.add_option("Y", options.y, "Pixels down from the top edge")
                ->required()
                ->type_name("NUMBER");
            command
                .add_option("--encoding", options.encoding,
                            "The colour space to read in; native: the picture's own")
                ->transform(choice<ColorEncoding>())
                ->default_str("sRGB");
            command.add_flag("--json", options.json, "As one JSON object");
            command
                .add_option("--loupe", options.loupeSide,
                            "Draw so many pixels a side around the point, enlarged")
                ->transform(wholeNumber(1, 999))
                ->type_name("SIDE");
            command
                .add_option("-o,--output", options.loupePath, "Where the loupe goes, a PNG file")
                ->transform(nameOf("file"))
                ->type_name("FILE");
        },
        run);
}

}  // namespace pictal::program
