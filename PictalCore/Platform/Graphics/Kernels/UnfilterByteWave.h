#pragma once

#include "PictalCore/Platform/Graphics/Kernels/UnfilterWave.h"

/// Eight rows of pixels of one byte at once and in place, for UnfilterRows.cpp: as in
/// UnfilterWave.h, but a row needs one component of a vector only.
namespace pictal::kernels::wave {

/// Eight rows of eight bytes as eight columns, and back.
PICTAL_BODY void transpose(Bytes8 (&rows)[8]) {
    const auto interleaved = [](Bytes8 a, Bytes8 b) {
        return __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15);
    };
    const auto lower = [](Bytes16 v) {
        return __builtin_shufflevector(v, v, 0, 1, 2, 3, 4, 5, 6, 7);
    };
    const auto upper = [](Bytes16 v) {
        return __builtin_shufflevector(v, v, 8, 9, 10, 11, 12, 13, 14, 15);
    };
    // Taken three times, that of i and i + 4 puts bit 0 of a byte's place where bit 2 was.
    for (int round = 0; round < 3; ++round) {
        Bytes8 next[8];
        for (std::size_t i = 0; i < 4; ++i) {
            const Bytes16 both = interleaved(rows[i], rows[i + 4]);
            next[2 * i] = lower(both);
            next[2 * i + 1] = upper(both);
        }
        for (std::size_t i = 0; i < 8; ++i)
            rows[i] = next[i];
    }
}

class ByteWave {
  public:
    PICTAL_BODY ByteWave(std::uint8_t* first, std::size_t step, std::size_t count,
                         const std::uint8_t* above)
        : first_(first), step_(step), count_(count), above_(above) {
        for (std::size_t i = 0; i < unfilteredAtOnce; ++i)
            masks_.set(i, first[i * step]);
    }

    PICTAL_BODY void run() {
        constexpr std::size_t batch = 8;
        const std::size_t steps = count_ + unfilteredAtOnce - 1;
        std::size_t t = 0;
        for (; t < unfilteredAtOnce && t < steps; t += batch)
            take<true>(t);
        for (; t + batch <= count_; t += batch)
            take<false>(t);
        for (; t < steps; t += batch)
            take<true>(t);
    }

  private:
    [[nodiscard]] PICTAL_BODY std::uint8_t* row(std::size_t i) const {
        return first_ + i * step_ + 1;
    }
    /// The bytes of row i at steps t to t + 7; at the edges zeros outside the row.
    template <bool edge>
    [[nodiscard]] PICTAL_BODY Bytes8 load(std::size_t i, std::size_t t) const {
        Bytes8 bytes{};
        if constexpr (!edge)
            std::memcpy(&bytes, row(i) + (t - i), sizeof bytes);
        else
            for (std::size_t j = 0; j < 8; ++j)
                if (t + j >= i && t + j - i < count_) bytes[j] = row(i)[t + j - i];
        return bytes;
    }
    template <bool edge>
    PICTAL_BODY void store(Bytes8 bytes, std::size_t i, std::size_t t) const {
        if constexpr (!edge)
            std::memcpy(row(i) + (t - i), &bytes, sizeof bytes);
        else
            for (std::size_t j = 0; j < 8; ++j)
                if (t + j >= i && t + j - i < count_) row(i)[t + j - i] = bytes[j];
    }

    template <bool edge>
    PICTAL_BODY void take(std::size_t t) {
        Bytes8 steps[8];
        for (std::size_t i = 0; i < 8; ++i)
            steps[i] = load<edge>(i, t);
        transpose(steps);
        for (std::size_t j = 0; j < 8; ++j) {
            const std::uint8_t aboveOne = !edge || t + j < count_ ? above_[t + j] : 0;
            Pair up = __builtin_shufflevector(left_, left_, 0, 0, 1, 2, 3, 4, 5, 6);
            up[0] = aboveOne;
            const Pair stored = __builtin_convertvector(steps[j], Pair);
            left_ = sum(stored, prediction<true>(left_, up, upLeft_, masks_));
            upLeft_ = up;
            steps[j] = __builtin_convertvector(left_, Bytes8);
        }
        transpose(steps);
        for (std::size_t i = 0; i < 8; ++i)
            store<edge>(steps[i], i, t);
    }

    std::uint8_t* first_;
    std::size_t step_;
    std::size_t count_;
    const std::uint8_t* above_;
    Masks<Pair> masks_ = {};
    Pair left_ = {};
    Pair upLeft_ = {};
};

}  // namespace pictal::kernels::wave
