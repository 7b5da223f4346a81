#include "Tests/Support/GeometryLaws.h"
#include "Tests/Support/GeometryText.h"

#include <random>

#include <gtest/gtest.h>

namespace pictal {
namespace {

constexpr unsigned seed = 20240607;

/// Arguments that lie near one another often enough for every branch to be taken.
class Numbers {
  public:
    CGFloat whole(CGFloat least, CGFloat most) {
        return std::floor(least + (most - least + 1) * share_(random_));
    }
    CGFloat eighths(CGFloat least, CGFloat most) { return whole(least * 8, most * 8) / 8; }
    CGRect rect(CGFloat most) {
        return {whole(-900, 900), whole(-900, 900), whole(1, most), whole(1, most)};
    }
    CGSize sizeUpTo(const CGRect& rect) {
        return {whole(1, rect.width()), whole(1, rect.height())};
    }
    /// In fractions, at least as large as `least`.
    CGRect inside(const CGRect& outer, CGSize least) {
        const CGFloat width = least.width + (outer.width() - least.width) * share_(random_);
        const CGFloat height = least.height + (outer.height() - least.height) * share_(random_);
        const CGRect rect{outer.minX() + (outer.width() - width) * share_(random_),
                          outer.minY() + (outer.height() - height) * share_(random_), width,
                          height};
        return laws::isInside(rect, outer) ? rect : outer;  // unless rounding passed an edge
    }
    CGFloat movement() {
        constexpr std::array special{infinity, -infinity, std::numeric_limits<CGFloat>::max(), nan};
        const auto pick = static_cast<std::size_t>(whole(0, 40));
        return pick < special.size() ? special[pick] : eighths(-1500, 1500);
    }

  private:
    std::mt19937 random_{seed};
    std::uniform_real_distribution<CGFloat> share_{0, 1};
};

TEST(GeometryLaws, HoldForArgumentsOfManyKinds) {
    Numbers numbers;
    for (int round = 0; round < 20'000; ++round) {
        const CGRect container = numbers.rect(1500);
        const CGSize least = numbers.sizeUpTo(container);
        const CGSize way{numbers.movement(), numbers.movement()};
        const CGRect rect = numbers.inside(container, least);
        const CGRect other = numbers.rect(400);
        const CGRect eighths{container.minX() + numbers.eighths(-20, container.width()),
                             container.minY() + numbers.eighths(-20, container.height()),
                             least.width / 8, least.height / 8};
        const CGPoint point{other.maxX() + numbers.whole(-25, 25),
                            other.minY() + numbers.whole(-25, 25)};
        const CGFloat number = numbers.eighths(-5, 60);

        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round) + ": " +
                     text(container) + text(least) + text(way) + text(rect) + text(other) +
                     text(eighths) + text(point) + text({number}));
        ASSERT_TRUE(laws::adjustmentStaysInside(rect, way, container, least));
        ASSERT_TRUE(laws::snapsWithinTolerance(eighths, container, number));
        ASSERT_TRUE(laws::mappingIsInverse(rect.integral(), container));
        ASSERT_TRUE(laws::panelStaysInside({way.width, way.height}, least, container, number));
        ASSERT_TRUE(laws::pinnedFrameStaysVisible(other, way, container,
                                                  std::min(least.width, least.height)));
        ASSERT_TRUE(laws::cornersDoNotMatter(other, container, point));
    }
}

}  // namespace
}  // namespace pictal
