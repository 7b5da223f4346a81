#include "PictalCore/Support/LogMetadataSanitizer.h"
#include "pictal/InputOutput.h"
#include "pictal/commands/Commands.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>

#include <unistd.h>

namespace pictal::program {

namespace {

struct Options {
    std::string key;
    std::int64_t maximum = std::numeric_limits<std::int64_t>::max();
};

void setUp(CLI::App& command, Options& options) {
    CLI::Option* key =
        command.add_option("--key", options.key, "Each line is the value of this metadata key");
    command.add_flag("--error")
        ->description("Each line is an error description, or any text (the default)")
        ->excludes(key);
    command.add_option("--max", options.maximum, "The most characters that a line keeps")
        ->check(CLI::Range(std::int64_t{0}, std::numeric_limits<std::int64_t>::max(), "COUNT"));
}

std::string redacted(std::string_view line, const Options& options) {
    return options.key.empty()
               ? LogMetadataSanitizer::sanitizeErrorDescription(line, options.maximum)
               : LogMetadataSanitizer::sanitize(line, options.key, options.maximum);
}

/// Each line with its ending, LF or CR LF, which is no part of the value.
std::string redactedLine(std::string_view line, const Options& options) {
    std::size_t length = line.size();
    if (line.ends_with('\n')) --length;
    if (length < line.size() && line.substr(0, length).ends_with('\r')) --length;
    return redacted(line.substr(0, length), options) += line.substr(length);
}

/// Prints what is there as soon as it is a line, so that it follows a growing log.
Outcome run(const Options& options) {
    std::array<char, 65536> buffer;
    std::string pending;
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return workFailed(std::string("standard input: ") + std::strerror(errno));

        std::size_t lineStart = 0;
        std::size_t searched = pending.size();
        pending.append(buffer.data(), static_cast<std::size_t>(count));
        std::string output;
        for (std::size_t end; (end = pending.find('\n', searched)) != std::string::npos;
             lineStart = searched) {
            searched = end + 1;
            output += redactedLine(
                std::string_view(pending).substr(lineStart, searched - lineStart), options);
        }
        pending.erase(0, lineStart);
        if (count == 0 && !pending.empty()) output += redactedLine(pending, options);
        if (const auto printed = printText(output); !printed)
            return std::unexpected(printed.error());
        if (count == 0) return ExitStatus::done;
    }
}

}  // namespace

void addRedact(Program& program) {
    program.add<Options>(
        "redact", "Redact file paths in a log, line by line, from standard input",
        "Of a path below /Users, /Volumes, /Applications, /private, /var, /tmp or ~ only the\n"
        "last component is printed. With --key, the key decides: window titles and names are\n"
        "withheld, paths and URLs are redacted, other values are not.\n\n"
        "Examples:\n"
        "  tail -f app.log | pictal redact --max 200\n"
        "  printf '%s\\n' \"$TITLE\" | pictal redact --key windowTitle   # <redacted-metadata>\n",
        setUp, run);
}

}  // namespace pictal::program
