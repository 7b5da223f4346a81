#include "PictalCore/Platform/ImageIO/detail/PNGStripWriter.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

namespace pictal::detail {
namespace {

constexpr std::size_t width = 200;

/// A strip of a ground with some columns of other colours in each row.
class Strip {
  public:
    /// @param colorOf  a colour that is the ground's alpha and something else
    Strip(std::size_t rowCount, std::size_t columns, auto&& colorOf)
        : pixels_(rowCount * width, 0xFF646464) {
        for (std::size_t y = 0; y < rowCount; ++y) {
            for (std::size_t i = 0; i < columns; ++i)
                pixels_[y * width + 2 * i + y % 2] = colorOf(y, i);
            rows_.push_back(std::span(pixels_).subspan(y * width, width));
        }
    }

    [[nodiscard]] bool isDrawn(PNG::ColorType type) const {
        return PNGStripWriter(width, type).isDrawn(rows_);
    }
    /// Whether all rows, or any, have a filter.
    [[nodiscard]] std::size_t filteredRows(PNG::ColorType type) const {
        PNGStripWriter writer(width, type);
        std::vector<std::uint8_t> bytes(writer.rowBytes() * rows_.size());
        writer.filter(rows_, bytes.data());
        std::size_t count = 0;
        for (std::size_t at = 0; at < bytes.size(); at += writer.rowBytes())
            count += bytes[at] != 0 ? 1U : 0U;
        return count;
    }

  private:
    std::vector<std::uint32_t> pixels_;
    std::vector<PNGStripWriter::Row> rows_;
};

std::uint32_t newColor(std::size_t y, std::size_t i) {
    return 0xFF646465 + static_cast<std::uint32_t>(y * 256 + i);
}

TEST(PNGStripWriter, AStripIsDrawnWhenUnderTwelveInAHundredPixelsAreFresh) {
    using enum PNG::ColorType;
    for (const std::size_t rowCount : {1U, 2U, 3U, 7U, 16U})
        for (const auto type : {rgb, rgba}) {
            const auto name = std::to_string(rowCount) + " rows";
            // In the first row the ground is fresh once.
            EXPECT_TRUE(Strip(rowCount, 22, newColor).isDrawn(type)) << name;
            EXPECT_EQ(Strip(rowCount, 22, newColor).filteredRows(type), 0U) << name;
            EXPECT_FALSE(Strip(rowCount, 24, newColor).isDrawn(type)) << name;
            EXPECT_EQ(Strip(rowCount, 24, newColor).filteredRows(type), rowCount) << name;
        }
}

TEST(PNGStripWriter, OfColoursThatComeAgainAQuarterMayDifferFromTheirNeighbours) {
    const auto fewColors = [](std::size_t y, std::size_t i) {
        return 0xFF646465 + static_cast<std::uint32_t>((y + i) % 7 * 1000);
    };
    // Each of them, and the ground on its right.
    EXPECT_TRUE(Strip(16, 24, fewColors).isDrawn(PNG::ColorType::rgb));
    EXPECT_FALSE(Strip(16, 26, fewColors).isDrawn(PNG::ColorType::rgb));
    EXPECT_TRUE(Strip(16, 39, fewColors).isDrawn(PNG::ColorType::grey));
    EXPECT_FALSE(Strip(16, 41, fewColors).isDrawn(PNG::ColorType::grey));
}

}  // namespace
}  // namespace pictal::detail
