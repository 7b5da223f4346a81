#include "PictalCore/Support/LogMetadataSanitizer.h"
#include "pictal/Arguments.h"
#include "pictal/Descriptors.h"
#include "pictal/Messages.h"
#include "pictal/commands/Commands.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

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
        ->transform(wholeNumber(0))
        ->type_name("COUNT");
}

std::string redacted(std::string_view line, const Options& options) {
    return options.key.empty()
               ? LogMetadataSanitizer::sanitizeErrorDescription(line, options.maximum)
               : LogMetadataSanitizer::sanitize(line, options.key, options.maximum);
}

/// Makes lines of what comes in, and redacts each. An ending, LF or CR LF, is no part of the value.
///
/// A line over the limit is withheld: cut somewhere, it might show half a path, and kept whole, it
/// takes any amount of memory.
class LineRedactor {
  public:
    static constexpr std::size_t longestLine = std::size_t{64} << 20;

    explicit LineRedactor(const Options& options) : options_(options) {}

    /// @return the lines that the text completes, redacted
    std::string take(std::string_view text) {
        std::string output;
        while (!text.empty()) {
            const std::size_t end = text.find('\n');
            append(text.substr(0, end));
            if (end == std::string_view::npos) break;
            output += ended("\n");
            text.remove_prefix(end + 1);
        }
        return output;
    }
    /// @return what is left when the input ends without a line's ending
    std::string rest() { return line_.empty() && !isWithheld_ ? std::string() : ended(""); }

    [[nodiscard]] bool hasWithheld() const { return hasWithheld_; }

  private:
    void append(std::string_view piece) {
        if (isWithheld_) return;
        line_ += piece;
        if (line_.size() <= longestLine) return;
        line_ = std::string();
        isWithheld_ = hasWithheld_ = true;
        complain("warning: standard input: a line is longer than 64 MiB and is withheld");
    }
    std::string ended(std::string_view ending) {
        if (isWithheld_) {
            isWithheld_ = false;
            return std::string("<redacted-metadata>").append(ending);
        }
        std::string_view value = line_;
        const bool isCRLF = !ending.empty() && value.ends_with('\r');
        if (isCRLF) value.remove_suffix(1);
        std::string output = redacted(value, options_).append(isCRLF ? "\r" : "").append(ending);
        line_.clear();
        return output;
    }

    const Options& options_;
    std::string line_;
    bool isWithheld_ = false;
    bool hasWithheld_ = false;
};

/// Prints what is there as soon as it is a line, so that it follows a growing log.
Outcome run(const Options& options) {
    std::array<char, 65536> buffer;
    LineRedactor lines(options);
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return workFailed(lastErrorOf("standard input"));
        const std::string_view text(buffer.data(), static_cast<std::size_t>(count));
        if (const auto printed = printText(count > 0 ? lines.take(text) : lines.rest()); !printed)
            return std::unexpected(printed.error());
        if (count == 0) return lines.hasWithheld() ? ExitStatus::usage : ExitStatus::done;
    }
}

}  // namespace

void addRedact(Program& program) {
    program.add<Options>(
        "redact", "Redact file paths in a log, line by line, from standard input",
        "Of a path below /Users, /Volumes, /Applications, /private, /var, /tmp or ~ only the\n"
        "last component is printed. With --key, the key decides: window titles and names are\n"
        "withheld, paths and URLs are redacted, other values are not. A line over 64 MiB is\n"
        "withheld as well, and the exit status is 2.\n\n"
        "Examples:\n"
        "  tail -f app.log | pictal redact --max 200\n"
        "  printf '%s\\n' \"$TITLE\" | pictal redact --key windowTitle   # <redacted-metadata>\n",
        setUp, run);
}

}  // namespace pictal::program
