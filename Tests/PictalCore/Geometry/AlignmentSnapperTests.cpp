#include "PictalCore/Geometry/AlignmentSnapper.h"
#include "Tests/Support/GeometryText.h"

#include <gtest/gtest.h>

namespace pictal {

constexpr CGRect screen{0, 0, 1000, 800};

template <class Shape>
std::string snapped(const Shape& shape, const CGRect& container = screen, CGFloat tolerance = 8) {
    const auto [to, guides] = AlignmentSnapper::snap(shape, container, tolerance);
    return text(to) + " " + std::to_string(guides.rawValue);
}

TEST(AlignmentSnapper, SnapsPoints) {
    EXPECT_EQ(snapped(CGPoint{492, 392}), "(500, 400) 3") << "at exactly the tolerance";
    EXPECT_EQ(snapped(CGPoint{508.125, 391.875}), "(508.125, 391.875) 0") << "just beyond it";
    EXPECT_EQ(snapped(CGPoint{501, 400}, screen, -4), "(501, 400) 2") << "negative tolerance";
    EXPECT_EQ(snapped(CGPoint{500, 401}, screen, nan), "(500, 401) 1") << "no tolerance";
    EXPECT_EQ(snapped(CGPoint{-715, 5}, {-1440, -900, 1440, 900}), "(-720, 5) 1");
    EXPECT_EQ(snapped(CGPoint{1, 400}, {0, 0, nan, 800}), "(1, 400) 0");
}

TEST(AlignmentSnapper, SnapsRectangles) {
    EXPECT_EQ(snapped(CGRect{547, 422, -101, -51}), "(449, 374, 102, 52) 3") << "odd sizes";
    // 104 + 46.2 - 46.2 is a hair below 104, and 10 + 6.15 - 6.15 below 10.
    EXPECT_EQ(snapped(CGRect{104, 10, 92.4, 12.3}), "(103, 9, 94, 14) 0");
    EXPECT_EQ(snapped(CGRect{3, -2, 1000, 800}), "(0, 0, 1000, 800) 3") << "as large";
    EXPECT_EQ(snapped(CGRect{1001.5, 0.5, -1001, 20}), "(0.5, 0.5, 1001, 20) 0") << "too wide";
    EXPECT_EQ(snapped(CGRect{450.5, 0, 100, 801}), "(450.5, 0, 100, 801) 0") << "too tall";
    EXPECT_EQ(snapped(CGRect{450.5, 400, 100, 0}), "(450.5, 400, 100, 0) 0") << "no height";
}

}  // namespace pictal
