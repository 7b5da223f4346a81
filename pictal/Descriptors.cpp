#include "pictal/Descriptors.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

namespace pictal::program {

namespace fs = std::filesystem;

Descriptor::Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) {
        close();
        value_ = std::exchange(other.value_, -1);
    }
    return *this;
}

bool Descriptor::close() {
    return value_ < 0 || ::close(std::exchange(value_, -1)) == 0;
}

void reserveStandardDescriptors() {
    // Each the wrong way round, so that reading or writing fails. The lowest free one is taken.
    static constexpr std::array modes{O_WRONLY, O_RDONLY, O_RDONLY};
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(descriptor, F_GETFD) < 0)
            (void)::open("/dev/null", modes[static_cast<std::size_t>(descriptor)]);
}

std::optional<int> ownDescriptor(const fs::path& path) {
    const std::string name = path.filename();
    int descriptor = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), descriptor);
    if (name.starts_with('-') || error != std::errc() || end != name.data() + name.size())
        return std::nullopt;
    std::error_code failed;
    const fs::path folder = fs::canonical(path.parent_path() / ".", failed);
    if (failed || folder != fs::canonical("/proc/self/fd", failed)) return std::nullopt;
    return descriptor;
}

fs::path followingLinks(fs::path path) {
    std::error_code error;
    for (int links = 0;
         links < 40 && !ownDescriptor(path) && fs::is_symlink(fs::symlink_status(path, error));
         ++links) {
        const fs::path target = fs::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / target;
    }
    return path;
}

std::expected<void, Failure> writeAll(int descriptor, const std::string& name,
                                      std::span<const std::byte> bytes) {
    if (const auto written = writeDescriptor(descriptor, name, bytes); !written)
        return workFailed(written.error().description());
    return {};
}

std::string lastErrorOf(std::string_view name) {
    return fmt::format("{}: {}", name, std::strerror(errno));
}

Failure failure(const FileError& error) {
    const bool usage = error.code == std::errc::no_such_file_or_directory ||
                       error.code == std::errc::is_a_directory ||
                       error.code == std::errc::not_a_directory;
    return {usage ? ExitStatus::usage : ExitStatus::failed, error.description()};
}

}  // namespace pictal::program
