#pragma once

#include "Benchmarks/DrawnPictures.h"

namespace pictal {

/// Numbers that are the same everywhere.
class Dice {
  public:
    explicit Dice(std::uint32_t seed) : state_(seed) {}
    [[nodiscard]] std::int64_t below(std::int64_t limit) {
        state_ = state_ * 1664525 + 1013904223;
        return static_cast<std::int64_t>(
            (std::uint64_t{state_} * static_cast<std::uint64_t>(limit)) >> 32);
    }

  private:
    std::uint32_t state_;
};

/// Letters with the antialiasing of real text, cut out of the bundled screenshot at their gaps.
class SampleText {
  public:
    struct Letter {
        std::int64_t width = 0;
        std::int64_t height = 0;
        std::vector<std::uint8_t> coverage;
    };
    using Word = std::vector<const Letter*>;

    [[nodiscard]] static const SampleText& instance();

    /// A vocabulary, the common words first.
    [[nodiscard]] const std::vector<Word>& words() const { return words_; }
    [[nodiscard]] const Word& anyWord(Dice& dice) const;

    /// @return where the next letter would begin
    /// @param cell  the width of every letter; 0: each has its own
    static std::int64_t draw(Canvas& canvas, const Word& word, std::int64_t x, std::int64_t y,
                             std::uint32_t color, std::int64_t cell = 0);

  private:
    SampleText();
    void cutLine(std::int64_t left, std::int64_t top, std::int64_t right);

    std::vector<Letter> letters_;
    std::vector<Word> words_;
};

}  // namespace pictal
