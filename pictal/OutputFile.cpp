#include "pictal/OutputFile.h"

#include "pictal/Descriptors.h"
#include "pictal/Interrupts.h"

#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace pictal::program {

namespace fs = std::filesystem;

struct OutputFile::Replacement {
    explicit Replacement(AtomicFile opened) : file(std::move(opened)) {
        setTemporaryFile(file.temporaryPath());
    }

    /// Forgotten only once the file is gone.
    struct Forgetting {
        ~Forgetting() { setTemporaryFile({}); }
    } forgetting;
    AtomicFile file;
};

struct OutputFile::Stream {
    std::string name;
    int descriptor;
    /// Closed with it.
    Descriptor owned;
};

OutputFile::OutputFile() = default;
OutputFile::OutputFile(OutputFile&&) noexcept = default;
OutputFile& OutputFile::operator=(OutputFile&&) noexcept = default;
OutputFile::~OutputFile() = default;

std::expected<OutputFile, Failure> OutputFile::open(const std::string& path) {
    OutputFile output;
    const auto stream = [&](Stream opened) -> std::expected<OutputFile, Failure> {
        if (::isatty(opened.descriptor))
            return badInput("a picture does not go to a terminal; use -o FILE or a pipe");
        output.stream_ = std::make_unique<Stream>(std::move(opened));
        return std::move(output);
    };
    if (path == "-") return stream({"standard output", STDOUT_FILENO, Descriptor()});
    const fs::path place = followingLinks(path);
    if (const auto descriptor = ownDescriptor(place))
        return stream({path, *descriptor, Descriptor()});

    std::error_code ignored;
    const fs::file_status status = fs::status(place, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status)) {
        Descriptor device(::open(place.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
        if (!device) return workFailed(lastErrorOf(path));
        return stream({path, device.value(), std::move(device)});
    }
    auto replacing = make([&] { return AtomicFile::make(place); });
    if (!replacing) return std::unexpected(failure(replacing.error()));
    return *std::move(replacing);
}

std::expected<OutputFile, FileError> OutputFile::make(
    const std::function<std::expected<AtomicFile, FileError>()>& makeFile) {
    const HeldInterrupts held;  // no file without its name in the handler's hand
    auto file = makeFile();
    if (!file) return std::unexpected(file.error());
    OutputFile output;
    output.replacement_ = std::make_unique<Replacement>(*std::move(file));
    return output;
}

std::expected<void, Failure> OutputFile::write(std::span<const std::byte> bytes) {
    if (stream_) return writeAll(stream_->descriptor, stream_->name, bytes);
    if (const auto written = replacement_->file.write(bytes); !written)
        return std::unexpected(failure(written.error()));
    return {};
}

std::expected<void, Failure> OutputFile::commit() {
    if (stream_ && stream_->owned && !stream_->owned.close())
        return workFailed(lastErrorOf(stream_->name));
    if (stream_) return {};
    if (const auto committed = replacement_->file.commit(); !committed)
        return std::unexpected(failure(committed.error()));
    return {};
}

}  // namespace pictal::program
