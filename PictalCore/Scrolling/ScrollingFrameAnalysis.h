#pragma once

#include <cstdint>
#include <variant>

namespace pictal {

/// What became of the content between two frames.
struct ScrollingFrameAnalysis {
    /// It moved vertically.
    struct Shifted {
        /// Pixels, positive downward: content that moved up by 120 pixels reads −120.
        std::int64_t verticalOffset = 0;
        /// 1 − the confidence of the measurement: 0 is a perfect match, larger is worse.
        double score = 0;

        friend constexpr bool operator==(const Shifted&, const Shifted&) = default;
    };
    /// It stayed where it was, give or take three pixels.
    struct Unchanged {
        friend constexpr bool operator==(Unchanged, Unchanged) = default;
    };
    /// No measurement could be trusted.
    struct NoReliableMatch {
        friend constexpr bool operator==(NoReliableMatch, NoReliableMatch) = default;
    };

    std::variant<NoReliableMatch, Unchanged, Shifted> value;

    [[nodiscard]] static constexpr ScrollingFrameAnalysis shifted(std::int64_t verticalOffset,
                                                                  double score) {
        return {Shifted{verticalOffset, score}};
    }
    [[nodiscard]] static constexpr ScrollingFrameAnalysis unchanged() { return {Unchanged{}}; }
    [[nodiscard]] static constexpr ScrollingFrameAnalysis noReliableMatch() {
        return {NoReliableMatch{}};
    }

    /// The case, or null when it is another one.
    template <class Case>
    [[nodiscard]] constexpr const Case* as() const {
        return std::get_if<Case>(&value);
    }

    friend constexpr bool operator==(const ScrollingFrameAnalysis&,
                                     const ScrollingFrameAnalysis&) = default;
};

}  // namespace pictal
