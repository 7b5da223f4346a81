#include "pictal/MarkStyle.h"

#include "pictal/Arguments.h"
#include "pictal/Color.h"

#include <algorithm>
#include <array>
#include <map>

namespace pictal::program {

namespace {

struct StyleOption {
    const char* name;
    const char* help;
    const char* type;
};
constexpr std::array styleOptions{
    StyleOption{"--stroke", "Colour of lines, outlines and letters", "COLOR"},
    StyleOption{"--fill", "Colour of interiors, arrow heads and discs", "COLOR"},
    StyleOption{"--width", "Width of lines; of a smear, its brush and its cells", "N"},
    StyleOption{"--size", "Size of texts; also sets a number's disc", "N"},
    StyleOption{"--outline", "Colour around letters", "COLOR"},
    StyleOption{"--outline-width", "Its width, half of it under the letters", "N"},
    StyleOption{"--opacity", "0…1, of everything but mosaics", "N"},
};

/// A red pen; what has a preset of its name starts from that.
AnnotationStyle usualStyle(AnnotationTool tool) {
    switch (tool) {
        case AnnotationTool::highlight:
            return AnnotationStyle::highlight;
        case AnnotationTool::mosaic:
            return AnnotationStyle::mosaic;
        case AnnotationTool::text:
            return AnnotationStyle::text;
        default:
            break;
    }
    AnnotationStyle style;
    style.stroke = RGBAColor(0xE5 / 255.0, 0x34 / 255.0, 0x2B / 255.0, 1);
    return style;
}

template <class T>
std::expected<void, Failure> store(std::optional<T>& place, std::string_view option,
                                   const std::expected<T, Failure>& value) {
    if (!value) return badInput(std::string(option) + ": " + value.error().message);
    place = *value;
    return {};
}

}  // namespace

void MarkStyle::addTo(CLI::App& command) {
    for (const StyleOption& option : styleOptions)
        addRepeated(command, option.name, option.help, option.type);
}

bool MarkStyle::takes(std::string_view option) {
    return std::ranges::any_of(styleOptions,
                               [&](const StyleOption& known) { return known.name == option; });
}

std::expected<void, Failure> MarkStyle::set(std::string_view option, const std::string& value) {
    if (option == "--stroke") return store(stroke_, option, parseColor(value));
    if (option == "--fill") return store(fill_, option, parseColor(value));
    if (option == "--outline") return store(outline_, option, parseColor(value));
    if (option == "--width") return store(width_, option, parseNumber(value));
    if (option == "--size") return store(size_, option, parseNumber(value));
    if (option == "--outline-width") return store(outlineWidth_, option, parseNumber(value));
    return store(opacity_, option, parseNumber(value));
}

AnnotationStyle MarkStyle::of(AnnotationTool tool) const {
    AnnotationStyle style = changed(usualStyle(tool));
    if (tool == AnnotationTool::number && !fill_) style.fill = style.stroke;
    return style;
}

AnnotationStyle MarkStyle::changed(const AnnotationStyle& style) const {
    return {stroke_.value_or(style.stroke),
            fill_.value_or(style.fill),
            width_.value_or(style.lineWidth),
            opacity_.value_or(style.opacity),
            size_.value_or(style.fontSize),
            outline_.value_or(style.textOutline),
            outlineWidth_.value_or(style.textOutlineWidth),
            style.mosaicMode};
}

CLI::Option* addRepeated(CLI::App& command, const std::string& name, const std::string& help,
                         const std::string& type) {
    // The option keeps its values itself. Without extra arguments it takes one each time, and the
    // parser's order names it once a value.
    const auto ignore = [](const std::vector<std::string>&) {};
    return command.add_option_function<std::vector<std::string>>(name, ignore, help)
        ->allow_extra_args(false)
        ->type_name(type);
}

std::expected<void, Failure> forEachOption(
    const CLI::App& command,
    const std::function<std::expected<void, Failure>(const std::string&, const std::string&)>&
        take) {
    std::map<const CLI::Option*, std::size_t> taken;
    for (const CLI::Option* option : command.parse_order()) {
        const std::size_t index = taken[option]++;
        if (index >= option->results().size()) continue;
        if (auto done = take(option->get_name(), option->results()[index]); !done) return done;
    }
    return {};
}

}  // namespace pictal::program
