#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"
#include "pictal/Outcome.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Finding the places of captured frames in one long picture.
namespace pictal::program {

/// A frame as it is now, and a number that tells whether its file is the same later.
struct FrameFile {
    CGImage image;
    std::uint64_t fingerprint = 0;

    [[nodiscard]] static std::expected<FrameFile, Failure> read(const std::string& path);
};

/// What became of a frame.
struct FramePlace {
    std::string path;
    /// The row of its top; none when it is left out.
    std::optional<std::int64_t> position;
    /// Why it is left out.
    std::string reason;
    /// It shows nothing that the frame before does not.
    bool isRepetition = false;
    std::uint64_t fingerprint = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool isOpaque = false;
};

struct FrameSequence {
    /// In the order they were given.
    std::vector<FramePlace> frames;
    /// Rows of every frame that stay while the content scrolls.
    std::int64_t header = 0;
    std::int64_t footer = 0;

    /// Matches each frame with the last one that has a place. One that does not match is left out;
    /// three in a row that match one another begin a new run, and the run with most frames is kept.
    /// @param advance  called after each frame
    [[nodiscard]] static std::expected<FrameSequence, Failure> matched(
        const std::vector<std::string>& paths, const std::function<void()>& advance);
    /// Takes the places as they are given, one a frame.
    [[nodiscard]] static std::expected<FrameSequence, Failure> placed(
        const std::vector<std::string>& paths, const std::vector<std::int64_t>& positions,
        const std::function<void()>& advance);
};

}  // namespace pictal::program
