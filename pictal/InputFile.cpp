#include "pictal/InputFile.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pictal::program {

std::string inputName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

std::unexpected<Failure> InputFile::tooLarge() const {
    return badInput(fmt::format("{}: larger than {} bytes{}", name_, limit_, remedy_));
}

std::expected<InputFile, Failure> InputFile::open(const std::string& path, std::uint64_t limit,
                                                  std::string remedy) {
    InputFile input(inputName(path), limit, std::move(remedy));
    // Opening /dev/stdin would fail for a socket and start a file over that was read in part.
    if (path != "-") {
        input.owned_ = Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
        input.descriptor_ = input.owned_.value();
    }
    const auto failed = [&] {
        return std::unexpected(failure({{errno, std::generic_category()}, input.name_}));
    };
    struct stat status{};
    if (input.descriptor_ < 0 || ::fstat(input.descriptor_, &status) != 0) return failed();
    if (S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return failed();
    }
    // Files below /proc call themselves empty.
    if (S_ISREG(status.st_mode) && status.st_size > 0) {
        const off_t place = std::max<off_t>(::lseek(input.descriptor_, 0, SEEK_CUR), 0);
        input.expected_ = static_cast<std::uint64_t>(std::max<off_t>(status.st_size - place, 0));
        if (*input.expected_ > limit) return input.tooLarge();
    }
    return input;
}

std::expected<std::span<const std::byte>, Failure> InputFile::first(std::size_t count) {
    while (filled_ < count && !ended_) {
        if (filled_ == bytes_.size()) {
            // A file in one piece, and a byte more, which tells its end; a pipe or a growing file
            // goes on as long as it has bytes.
            const bool pieceIsKnown = expected_ && filled_ <= *expected_;
            const std::uint64_t next =
                pieceIsKnown ? *expected_ + 1 : std::max<std::uint64_t>(2 * filled_, 65536);
            bytes_.resize(std::min<std::uint64_t>({count, next, limit_ + 1}));
        }
        const ssize_t read = ::read(descriptor_, bytes_.data() + filled_, bytes_.size() - filled_);
        if (read < 0 && errno == EINTR) continue;
        if (read < 0) return std::unexpected(failure({{errno, std::generic_category()}, name_}));
        ended_ = read == 0;
        filled_ += static_cast<std::size_t>(read);
        if (filled_ > limit_) return tooLarge();
    }
    return std::span(bytes_).first(filled_);
}

std::expected<std::vector<std::byte>, Failure> InputFile::all() && {
    if (const auto read = first(SIZE_MAX); !read) return std::unexpected(read.error());
    bytes_.resize(filled_);
    return std::move(bytes_);
}

std::optional<std::uint64_t> InputFile::size() const {
    if (ended_) return filled_;
    return expected_;
}

}  // namespace pictal::program
