#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Graphics/CGImage.h"

#include <cstdint>
#include <memory>
#include <optional>

/// Translational registration of screen contents: which shift carries one picture onto another.
namespace pictal {

/// The shift that carries the target onto the reference: pixels to the right and downward.
struct RegisteredTranslation {
    double x = 0;
    double y = 0;
    /// High for a clean match, low for an ambiguous one; never below `leastConfidence`.
    float confidence = 0;
};

class PICTAL_API ImageRegistration {
  public:
    /// Below it the answer is none: a guess with little confidence still counts as a voice where
    /// several are asked.
    static constexpr float leastConfidence = 0.5F;

    struct Options {
        /// A vertical displacement that is not considered, to see what is believed without it.
        std::optional<std::int64_t> withheld;
    };

    /// Reads both pictures once; the questions below do not read them again.
    /// @param reference, target  of the same size, at least one pixel
    ImageRegistration(const CGImage& reference, const CGImage& target, const Options& options);
    ImageRegistration(const CGImage& reference, const CGImage& target);
    ImageRegistration(ImageRegistration&&) noexcept;
    ImageRegistration& operator=(ImageRegistration&&) noexcept;
    ~ImageRegistration();

    /// The shift of the whole picture.
    [[nodiscard]] std::optional<RegisteredTranslation> whole() const;
    /// The shift of `height` rows from `top` on of both pictures, measured as if there were no
    /// others, but for what the whole picture says of candidates and of what stands still.
    [[nodiscard]] std::optional<RegisteredTranslation> rows(std::int64_t top,
                                                            std::int64_t height) const;

    /// Rows at the top and at the bottom that are the same in both pictures, almost throughout.
    [[nodiscard]] std::int64_t stillRowsAtTop() const;
    [[nodiscard]] std::int64_t stillRowsAtBottom() const;

  private:
    struct Impl;
    std::unique_ptr<const Impl> impl_;
};

}  // namespace pictal
