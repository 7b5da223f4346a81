#include "PictalCore/Platform/Graphics/detail/LineSimplifier.h"
#include "Tests/Support/Reference/ExactCoverage.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace pictal::detail {
namespace {

std::vector<CGPoint> simplified(const std::vector<CGPoint>& points) {
    FlatPath flat;
    flat.add(points.front());
    LineSimplifier simplifier(flat);
    for (std::size_t i = 1; i < points.size(); ++i)
        simplifier.addLine(points[i - 1], points[i]);
    simplifier.finish();
    flat.finish(false);
    return {flat.points().begin(), flat.points().end()};
}

TEST(LineSimplifier, KeepsWhatMatters) {
    using Points = std::vector<CGPoint>;
    constexpr CGFloat tiny = LineSimplifier::tolerance * 0.9, visible = tiny * 2;
    const auto check = [](const char* name, const Points& points, const Points& want) {
        EXPECT_EQ(simplified(points), want) << name;
    };
    check("straight", {{0, 0}, {3, 1}, {6, 2}, {9, 3}}, {{0, 0}, {9, 3}});
    check("a corner", {{0, 0}, {3, 0}, {6, 1}}, {{0, 0}, {3, 0}, {6, 1}});
    check("an invisible corner", {{0, 0}, {5, tiny}, {10, 0}}, {{0, 0}, {10, 0}});
    check("a corner to either side", {{0, 0}, {5, visible}, {10, 0}, {15, -visible}, {20, 0}},
          {{0, 0}, {5, visible}, {15, -visible}, {20, 0}});
    check("back", {{0, 0}, {9, 0}, {4, 0}}, {{0, 0}, {9, 0}, {4, 0}});
    check("back beyond the start", {{0, 0}, {9, 0}, {-20, 0}}, {{0, 0}, {9, 0}, {-20, 0}});
    check("far and back", {{0, 0}, {1e17, 0}, {-2e17, 0}}, {{0, 0}, {1e17, 0}, {-2e17, 0}});
    check("back to the start", {{0, 0}, {9, 0}, {0, 0}}, {{0, 0}, {9, 0}, {0, 0}});
    check("a short step back", {{0, 0}, {9, 0}, {8.999, 0}, {20, 0}},
          {{0, 0}, {9, 0}, {8.999, 0}, {20, 0}});
    check("one line", {{0, 0}, {1, 0}}, {{0, 0}, {1, 0}});
    check("trembling in place", {{0, 0}, {tiny / 3, 0}, {0, tiny / 2}, {tiny, 0}},
          {{0, 0}, {tiny, 0}});
}

TEST(LineSimplifier, StaysWithinTheToleranceBothWays) {
    std::mt19937 random(3);
    std::normal_distribution<CGFloat> turn(0, 0.004);
    std::vector<CGPoint> points{{0, 0}};
    for (CGFloat angle = 0; points.size() < 2000;) {
        angle += turn(random);
        points.push_back(
            {points.back().x + 0.05 * std::cos(angle), points.back().y + 0.05 * std::sin(angle)});
    }
    const auto kept = simplified(points);
    EXPECT_LT(kept.size(), points.size() / 2);
    EXPECT_EQ(kept.front(), points.front());
    EXPECT_EQ(kept.back(), points.back());
    constexpr CGFloat most = LineSimplifier::tolerance * 1.0001;
    for (const CGPoint point : points)
        EXPECT_LE(test::distanceToPolyline(point, kept), most);
    for (std::size_t i = 1; i < kept.size(); ++i)
        for (int step = 0; step < 20; ++step) {
            const CGFloat t = step / 20.0;
            const CGPoint on{kept[i - 1].x + t * (kept[i].x - kept[i - 1].x),
                             kept[i - 1].y + t * (kept[i].y - kept[i - 1].y)};
            EXPECT_LE(test::distanceToPolyline(on, points), most);
        }
}

}  // namespace
}  // namespace pictal::detail
