#include "Benchmarks/SampleText.h"

#include "Tests/Support/SampleScreenshot.h"

#include <algorithm>

namespace pictal {

namespace {

constexpr std::int64_t lineHeight = 36;

int green(std::int64_t x, std::int64_t y) {
    return static_cast<int>(sampleScreenshot().row(y)[static_cast<std::size_t>(x)] >> 8 & 255);
}

}  // namespace

SampleText::SampleText() {
    // The line below the title, then the cameras and the notes of the list.
    cutLine(512, 199, 1400);
    for (std::int64_t row = 0; row < 7; ++row) {
        cutLine(881, 1204 + row * 1593 / 20, 1130);
        cutLine(2368, 1204 + row * 1593 / 20, 2780);
    }
    Dice dice(1);
    for (int i = 0; i < 400; ++i) {
        Word& word = words_.emplace_back();
        for (std::int64_t length = 1 + dice.below(5) + dice.below(6); length > 0; --length)
            word.push_back(&letters_[static_cast<std::size_t>(dice.below(
                static_cast<std::int64_t>(std::min<std::size_t>(letters_.size(), 90))))]);
    }
}

const SampleText& SampleText::instance() {
    static const SampleText text;
    return text;
}

void SampleText::cutLine(std::int64_t left, std::int64_t top, std::int64_t right) {
    const int ground = green(left - 4, top);
    int ink = ground;
    for (std::int64_t x = left; x < right; ++x)
        for (std::int64_t y = top; y < top + lineHeight; ++y)
            ink = std::min(ink, green(x, y));
    const auto coverage = [=](std::int64_t x, std::int64_t y) {
        return std::max(0, ground - green(x, y)) * 255 / std::max(1, ground - ink);
    };
    const auto isBlank = [=](std::int64_t x) {
        for (std::int64_t y = top; y < top + lineHeight; ++y)
            if (coverage(x, y) > 8) return false;
        return true;
    };
    for (std::int64_t start = left; start < right; ++start) {
        if (isBlank(start)) continue;
        std::int64_t end = start;
        while (end < right && !isBlank(end))
            ++end;
        Letter letter{end - start, lineHeight, {}};
        for (std::int64_t y = top; y < top + lineHeight; ++y)
            for (std::int64_t x = start; x < end; ++x)
                letter.coverage.push_back(static_cast<std::uint8_t>(coverage(x, y)));
        if (letter.width < 24) letters_.push_back(std::move(letter));
        start = end;
    }
}

const SampleText::Word& SampleText::anyWord(Dice& dice) const {
    const auto count = static_cast<std::int64_t>(words_.size());
    return words_[static_cast<std::size_t>(std::min(dice.below(count), dice.below(count)))];
}

std::int64_t SampleText::draw(Canvas& canvas, const Word& word, std::int64_t x, std::int64_t y,
                              std::uint32_t color, std::int64_t cell) {
    for (const Letter* letter : word) {
        const std::int64_t left = cell == 0 ? x : x + (cell - letter->width) / 2;
        std::size_t i = 0;
        for (std::int64_t j = 0; j < letter->height; ++j)
            for (std::int64_t k = 0; k < letter->width; ++k)
                canvas.blend(left + k, y + j, color, letter->coverage[i++]);
        x += cell == 0 ? letter->width + 3 : cell;
    }
    return x;
}

}  // namespace pictal
