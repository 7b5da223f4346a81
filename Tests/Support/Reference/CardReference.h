#pragma once

#include "PictalCore/Styling/ScreenshotStyle.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace pictal {

/// What a card's canvas holds besides the picture, in double precision and the obvious way: the
/// outline is a stack of thin chords, every chord is blurred by itself, and every pixel is the mean
/// over many points.
class CardReference {
  public:
    /// @param padding  the margin around the picture, width × height
    CardReference(std::int64_t width, std::int64_t height, std::int64_t padding,
                  const ScreenshotStyle& style)
        : width_(static_cast<double>(width)),
          height_(static_cast<double>(height)),
          padding_(static_cast<double>(padding)),
          radius_(std::clamp(style.cornerRadius, 0.0, std::min(width_, height_) / 2)),
          columns_(static_cast<std::size_t>(width + 2 * padding)),
          rows_(static_cast<std::size_t>(height + 2 * padding)),
          through_(columns_ * rows_, 1.0) {
        constexpr double lower[]{0.32, 1, 1.55}, blur[]{0.45, 1, 1.45}, share[]{0.46, 1, 0.38};
        for (int i = 0; i < 3; ++i)
            addLayer(style.shadow.offsetX, style.shadow.offsetY * lower[i],
                     style.shadow.blur * blur[i] / 2,
                     style.shadow.opacity * share[i] * style.shadow.color.alpha);
    }

    /// The shadow's alpha at a pixel of the canvas, 0…1, with the ring cut out.
    double shadow(std::int64_t x, std::int64_t y) const {
        const double ring = roundedCoverage(x, y, 2, radius_ > 0 ? radius_ + 2 : 0);
        const std::size_t pixel = static_cast<std::size_t>(y) * columns_;
        return (1 - through_[pixel + static_cast<std::size_t>(x)]) * (1 - ring);
    }
    /// How much the picture's outline covers of a pixel of the canvas, 0…1.
    double outline(std::int64_t x, std::int64_t y) const {
        return roundedCoverage(x, y, 0, radius_);
    }

  private:
    /// The share of a Gaussian around x that lies in from…to.
    static double between(double x, double from, double to, double deviation) {
        const double far = 8 * deviation;  // where doubles tell no difference
        if (x < from - far || x >= to + far) return 0;
        if (x >= from + far && x < to - far) return 1;
        const double scale = deviation * std::sqrt(2.0);
        return (std::erf((to - x) / scale) - std::erf((from - x) / scale)) / 2;
    }

    void addLayer(double dx, double dy, double deviation, double alpha) {
        const int points = deviation < 1 ? 24 : deviation < 4 ? 5 : 2;  // none on a chord's edge
        const int chords = static_cast<int>(std::ceil(radius_ * (deviation < 1 ? 47 : 17)));
        // The mean over every column, or row, of what is from…to.
        const auto means = [&](std::size_t pixels, double from, double to) {
            std::vector<double> all(pixels);
            for (std::size_t i = 0; i < pixels; ++i)
                for (int p = 0; p < points; ++p)
                    all[i] += between(static_cast<double>(i) - padding_ + (p + 0.5) / points, from,
                                      to, deviation) /
                              points;
            return all;
        };
        std::vector<double> blurred(through_.size());
        const auto addChord = [&](double top, double bottom, double inset) {  // and its mirror
            const auto across = means(columns_, dx + inset, dx + width_ - inset);
            const auto upper = means(rows_, dy + top, dy + bottom);
            const auto lower = means(rows_, dy + height_ - bottom, dy + height_ - top);
            for (std::size_t y = 0; y < rows_; ++y)
                for (std::size_t x = 0; x < columns_ && upper[y] + lower[y] > 0; ++x)
                    blurred[y * columns_ + x] += across[x] * (upper[y] + lower[y]);
        };
        addChord(radius_, height_ / 2, 0);
        for (int i = 0; i < chords; ++i) {
            const double thickness = radius_ / chords, up = radius_ - (i + 0.5) * thickness;
            addChord(i * thickness, (i + 1) * thickness,
                     radius_ - std::sqrt(radius_ * radius_ - up * up));
        }
        for (std::size_t i = 0; i < through_.size(); ++i)
            through_[i] *= 1 - alpha * blurred[i];
    }

    /// The pixel, in 512 slices where the outline is round, in the rounded rectangle that is
    /// `margin` larger on every side.
    double roundedCoverage(std::int64_t pixelX, std::int64_t pixelY, double margin,
                           double radius) const {
        const double left = static_cast<double>(pixelX) - padding_ + margin;
        const double top = static_cast<double>(pixelY) - padding_ + margin;
        const double width = width_ + 2 * margin, height = height_ + 2 * margin;
        if (left <= -1 || left >= width || top <= -1 || top >= height) return 0;
        const bool round =
            std::min(left, width - left - 1) < radius && std::min(top, height - top - 1) < radius;
        const int slices = round ? 512 : 1;
        double covered = 0;
        for (int i = 0; i < slices; ++i) {
            const double x = left + (i + 0.5) / slices;
            if (x < 0 || x > width) continue;
            const double toArc = std::max(radius - std::min(x, width - x), 0.0);
            const double inset = radius - std::sqrt(radius * radius - toArc * toArc);
            covered += std::max(std::min(top + 1, height - inset) - std::max(top, inset), 0.0);
        }
        return covered / slices;
    }

    double width_, height_, padding_, radius_;
    std::size_t columns_, rows_;
    std::vector<double> through_;
};

}  // namespace pictal
