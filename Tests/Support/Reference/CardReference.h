#pragma once

#include "PictalCore/Styling/ScreenshotStyle.h"

#include <algorithm>
#include <array>
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
        : width_(width),
          height_(height),
          padding_(padding),
          radius_(std::min(std::max(style.cornerRadius, 0.0),
                           static_cast<double>(std::min(width, height)) / 2)),
          through_(static_cast<std::size_t>(canvasWidth() * canvasHeight()), 1.0) {
        constexpr std::array<double, 3> lower{0.32, 1, 1.55}, blur{0.45, 1, 1.45},
            share{0.46, 1, 0.38};
        for (std::size_t i = 0; i < 3; ++i)
            addLayer(style.shadow.offsetX, style.shadow.offsetY * lower[i],
                     style.shadow.blur * blur[i] / 2,
                     style.shadow.opacity * share[i] * style.shadow.color.alpha);
    }

    [[nodiscard]] std::int64_t canvasWidth() const { return width_ + 2 * padding_; }
    [[nodiscard]] std::int64_t canvasHeight() const { return height_ + 2 * padding_; }

    /// The shadow's alpha, 0…1, with the ring cut out.
    [[nodiscard]] double shadow(std::int64_t x, std::int64_t y) const {
        const double ring = roundedCoverage(x, y, 2, radius_ > 0 ? radius_ + 2 : 0);
        return (1 - through_[static_cast<std::size_t>(y * canvasWidth() + x)]) * (1 - ring);
    }
    /// How much the picture's outline covers of a pixel of the canvas, 0…1.
    [[nodiscard]] double outline(std::int64_t x, std::int64_t y) const {
        return roundedCoverage(x, y, 0, radius_);
    }

  private:
    struct Chord {
        double top, bottom, left, right;
    };

    /// @param density  chords a pixel where the outline is round
    [[nodiscard]] std::vector<Chord> chords(int density) const {
        std::vector<Chord> all;
        const auto width = static_cast<double>(width_);
        const auto height = static_cast<double>(height_);
        const int count = static_cast<int>(std::ceil(radius_ * density));
        const double thickness = count > 0 ? radius_ / count : 0;
        for (int i = 0; i < count; ++i) {
            const double up = radius_ - (i + 0.5) * thickness;
            const double inset = radius_ - std::sqrt(radius_ * radius_ - up * up);
            const double top = i * thickness;
            all.push_back({top, top + thickness, inset, width - inset});
            all.push_back({height - top - thickness, height - top, inset, width - inset});
        }
        all.push_back({radius_, height - radius_, 0, width});
        return all;
    }

    /// The share of a Gaussian around x that lies in from…to.
    static double between(double x, double from, double to, double deviation) {
        const double far = 8 * deviation;  // where doubles tell no difference
        if (x < from - far || x >= to + far) return 0;
        if (x >= from + far && x < to - far) return 1;
        const double scale = deviation * std::sqrt(2.0);
        return (std::erf((to - x) / scale) - std::erf((from - x) / scale)) / 2;
    }

    void addLayer(double dx, double dy, double deviation, double alpha) {
        // No point lies on the edge of a chord.
        const int points = deviation < 4 ? (deviation < 1 ? 24 : 5) : 2;
        const std::vector<Chord> all = chords(deviation < 1 ? 47 : 17);
        const auto columns = static_cast<std::size_t>(canvasWidth());
        // The mean over each column of every chord's blur along the row, and likewise down.
        const auto means = [&](double shift, std::int64_t pixels, auto from, auto to) {
            std::vector<std::vector<double>> table;
            for (const Chord& chord : all) {
                std::vector<double>& row = table.emplace_back();
                for (std::int64_t i = 0; i < pixels; ++i) {
                    double sum = 0;
                    for (int p = 0; p < points; ++p) {
                        const double at = static_cast<double>(i - padding_) + (p + 0.5) / points;
                        sum += between(at - shift, chord.*from, chord.*to, deviation);
                    }
                    row.push_back(sum / points);
                }
            }
            return table;
        };
        const auto across = means(dx, canvasWidth(), &Chord::left, &Chord::right);
        const auto down = means(dy, canvasHeight(), &Chord::top, &Chord::bottom);
        std::vector<double> blurred(through_.size());
        for (std::size_t c = 0; c < all.size(); ++c)
            for (std::size_t y = 0; y < down[c].size(); ++y)
                for (std::size_t x = 0; x < columns && down[c][y] > 0; ++x)
                    blurred[y * columns + x] += across[c][x] * down[c][y];
        for (std::size_t i = 0; i < through_.size(); ++i)
            through_[i] *= 1 - alpha * blurred[i];
    }

    /// The pixel, in 512 slices where the outline is round, in the rounded rectangle that is
    /// `margin` larger on every side.
    [[nodiscard]] double roundedCoverage(std::int64_t pixelX, std::int64_t pixelY, double margin,
                                         double radius) const {
        const double left = static_cast<double>(pixelX - padding_) + margin;
        const double top = static_cast<double>(pixelY - padding_) + margin;
        const double width = static_cast<double>(width_) + 2 * margin;
        const double height = static_cast<double>(height_) + 2 * margin;
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

    std::int64_t width_, height_, padding_;
    double radius_;
    std::vector<double> through_;
};

}  // namespace pictal
