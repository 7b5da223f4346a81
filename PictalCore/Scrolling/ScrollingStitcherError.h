#pragma once

#include <cstdint>
#include <variant>

namespace pictal {

/// Why frames could not be stitched or a strip not be copied.
class ScrollingStitcherError {
  public:
    /// A strip of so many rows was asked for: none, or more than there are.
    struct InvalidVerticalOffset {
        std::int64_t height = 0;
        friend constexpr bool operator==(InvalidVerticalOffset, InvalidVerticalOffset) = default;
    };
    /// The result would have more rows than `maximum`, or more than can be counted.
    struct OutputTooTall {
        std::int64_t maximum = 0;
        friend constexpr bool operator==(OutputTooTall, OutputTooTall) = default;
    };
    /// There is nothing to stitch.
    struct NoFrames {
        friend constexpr bool operator==(NoFrames, NoFrames) = default;
    };
    /// The strip is no part of the picture.
    struct CannotCropFrame {
        friend constexpr bool operator==(CannotCropFrame, CannotCropFrame) = default;
    };
    /// The result is empty, larger than pictures may be, or does not fit memory.
    struct CannotCreateContext {
        friend constexpr bool operator==(CannotCreateContext, CannotCreateContext) = default;
    };
    /// The colours of a frame cannot be converted to sRGB.
    struct CannotCreateImage {
        friend constexpr bool operator==(CannotCreateImage, CannotCreateImage) = default;
    };

    [[nodiscard]] static constexpr ScrollingStitcherError invalidVerticalOffset(
        std::int64_t height) {
        return ScrollingStitcherError(InvalidVerticalOffset{height});
    }
    [[nodiscard]] static constexpr ScrollingStitcherError outputTooTall(std::int64_t maximum) {
        return ScrollingStitcherError(OutputTooTall{maximum});
    }
    [[nodiscard]] static constexpr ScrollingStitcherError noFrames() {
        return ScrollingStitcherError(NoFrames{});
    }
    [[nodiscard]] static constexpr ScrollingStitcherError cannotCropFrame() {
        return ScrollingStitcherError(CannotCropFrame{});
    }
    [[nodiscard]] static constexpr ScrollingStitcherError cannotCreateContext() {
        return ScrollingStitcherError(CannotCreateContext{});
    }
    [[nodiscard]] static constexpr ScrollingStitcherError cannotCreateImage() {
        return ScrollingStitcherError(CannotCreateImage{});
    }

    /// The case, or null when it is another one.
    template <class Case>
    [[nodiscard]] constexpr const Case* as() const {
        return std::get_if<Case>(&value_);
    }

    friend constexpr bool operator==(const ScrollingStitcherError&,
                                     const ScrollingStitcherError&) = default;

  private:
    using Value = std::variant<InvalidVerticalOffset, OutputTooTall, NoFrames, CannotCropFrame,
                               CannotCreateContext, CannotCreateImage>;
    explicit constexpr ScrollingStitcherError(const Value& value) : value_(value) {}

    Value value_;
};

}  // namespace pictal
