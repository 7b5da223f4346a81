#include "PictalCore/Platform/Foundation/Files.h"
#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/PNGBuilder.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace pictal {
namespace {

using namespace kernels;

/// A folder with pictures in it, and a way to run the program there.
struct PickCommand : ::testing::Test {
    TemporaryFolder folder;

    void write(const char* name, std::span<const std::byte> bytes) {
        std::ofstream(folder / name, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
    void write(const char* name, const CGImage& image) { write(name, PNG::write(image).value()); }
    [[nodiscard]] Process::Result run(const std::string& line) const {
        return Process{.arguments = words(line), .folder = folder.path()}.run();
    }
};

TEST_F(PickCommand, SaysTheColourOfAPixel) {
    write("in.png", pictureOf(4, 3, [](auto x, auto y) {
              return x == 3 ? premultiplied(pixelOf(255, 0, 0, 128)) : pixelOf(255, 64 * y, 0, 255);
          }));
    const auto check = [&](const char* line, const std::string& output, const char* error = "") {
        const auto result = run(line);
        EXPECT_EQ(result.status, 0) << line;
        EXPECT_EQ(result.output, output) << line;
        EXPECT_EQ(result.error, error) << line;
    };
    check("pick in.png 1 2", "#FF8000\tRGB(255, 128, 0)\tOrange\n");
    check("pick in.png 0.99 1.5", "#FF4000\tRGB(255, 64, 0)\tOrange\n");
    check("pick in.png 0 0 --encoding displayP3", "#EA3323\tRGB(234, 51, 35)\tRed\n");
    check("pick in.png 3 0", "#800000\tRGB(128, 0, 0)\tRed\talpha 128, values premultiplied\n");
    check("pick in.png -7 99", "#FF8000\tRGB(255, 128, 0)\tOrange\n",
          "pictal: -7, 99 is outside the picture; this is 0, 2\n");

    const auto json = nlohmann::json::parse(run("pick in.png 1 0 --json --encoding native").output);
    const auto want = nlohmann::json::parse(R"json({"x": 1, "y": 0, "encoding": "native",
        "color": {"red": 1, "green": 0, "blue": 0, "alpha": 1}, "nearestName": "Red",
        "hex": "#FF0000", "rgb": "RGB(255, 0, 0)"})json");
    EXPECT_EQ(json, want);
    for (const char* wrong : {"pick in.png 1", "pick in.png 1 x", "pick in.png 1 nan",
                              "pick in.png 1 2 --encoding srgb", "pick in.png 1 2 --loupe 9",
                              "pick in.png 1 2 -o l.png", "pick in.png 1 2 --loupe 0 -o l.png",
                              "pick in.png 1 2 --loupe 9 -o -", "pick none.png 1 2"})
        EXPECT_EQ(run(wrong).status, 2) << wrong;
}

TEST_F(PickCommand, WarnsOfColourThatCouldNotBeUsed) {
    write("pq.png", PNGBuilder(1, 1, 2, 8).chunk("cICP", {9, 16, 0, 1}).rows({0, 1, 2, 3}).build());
    const auto result = run("pick pq.png 0 0");
    EXPECT_EQ(run("info pq.png").error, result.error);
    EXPECT_EQ(result.output, "#010203\tRGB(1, 2, 3)\tBlack\n");
    EXPECT_EQ(result.error,
              "pictal: pq.png: its colours may be wrong: cICP with PQ could not be used\n");
}

TEST_F(PickCommand, DrawsTheLoupe) {
    const CGImage image =
        pictureOf(20, 20, [](auto x, auto y) { return pixelOf(200, 10 * x, 10 * y, 255); });
    write("in.png", image);
    ASSERT_EQ(run("pick in.png 1 10 --loupe 5 -o loupe.png").status, 0);
    // (240 - 4) / 5 = 47 pixels a square; the crop begins at column 0 and row 8.
    const auto bytes = readFile(folder / "loupe.png").value();
    const CGImage drawn = PNG::read(bytes).value();
    const PictureProbe loupe(drawn);
    EXPECT_EQ(drawn.width(), 5 * 47 + 4);
    EXPECT_EQ(drawn.height(), 5 * 47 + 4);
    for (std::uint32_t row = 0; row < 5; ++row)
        for (std::uint32_t column = 0; column < 5; ++column)
            EXPECT_EQ(
                loupe.pixel(static_cast<int>(column * 48 + 20), static_cast<int>(row * 48 + 20)),
                pixelOf(200, 10 * column, 10 * (row + 8), 255));
    EXPECT_EQ(loupe.pixel(200, 47), 0xFF808080U) << "a line";
    EXPECT_EQ(loupe.pixel(47, 120), 0xFF000000U) << "the frame, on the line left of the centre";
    EXPECT_EQ(loupe.pixel(48, 120), 0xFFFFFFFFU) << "and white within";
    EXPECT_EQ(loupe.pixel(49, 120), pixelOf(200, 10, 100, 255));
}

}  // namespace
}  // namespace pictal
