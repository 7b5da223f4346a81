#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "pictal/InputFile.h"
#include "pictal/Outcome.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

/// Reading and writing pictures as commands do, and the options that say how.
namespace pictal::program {

/// Says on standard error what a file says about colour that could not be used.
void warnOfUnusedColor(const PNG::Info& info, const std::string& path);

/// Where a picture comes from and how large it may be. What is no PNG is refused after its first
/// bytes.
struct ImageInput {
    std::string path;
    std::int64_t maximumPixels = PNG::ReadLimits{}.maximumPixels;
    std::int64_t maximumBytes = InputFile::usualLimit;

    void addTo(CLI::App& command);
    /// Says on standard error what the file says about colour that could not be used.
    [[nodiscard]] std::expected<CGImage, Failure> read() const;
    /// The same in two steps: the file, and the picture that it holds.
    [[nodiscard]] std::expected<std::vector<std::byte>, Failure> readFile() const;
    [[nodiscard]] std::expected<CGImage, Failure> decode(std::span<const std::byte> file) const;

  private:
    [[nodiscard]] std::unexpected<Failure> refused(const PNG::ReadError& error,
                                                   std::string_view remedy = {}) const;
};

/// Where a picture goes and how it is compressed.
struct ImageOutput {
    std::string path;
    PNG::Compression compression = PNG::Compression::standard;

    /// @return the option that names the file; it is required unless it is told otherwise
    CLI::Option* addTo(CLI::App& command);
    [[nodiscard]] std::expected<void, Failure> write(const CGImage& image) const;
};

}  // namespace pictal::program
