#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"

#include <gtest/gtest.h>

namespace pictal::detail {
namespace {

TEST(PixelBuffer, PadsOnlyRowsThatGainByIt) {
    for (const auto& [width, stride] : {std::pair(1, 1),
                                        {3, 3},
                                        {255, 255},
                                        {256, 256},
                                        {257, 272},
                                        {2880, 2880},
                                        {2881, 2896}}) {
        const auto buffer = PixelBuffer::make(width, 2, PixelBuffer::Contents::undefined);
        ASSERT_TRUE(buffer) << width;
        EXPECT_EQ(buffer->stride(), stride) << width;
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer->pixels()) % 64, 0U) << width;
    }
}

TEST(PixelBuffer, EverySizeStartsTransparentWithRoomForItsRows) {
    // Below and above what is mapped, just over and just under a half huge page behind whole ones.
    for (const auto& [width, height] : {std::pair<std::int64_t, std::int64_t>(1, 3),
                                        {17, 5},
                                        {2880, 1800},
                                        {8'000'000, 2},
                                        {1024, 1280 - 1},
                                        {1024, 1280 + 1}}) {
        auto buffer = PixelBuffer::make(width, height, PixelBuffer::Contents::transparent);
        ASSERT_TRUE(buffer);
        for (std::int64_t y = 0; y < height; ++y) {
            const auto row = buffer->row(y);
            ASSERT_EQ(row.front() | row.back(), 0U) << width << " x " << height << ", row " << y;
            row.front() = row.back() = 1;
        }
    }
}

TEST(PixelBuffer, RefusesWhatIsNoPictureOrTooLarge) {
    const auto allocates = [](std::int64_t width, std::int64_t height) {
        return PixelBuffer::make(width, height, PixelBuffer::Contents::undefined).has_value();
    };
    EXPECT_TRUE(allocates(maximumSide, 1) && allocates(1, maximumSide));
    EXPECT_FALSE(allocates(maximumSide + 1, 1) || allocates(1, maximumSide + 1));
    EXPECT_FALSE(allocates(0, 1) || allocates(1, 0) || allocates(-1, -1));
    EXPECT_FALSE(allocates(50'000, 50'000));  // 10 GB
}

}  // namespace
}  // namespace pictal::detail
