#include "PictalCore/Styling/TransparentImageRenderer.h"
#include "pictal/Arguments.h"
#include "pictal/Color.h"
#include "pictal/Images.h"
#include "pictal/commands/Commands.h"

#include <optional>

namespace pictal::program {

namespace {

struct ExportOptions {
    ImageInput input;
    ImageOutput output;
    std::string style;
    std::optional<std::string> cornerRadius, shadowBlur, shadowOffset, shadowOpacity, shadowColor;
    bool plain = false;
};

/// Puts the value of an option into its place, if the option was given and is understood.
template <class T, class Parser>
std::expected<void, Failure> assign(T& place, const std::optional<std::string>& text, Parser parse,
                                    std::string_view option) {
    if (!text) return {};
    const auto value = parse(*text);
    if (!value) return badInput(std::string(option) + ": " + value.error().message);
    place = *value;
    return {};
}

std::expected<double, Failure> inRange(std::expected<double, Failure> number,
                                       CGFloat (*clamped)(CGFloat)) {
    if (number) number = clamped(*number);
    return number;
}

std::expected<ScreenshotStyle, Failure> styleFrom(const ExportOptions& options) {
    ScreenshotStyle style = ScreenshotStyle::presentationCard;
    if (!options.style.empty()) {
        const auto stored = readJSON<ScreenshotStyle>(options.style);
        if (!stored) return std::unexpected(stored.error());
        style = *stored;
    }
    ShadowStyle& shadow = style.shadow;
    CGPoint offset{shadow.offsetX, shadow.offsetY};
    // What is typed is brought into range as by the initialisers; what a file holds stays as it is.
    const auto length = [](std::string_view text) {
        return inRange(parseNumber(text), clampedToNonNegative);
    };
    const auto share = [](std::string_view text) {
        return inRange(parseNumber(text), clampedToUnit);
    };
    for (const auto& assigned :
         {assign(style.cornerRadius, options.cornerRadius, length, "--corner-radius"),
          assign(shadow.blur, options.shadowBlur, length, "--shadow-blur"),
          assign(offset, options.shadowOffset, parsePoint, "--shadow-offset"),
          assign(shadow.opacity, options.shadowOpacity, share, "--shadow-opacity"),
          assign(shadow.color, options.shadowColor, parseColor, "--shadow-color")})
        if (!assigned) return std::unexpected(assigned.error());

    shadow.offsetX = offset.x;
    shadow.offsetY = offset.y;
    if (options.plain) style.setPresentationCardEnabled(false);
    return style;
}

Outcome cardFailed(const ExportOptions& options, TransparentImageRendererError error,
                   const CGImage& image, const ScreenshotStyle& style) {
    const std::string name = inputName(options.input.path);
    if (error == TransparentImageRendererError::cannotCreateImage)
        return badInput(name + ": its colours cannot be converted to sRGB");
    if (TransparentImageRenderer().isWithinLimits(image, style))
        return workFailed(name + ": there is not enough memory for the card");
    return badInput(
        name + ": the card is larger than a picture can be; lower the shadow's blur or offset");
}

Outcome run(const ExportOptions& options) {
    if (options.input.path == "-" && options.style == "-")
        return badInput("the picture and the style cannot both be standard input");
    const auto style = styleFrom(options);
    if (!style) return std::unexpected(style.error());
    const auto image = options.input.read();
    if (!image) return std::unexpected(image.error());
    const auto card = TransparentImageRenderer().render(*image, *style);
    if (!card) return cardFailed(options, card.error(), *image, *style);
    if (const auto written = options.output.write(*card); !written)
        return std::unexpected(written.error());
    return ExitStatus::done;
}

}  // namespace

void addExport(Program& program) {
    program.add<ExportOptions>(
        "export", "Export a picture as a card: rounded corners and a soft shadow",
        "Examples:\n"
        "  pictal export in.png -o card.png\n"
        "  pictal export in.png -o card.png --corner-radius 32 --shadow-blur 72 "
        "--shadow-offset 0,44\n"
        "  pictal export in.png -o card.png --style style.json --shadow-color '#203040'\n"
        "  pictal export in.png -o copy.png --plain\n"
        "\n"
        "Without an option, the style's value holds; without --style, that of the usual card.",
        [](CLI::App& command, ExportOptions& options) {
            options.input.addTo(command);
            options.output.addTo(command);
            command
                .add_option("--style", options.style,
                            "JSON file with a style to start from; - is standard input")
                ->type_name("FILE");
            command
                .add_option("--corner-radius", options.cornerRadius,
                            "Radius of the corners, in pixels")
                ->type_name("N");
            command
                .add_option("--shadow-blur", options.shadowBlur,
                            "How far the shadow fades out, in pixels")
                ->type_name("N");
            command
                .add_option("--shadow-offset", options.shadowOffset,
                            "How far it falls to the right and down, in pixels")
                ->type_name("X,Y");
            command
                .add_option("--shadow-opacity", options.shadowOpacity, "From 0, no shadow, to 1")
                ->type_name("N");
            command.add_option("--shadow-color", options.shadowColor, "A colour as CSS writes it")
                ->type_name("COLOR");
            command.add_flag("--plain", options.plain, "No card: the picture as it is");
        },
        run);
}

}  // namespace pictal::program
