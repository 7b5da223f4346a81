#pragma once

#include <string>
#include <string_view>

/// How text from outside appears in what people read: on one line, and never as commands to the
/// terminal.
namespace pictal::program {

/// Control characters, characters that turn the direction of writing, and bytes that are no UTF-8
/// as "\n", "\x1B", "\u202E"; everything else as it is.
[[nodiscard]] std::string escaped(std::string_view text);

/// The text in quotation marks, cut after 80 characters.
[[nodiscard]] std::string inQuotes(std::string_view text);

/// One line for people of a message, also of one by the library: escaped, and with what stands in
/// quotation marks cut.
[[nodiscard]] std::string messageLine(std::string_view message);

/// Says "pictal: MESSAGE" on standard error.
void complain(std::string_view message);

}  // namespace pictal::program
