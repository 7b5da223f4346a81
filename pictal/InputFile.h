#pragma once

#include "pictal/Descriptors.h"
#include "pictal/Outcome.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace pictal::program {

/// What inputs are called in messages: "standard input" for a dash, the path itself otherwise.
[[nodiscard]] std::string inputName(const std::string& path);

/// A file, pipe or device that is read as far as somebody wants to know it; "-" is standard input.
class InputFile {
  public:
    static constexpr std::uint64_t usualLimit = std::uint64_t{4} << 30;

    /// @param limit   a larger input is refused, at once where its size is known
    /// @param remedy  what the refusal adds about a way out
    [[nodiscard]] static std::expected<InputFile, Failure> open(const std::string& path,
                                                                std::uint64_t limit = usualLimit,
                                                                std::string remedy = {});

    /// At least so many bytes from the beginning; fewer only where the input ends before.
    [[nodiscard]] std::expected<std::span<const std::byte>, Failure> first(std::size_t count);
    [[nodiscard]] std::expected<std::vector<std::byte>, Failure> all() &&;

    /// How many bytes there are, where that is known: not for a pipe that is still open.
    [[nodiscard]] std::optional<std::uint64_t> size() const;

  private:
    InputFile(std::string name, std::uint64_t limit, std::string remedy)
        : name_(std::move(name)), limit_(limit), remedy_(std::move(remedy)) {}
    [[nodiscard]] std::unexpected<Failure> tooLarge() const;

    std::string name_;
    std::uint64_t limit_;
    std::string remedy_;
    Descriptor owned_;
    int descriptor_ = 0;
    /// What a regular file still has, from where it stands.
    std::optional<std::uint64_t> expected_;
    std::vector<std::byte> bytes_;
    std::size_t filled_ = 0;
    bool ended_ = false;
};

}  // namespace pictal::program
