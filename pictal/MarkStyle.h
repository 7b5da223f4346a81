#pragma once

#include "PictalCore/Annotation/AnnotationStyle.h"
#include "PictalCore/Annotation/AnnotationTool.h"
#include "pictal/Program.h"

#include <optional>
#include <string>
#include <string_view>

namespace pictal::program {

/// What options say about the looks of marks: "--stroke", "--fill", "--width", "--size",
/// "--outline", "--outline-width" and "--opacity".
class MarkStyle {
  public:
    static void addTo(CLI::App& command);

    /// Whether the name is one of these options.
    [[nodiscard]] static bool takes(std::string_view option);
    /// From now on; a later one replaces an earlier one.
    [[nodiscard]] std::expected<void, Failure> set(std::string_view option,
                                                   const std::string& value);

    /// A mark's usual looks with these changes. Unless it is told, a number's disc has the colour
    /// of its stroke.
    [[nodiscard]] AnnotationStyle of(AnnotationTool tool) const;
    [[nodiscard]] AnnotationStyle changed(const AnnotationStyle& style) const;

  private:
    std::optional<RGBAColor> stroke_, fill_, outline_;
    std::optional<CGFloat> width_, size_, outlineWidth_, opacity_;
};

/// Adds an option that may be given any number of times, with one value each time; the order of all
/// of them is `command.parse_order()`.
CLI::Option* addRepeated(CLI::App& command, const std::string& name, const std::string& help,
                         const std::string& type);

/// Calls for each option of the command line in order, with its long name and the value that it had
/// there. Ends with the first failure.
[[nodiscard]] std::expected<void, Failure> forEachOption(
    const CLI::App& command,
    const std::function<std::expected<void, Failure>(const std::string& name,
                                                     const std::string& value)>& take);

}  // namespace pictal::program
