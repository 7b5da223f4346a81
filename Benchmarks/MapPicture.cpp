#include "Benchmarks/DrawnPictures.h"
#include "Benchmarks/SampleText.h"
#include "PictalCore/Platform/Graphics/BitmapContext.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace pictal {

namespace {

CGColor colorOf(std::uint32_t rgb) {
    return {static_cast<double>(rgb >> 16 & 255) / 255, static_cast<double>(rgb >> 8 & 255) / 255,
            static_cast<double>(rgb & 255) / 255, 1};
}

CGPoint anywhere(Dice& dice) {
    return {static_cast<double>(dice.below(Canvas::width)),
            static_cast<double>(dice.below(Canvas::height))};
}

/// A closed outline around a centre, rough as fields and woods are.
Path blob(Dice& dice, CGPoint center, double radius) {
    Path path;
    const auto corners = static_cast<int>(7 + dice.below(8));
    for (int i = 0; i < corners; ++i) {
        const double angle = 2 * std::numbers::pi * i / corners;
        const double r = radius * (0.6 + static_cast<double>(dice.below(60)) / 100);
        const CGPoint point{center.x + r * std::cos(angle), center.y + r * std::sin(angle)};
        i == 0 ? path.moveTo(point) : path.lineTo(point);
    }
    path.close();
    return path;
}

/// A line that wanders off.
Path road(Dice& dice, CGPoint from, int pieces, double step) {
    Path path;
    path.moveTo(from);
    double angle = static_cast<double>(dice.below(628)) / 100;
    for (int i = 0; i < pieces; ++i) {
        angle += static_cast<double>(dice.below(101) - 50) / 80;
        const CGPoint middle{from.x + step / 2 * std::cos(angle),
                             from.y + step / 2 * std::sin(angle)};
        from = {middle.x + step / 2 * std::cos(angle), middle.y + step / 2 * std::sin(angle)};
        path.quadCurveTo(middle, from);
    }
    return path;
}

void drawRoads(BitmapContext& context, const Path& roads, double width, std::uint32_t casing,
               std::uint32_t color) {
    context.setLineWidth(width + 2);
    context.setStrokeColor(colorOf(casing));
    context.stroke(roads);
    context.setLineWidth(width);
    context.setStrokeColor(colorOf(color));
    context.stroke(roads);
}

void drawLand(BitmapContext& context, Dice& dice) {
    context.setFillColor(colorOf(0xF2EFE9));
    context.fill(CGRect{0, 0, Canvas::width, Canvas::height});
    constexpr std::array<std::uint32_t, 6> kinds{0xCDEBB0, 0xADD19E, 0xEEF0D5,
                                                 0xE0DFDF, 0xAAD3DF, 0xF7E2B5};
    for (int i = 0; i < 260; ++i) {
        context.setFillColor(colorOf(kinds[static_cast<std::size_t>(dice.below(6))]));
        context.fill(blob(dice, anywhere(dice), 40 + static_cast<double>(dice.below(160))));
    }
    context.setStrokeColor(colorOf(0xAAD3DF));
    context.setLineWidth(46);
    context.stroke(road(dice, {0, 900}, 40, 110));
}

void drawTown(BitmapContext& context, Dice& dice) {
    Path houses, streets, highways;
    for (int town = 0; town < 26; ++town) {
        const CGPoint center = anywhere(dice);
        for (int i = 0; i < 230; ++i) {
            const double x =
                center.x + static_cast<double>(dice.below(300) + dice.below(300) - 300);
            const double y =
                center.y + static_cast<double>(dice.below(300) + dice.below(300) - 300);
            houses.addRect({x, y, 6 + static_cast<double>(dice.below(16)),
                            6 + static_cast<double>(dice.below(14))});
        }
        for (int i = 0; i < 16; ++i)
            streets.addPath(road(dice, center, 12, 36));
    }
    for (int i = 0; i < 24; ++i)
        highways.addPath(road(dice, anywhere(dice), 30, 90));
    context.setFillColor(colorOf(0xD9D0C9));
    context.fill(houses);
    context.setStrokeColor(colorOf(0xB9A99C));
    context.setLineWidth(1);
    context.stroke(houses);
    drawRoads(context, streets, 6, 0xCFCDCA, 0xFFFFFF);
    drawRoads(context, highways, 11, 0xC8A35A, 0xFCD6A4);
}

/// Heights between 0 and 1 that change over so many pixels.
double noise(std::int64_t x, std::int64_t y, std::int64_t period, std::uint32_t seed) {
    const auto corner = [=](std::int64_t i, std::int64_t j) {
        std::uint32_t h = seed + static_cast<std::uint32_t>(i * 374761393 + j * 668265263);
        h = (h ^ h >> 13) * 1274126177;
        return static_cast<double>((h ^ h >> 16) & 0xFFFF) / 65535;
    };
    const auto eased = [](double t) { return t * t * (3 - 2 * t); };
    const double u = eased(static_cast<double>(x % period) / static_cast<double>(period));
    const double v = eased(static_cast<double>(y % period) / static_cast<double>(period));
    const std::int64_t i = x / period, j = y / period;
    return std::lerp(std::lerp(corner(i, j), corner(i + 1, j), u),
                     std::lerp(corner(i, j + 1), corner(i + 1, j + 1), u), v);
}

/// Light from the upper left: darker where the land falls away from it.
double shade(std::int64_t x, std::int64_t y) {
    const auto height = [](std::int64_t i, std::int64_t j) {
        return 90 * noise(i, j, 240, 1) + 30 * noise(i, j, 80, 2) + 9 * noise(i, j, 27, 3);
    };
    return std::clamp(1 + (height(x + 3, y + 3) - height(x, y)) * 0.04, 0.75, 1.06);
}

}  // namespace

CGImage mapPicture() {
    Dice dice(4);
    auto context = BitmapContext::make(Canvas::width, Canvas::height, CGColorSpace::sRGB()).value();
    drawLand(context, dice);
    drawTown(context, dice);
    const CGImage drawn = std::move(context).makeImage();
    Canvas canvas;
    for (std::int64_t y = 0; y < Canvas::height; ++y)
        for (std::int64_t x = 0; x < Canvas::width; ++x) {
            // In steps of a fiftieth, as the tiles of map services have it.
            const double factor = std::round(shade(x, y) * 50) / 50;
            const std::uint32_t pixel = drawn.row(y)[static_cast<std::size_t>(x)];
            std::uint32_t shaded = 0xFF000000;
            for (int shift = 0; shift < 24; shift += 8)
                shaded |= static_cast<std::uint32_t>(
                              std::min(255.0, std::round((pixel >> shift & 255) * factor)))
                          << shift;
            canvas.at(x, y) = shaded;
        }
    const SampleText& text = SampleText::instance();
    for (int i = 0; i < 420; ++i) {
        const SampleText::Word& word = text.anyWord(dice);
        const std::int64_t x = dice.below(Canvas::width), y = dice.below(Canvas::height);
        for (const auto& [dx, dy] : {std::pair(-2, 0), {2, 0}, {0, -2}, {0, 2}})
            SampleText::draw(canvas, word, x + dx, y + dy, 0xFFFFFFFF);
        SampleText::draw(canvas, word, x, y, 0xFF333333);
    }
    return canvas.image();
}

}  // namespace pictal
