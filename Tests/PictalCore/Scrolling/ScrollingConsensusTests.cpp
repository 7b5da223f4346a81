#include "PictalCore/Scrolling/ScrollingConsensus.h"

#include <limits>
#include <ostream>

#include <gtest/gtest.h>

namespace pictal {

void PrintTo(const ImageTranslation& t, std::ostream* out) {
    *out << "(" << t.x << ", " << t.y << ", " << t.confidence << ")";
}

namespace ScrollingConsensus {

namespace {

using Bands = std::vector<ImageTranslation>;

Bands bandsAt(const std::vector<double>& offsets, float confidence = 0.5F) {
    Bands bands;
    for (const double y : offsets)
        bands.push_back({0, y, confidence});
    return bands;
}

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST(ScrollingConsensus, CutsAFrameIntoBands) {
    const auto tops = [](std::int64_t height, std::int64_t bandHeight) {
        std::vector<std::int64_t> result;
        for (const Band& band : comparisonBands(height)) {
            EXPECT_EQ(band.height, bandHeight) << height;
            result.push_back(band.top);
        }
        return result;
    };
    using Tops = std::vector<std::int64_t>;
    EXPECT_EQ(tops(900, 600), (Tops{0, 75, 150, 225, 300}));
    EXPECT_EQ(tops(1800, 1200), (Tops{0, 150, 300, 450, 600}));
    EXPECT_EQ(tops(100, 80), (Tops{0, 5, 10, 15, 20}));
    EXPECT_EQ(tops(901, 600), (Tops{0, 75, 151, 226, 301}));  // 150.5 and 225.75
    EXPECT_EQ(tops(81, 80), (Tops{0, 1}));                    // 0, 0.25, 0.5, 0.75, 1
    EXPECT_EQ(tops(80, 80), (Tops{0}));
    EXPECT_EQ(tops(60, 60), (Tops{0}));
    EXPECT_EQ(tops(1, 1), (Tops{0}));
    EXPECT_EQ(tops(0, 0), Tops{});
    const auto huge = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(comparisonBands(huge).front().height, huge / 3 * 2);  // 2^63 − 1 leaves 1 by 3
}

TEST(ScrollingConsensus, FindsTheLargestGroup) {
    const auto offsets = [](const Bands& bands, std::int64_t minimum) -> std::vector<double> {
        const auto group = largestAgreeingGroup(bands, minimum);
        if (!group) return {-1};
        std::vector<double> result;
        for (const auto& member : *group)
            result.push_back(member.y);
        return result;
    };
    using Offsets = std::vector<double>;
    EXPECT_EQ(offsets(bandsAt({10, 50, 13, 52}), 2), (Offsets{10, 13})) << "the first of equals";
    EXPECT_EQ(offsets(bandsAt({10, 50, 13, 52, 53}), 2), (Offsets{50, 52, 53}));
    EXPECT_EQ(offsets(bandsAt({10, 13, 16}), 3), (Offsets{10, 13, 16})) << "around the middle one";
    EXPECT_EQ(offsets(bandsAt({10, 13.001, 16}), 2), (Offsets{13.001, 16}))
        << "a group of one comes first and is replaced";
    EXPECT_EQ(offsets(bandsAt({10, 20}), 2), (Offsets{-1}));
    EXPECT_EQ(offsets({}, 0), Offsets{});
    EXPECT_EQ(offsets({}, 1), (Offsets{-1}));
}

TEST(ScrollingConsensus, AveragesInSinglePrecision) {
    EXPECT_EQ(mean({}), std::nullopt);
    const Bands group{{1, -10, 0.1F}, {2, -11, 0.2F}, {0, -10.5, 0.7F}};
    EXPECT_EQ(mean(group), (ImageTranslation{1, -10.5, (0.1F + 0.2F + 0.7F) / 3.0F}));
}

TEST(ScrollingConsensus, Accepts) {
    using Answer = std::optional<ImageTranslation>;
    const auto check = [](const char* name, const Bands& bands, const Answer& whole,
                          const Answer& want) {
        EXPECT_EQ(accepted(bands, whole, 1000), want) << name;
    };
    constexpr auto none = std::nullopt;
    check("nothing at all", {}, none, none);
    check("four agree, however unsure", bandsAt({-99, -100, -100, -101, 7}, 0.01F), none,
          ImageTranslation{0, -100, 0.01F});
    check("three sure ones", {{0, 9, 0.8F}, {3, 9, 0.8F}, {0, 9, 0.8F}}, none,
          ImageTranslation{1, 9, (0.8F + 0.8F + 0.8F) / 3});
    const Bands oneUnsure{{0, 59, 0.79F}, {0, 60, 0.81F}, {0, 61, 0.81F}};
    const float three = (0.79F + 0.81F + 0.81F) / 3;
    check("three, one of them unsure", oneUnsure, none, none);
    check("confirmed by the whole", oneUnsure, ImageTranslation{0, 62, 0.85F},
          ImageTranslation{0, 60, three});
    check("confirmed by an unsurer whole", oneUnsure, ImageTranslation{0, 63, 0.8F},
          ImageTranslation{0, 60, 0.8F});
    check("the whole is too unsure", oneUnsure, ImageTranslation{0, 60, 0.799F}, none);
    check("the whole is 4 away", oneUnsure, ImageTranslation{0, 64, 0.85F}, none);
    check("4 away and sure", oneUnsure, ImageTranslation{0, 64, 0.9F},
          ImageTranslation{0, 64, 0.9F});
    check("a whole alone", {}, ImageTranslation{0, 64, 0.9F}, ImageTranslation{0, 64, 0.9F});
    check("just below", {}, ImageTranslation{0, 64, 0.8999999F}, none);
    check("two bands count for nothing", bandsAt({5, 5}, 1), ImageTranslation{0, 5, 0.89F}, none);
    check("sideways bands are left out", {{3.5, 9, 1}, {0, 9, 1}, {-3.001, 9, 1}, {3, 9, 1}}, none,
          none);
    check("bands out of sight", bandsAt({851, 851, 851, 851}, 1), none, none);
    check("bands just in sight", bandsAt({-850, -850, -850, -850}, 1), none,
          ImageTranslation{0, -850, 1});
    check("a whole out of sight", {}, ImageTranslation{0, 851, 1}, none);
    check("a sideways whole", {}, ImageTranslation{-4, 100, 1}, none);
    check("NaN", {{nan, 9, 1}, {0, nan, 1}, {0, 9, 1}, {0, 9, 1}}, ImageTranslation{0, nan, 1},
          none);
}

TEST(ScrollingConsensus, Classifies) {
    using Analysis = ScrollingFrameAnalysis;
    const auto of = [](double y, float confidence = 1) {
        return classified(ImageTranslation{0, y, confidence});
    };
    EXPECT_EQ(classified(std::nullopt), Analysis::noReliableMatch());
    EXPECT_EQ(of(0), Analysis::unchanged());
    EXPECT_EQ(of(-3), Analysis::unchanged());
    EXPECT_EQ(of(3.4), Analysis::shifted(3, 0));
    EXPECT_EQ(of(3.5), Analysis::shifted(4, 0));
    EXPECT_EQ(of(-7.5), Analysis::shifted(-8, 0));
    // In double precision 1 − 0.9 would be below 0.1 by 2e-17, in single it is above by 2e-8.
    EXPECT_EQ(of(120, 0.9F), Analysis::shifted(120, static_cast<double>(1.0F - 0.9F)));
    EXPECT_NE(of(120, 0.9F), Analysis::shifted(120, 1 - static_cast<double>(0.9F) + 1e-12));
    EXPECT_EQ(of(nan), Analysis::noReliableMatch());
    EXPECT_EQ(of(1e300), Analysis::noReliableMatch());
    EXPECT_EQ(of(50).as<Analysis::Shifted>()->verticalOffset, 50);
    EXPECT_EQ(of(50).as<Analysis::Unchanged>(), nullptr);
}

}  // namespace ScrollingConsensus
}  // namespace pictal
