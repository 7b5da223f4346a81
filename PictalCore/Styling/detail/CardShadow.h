#pragma once

#include "PictalCore/Styling/ShadowStyle.h"
#include "PictalCore/Styling/detail/BlurredCard.h"
#include "PictalCore/Styling/detail/CardOutline.h"
#include "PictalCore/Styling/detail/RoundedMask.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace pictal::detail {

/// The shadow around a card, ready to be copied into its canvas row by row. Its layers are composed
/// in floating point and rounded once. It ends at a ring of two pixels around the outline: the ring
/// is wider than the diagonal of a pixel, so no pixel has both shadow and picture.
class CardShadow {
  public:
    CardShadow(const ShadowStyle& style, const CardOutline& outline);

    /// Premultiplied pixels: those at the two ends of the row, and the one that fills it in
    /// between.
    struct Row {
        std::span<const std::uint32_t> left;
        std::uint32_t between = 0;
        std::span<const std::uint32_t> right;
    };
    /// Row y of the canvas, from the top. What it points to lasts until the next call.
    [[nodiscard]] Row row(std::int64_t y);

  private:
    struct Layer {
        float opacity = 0;
        BlurredCard blurred;
    };

    /// What the ring leaves of the shadow at the left end of row y.
    void computeRing(std::int64_t y);
    void computeRow(std::int64_t y);
    /// Composes row y of the layers, from their column `begin` on.
    void compose(const std::vector<Layer>& layers, std::int64_t y, std::int64_t begin,
                 std::span<std::uint32_t> pixels);

    CardOutline outline_;
    RoundedMask ring_;
    std::array<float, 3> color_{};
    std::int64_t columns_ = 0;  // at each end of a row; in between nothing changes
    std::int64_t rows_ = 0;     // likewise at the top and the bottom
    std::vector<Layer> leftLayers_;
    std::vector<Layer> rightLayers_;  // none where the right is the mirror image of the left

    std::int64_t computedRow_ = -1;
    Row computed_;
    std::vector<float> outsideRing_, coverage_, through_;
    std::vector<std::uint32_t> left_, right_;
};

}  // namespace pictal::detail
