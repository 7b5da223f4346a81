#include "pictal/InputOutput.h"

#include "PictalCore/Platform/Foundation/Files.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pictal::program {

namespace fs = std::filesystem;

namespace {

/// The temporary file that an interrupt has to remove; empty when there is none. A plain array,
/// since a signal handler may touch nothing else.
std::array<char, 4096> pendingFile{};

void onSignal(int signal) {
    if (pendingFile[0] != '\0') ::unlink(pendingFile.data());
    ::_exit(128 + signal);
}

void setPendingFile(const fs::path& path) {
    sigset_t interrupt;
    sigset_t before;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    sigaddset(&interrupt, SIGTERM);
    ::sigprocmask(SIG_BLOCK, &interrupt, &before);
    const std::size_t length = path.native().size();
    const bool fits = length < pendingFile.size();
    std::memcpy(pendingFile.data(), path.c_str(), fits ? length + 1 : 1);
    if (!fits) pendingFile[0] = '\0';
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
}

Failure failure(const FileError& error) {
    const bool usage = error.code == std::errc::no_such_file_or_directory ||
                       error.code == std::errc::is_a_directory ||
                       error.code == std::errc::not_a_directory;
    return {usage ? ExitStatus::usage : ExitStatus::failed, error.description()};
}

std::expected<void, Failure> writeAll(int descriptor, const std::string& name,
                                      std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return workFailed(fmt::format("{}: {}", name, std::strerror(errno)));
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

std::expected<void, Failure> writeDevice(const std::string& path,
                                         std::span<const std::byte> bytes) {
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) return workFailed(fmt::format("{}: {}", path, std::strerror(errno)));
    auto written = writeAll(descriptor, path, bytes);
    if (::close(descriptor) != 0 && written)
        written = workFailed(fmt::format("{}: {}", path, std::strerror(errno)));
    return written;
}

std::expected<void, FileError> replaceFile(const fs::path& path, std::span<const std::byte> bytes) {
    auto file = AtomicFile::make(path);
    if (!file) return std::unexpected(file.error());
    setPendingFile(file->temporaryPath());
    auto result = file->write(bytes);
    if (result) result = file->commit();
    setPendingFile({});
    return result;
}

/// What a link points to in the end, whether it exists or not.
fs::path followingLinks(fs::path path) {
    std::error_code error;
    for (int links = 0; links < 40 && fs::is_symlink(fs::symlink_status(path, error)); ++links) {
        const fs::path target = fs::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / target;
    }
    return path;
}

}  // namespace

std::expected<std::vector<std::byte>, Failure> readInput(const std::string& path) {
    // Opening /dev/stdin would fail for a socket and start a file over that was read in part.
    auto bytes = path == "-" ? readDescriptor(STDIN_FILENO, "standard input") : readFile(path);
    if (bytes) return *std::move(bytes);
    return std::unexpected(failure(bytes.error()));
}

std::expected<std::string, Failure> readTextInput(const std::string& path) {
    const auto bytes = readInput(path);
    if (!bytes) return std::unexpected(bytes.error());
    return std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size());
}

std::expected<void, Failure> writeOutput(const std::string& path,
                                         std::span<const std::byte> bytes) {
    if (path == "-") {
        if (::isatty(STDOUT_FILENO))
            return badInput("a picture does not go to a terminal; use -o FILE or a pipe");
        return writeAll(STDOUT_FILENO, "standard output", bytes);
    }
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status))
        return writeDevice(path, bytes);

    if (const auto result = replaceFile(followingLinks(path), bytes); !result)
        return std::unexpected(failure(result.error()));
    return {};
}

std::expected<void, Failure> printText(std::string_view text) {
    return writeAll(STDOUT_FILENO, "standard output", std::as_bytes(std::span(text)));
}

void removeTemporaryFilesOnInterrupt() {
    // What the caller had ignored stays ignored, as in a job in the background.
    for (const int signal : {SIGINT, SIGTERM})
        if (std::signal(signal, onSignal) == SIG_IGN) std::signal(signal, SIG_IGN);
}

}  // namespace pictal::program
