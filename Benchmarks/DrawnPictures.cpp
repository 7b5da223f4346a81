#include "Benchmarks/DrawnPictures.h"

#include "Benchmarks/SampleText.h"
#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "Tests/Support/SampleScreenshot.h"

#include <array>

namespace pictal {

void Canvas::blend(std::int64_t x, std::int64_t y, std::uint32_t color, std::uint32_t coverage) {
    if (!contains(x, y) || coverage == 0) return;
    std::uint32_t& pixel = at(x, y);
    std::uint32_t mixed = 0xFF000000;
    for (int shift = 0; shift < 24; shift += 8)
        mixed |= kernels::divideBy255((color >> shift & 255) * coverage +
                                      (pixel >> shift & 255) * (255 - coverage))
                 << shift;
    pixel = mixed;
}

CGImage Canvas::image() const {
    return CGImage::fromBytes(std::as_bytes(std::span(pixels_)), {width, height, width * 4},
                              CGColorSpace::sRGB())
        .value();
}

CGImage terminalPicture() {
    constexpr std::array<std::uint32_t, 8> colors{0xFFD4D4D4, 0xFFD4D4D4, 0xFFA8C97F, 0xFFE0AF68,
                                                  0xFFF7A27A, 0xFF8E8EF7, 0xFFC586C0, 0xFF7F7F7F};
    constexpr std::int64_t cell = 17, line = 36, margin = 22;
    const SampleText& text = SampleText::instance();
    Canvas canvas(0xFF2E1E1E);
    Dice dice(2);
    for (std::int64_t y = margin; y + line <= Canvas::height; y += line) {
        // Most lines are short, some fill the window, some are empty.
        const std::int64_t end = margin + dice.below(12) * dice.below(23) * cell;
        for (std::int64_t x = margin; x < end;) {
            const SampleText::Word& word = text.anyWord(dice);
            const auto next = x + static_cast<std::int64_t>(word.size()) * cell;
            if (next > Canvas::width - margin) break;
            x = cell + SampleText::draw(canvas, word, x, y,
                                        colors[static_cast<std::size_t>(dice.below(8))], cell);
        }
    }
    return canvas.image();
}

CGImage articlePicture() {
    constexpr std::int64_t left = 660, right = 2220, leading = 56, space = 12;
    const SampleText& text = SampleText::instance();
    Canvas canvas(0xFFFFFFFF);
    Dice dice(3);
    const auto line = [&](std::int64_t from, std::int64_t to, std::int64_t y, std::uint32_t color) {
        for (std::int64_t x = from; x < to;)
            x = space + SampleText::draw(canvas, text.anyWord(dice), x, y, color);
    };
    // The photograph takes the middle, paragraphs the rest, links the margin.
    constexpr std::int64_t photographTop = 620, photographHeight = 530;
    for (std::int64_t y = 0; y < photographHeight; ++y)
        for (std::int64_t x = 0; x < 900; ++x)
            canvas.at(left + 330 + x, photographTop + y) =
                sampleScreenshot().row(284 + y)[static_cast<std::size_t>(522 + x)];
    for (std::int64_t y = 60; y + leading < Canvas::height; y += leading) {
        const bool besidePhotograph =
            y + leading > photographTop && y < photographTop + photographHeight;
        const std::int64_t kind = dice.below(9);
        if (!besidePhotograph && kind > 0)
            line(left, kind == 1 ? (left + right) / 2 : right - 150, y, 0xFF332E2A);
        if (dice.below(3) > 0) line(60, 60 + dice.below(320), y, 0xFFB0602A);
    }
    return canvas.image();
}

}  // namespace pictal
