#pragma once

#include "PictalCore/Platform/Foundation/AtomicFile.h"
#include "pictal/Outcome.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace pictal::program {

/// A binary output that is written piece by piece and there for others once it is committed.
///
/// A regular or missing file is replaced in one step at the end; a link is followed. Without a
/// commit, or when a signal ends the program, it stays what it was. "-" is standard output. A
/// device, a pipe, and a descriptor of the program's own ("/dev/stdout", "/dev/fd/3") are written
/// as they are, and what was written stays. Nothing goes to a terminal.
///
/// One at a time: a signal removes the temporary file of the last one opened.
class OutputFile {
  public:
    [[nodiscard]] static std::expected<OutputFile, Failure> open(const std::string& path);
    /// For a file that somebody else knows how to make.
    [[nodiscard]] static std::expected<OutputFile, FileError> make(
        const std::function<std::expected<AtomicFile, FileError>()>& makeFile);

    OutputFile(OutputFile&&) noexcept;
    OutputFile& operator=(OutputFile&&) noexcept;
    ~OutputFile();

    [[nodiscard]] std::expected<void, Failure> write(std::span<const std::byte> bytes);
    [[nodiscard]] std::expected<void, Failure> commit();

  private:
    struct Replacement;
    struct Stream;

    OutputFile();
    /// Exactly one of these is there.
    std::unique_ptr<Replacement> replacement_;
    std::unique_ptr<Stream> stream_;
};

}  // namespace pictal::program
