#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/PageFrames.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace pictal {
namespace {

using JSON = nlohmann::json;

/// A folder with frames of a page, f0.png and so on, and a way to run the program there.
struct ScrollingCommands : ::testing::Test {
    TemporaryFolder folder;
    PageFrames page{400, 300, 21};

    void write(const std::string& name, const CGImage& image) const {
        std::ofstream(folder / name, std::ios::binary) << textOf(PNG::write(image).value());
    }
    [[nodiscard]] CGImage read(const std::string& name) const {
        return PNG::read(bytesOf(contents(folder / name))).value();
    }
    [[nodiscard]] Process::Result run(const std::string& line) const {
        return Process{.arguments = words(line), .folder = folder.path()}.run();
    }
    void writeFrames(const std::vector<std::int64_t>& tops) const {
        for (std::size_t i = 0; i < tops.size(); ++i)
            write("f" + std::to_string(i) + ".png", page.frame(tops[i]));
    }
    [[nodiscard]] static std::vector<std::string> places(const std::string& json) {
        std::vector<std::string> result;
        const JSON document = JSON::parse(json);
        for (const JSON& frame : document.at("frames"))
            result.push_back(frame.at("position").is_null() ? "-" : frame.at("position").dump());
        return result;
    }
};

}  // namespace

TEST_F(ScrollingCommands, OffsetTellsTheWayOfTheContent) {
    writeFrames({0, 120, 120});
    write("other.png", PageFrames(400, 300, 22).frame(0));
    const auto text = run("offset f0.png f1.png");
    EXPECT_EQ(text.status, 0);
    EXPECT_TRUE(text.output.starts_with("shifted -120 (score 0.0")) << text.output;
    const JSON json = JSON::parse(run("offset f1.png f0.png --json --explain").output);
    EXPECT_EQ(json.at("outcome"), "shifted");
    EXPECT_EQ(json.at("verticalOffset"), 120);
    EXPECT_EQ(json.at("bands").size(), 5U);
    EXPECT_EQ(json.at("wholeFrame").at("y"), 120.0);
    EXPECT_EQ(run("offset f1.png f2.png").output, "unchanged\n");
    const auto none = run("offset f0.png other.png --json");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(JSON::parse(none.output), (JSON{{"outcome", "noReliableMatch"}}));
    write("small.png", *page.frame(0).cropping({0, 0, 399, 300}));
    const auto sizes = run("offset f0.png small.png");
    EXPECT_EQ(sizes.status, 2);
    EXPECT_NE(sizes.error.find("400 × 300"), std::string::npos) << sizes.error;
}

TEST_F(ScrollingCommands, StitchPutsThePageTogether) {
    writeFrames({50, 170, 170, 100, 290, 400});
    const auto result = run("stitch f0.png f1.png f2.png f3.png f4.png f5.png -o long.png --json");
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(places(result.output),
              (std::vector<std::string>{"0", "120", "-", "50", "240", "350"}));
    PageFrames tall(400, 650, 21);
    EXPECT_TRUE(picturesAgree(read("long.png"), tall.frame(50)));
    EXPECT_TRUE(result.error.starts_with("pictal: f2.png: left out: ")) << result.error;
}

TEST_F(ScrollingCommands, StitchKeepsHeaderAndFooterOnce) {
    page.header = 40;
    page.footer = 30;
    writeFrames({0, 90, 180});
    ASSERT_EQ(run("stitch f0.png f1.png f2.png -o long.png --quiet").status, 0);
    PageFrames whole(400, 480, 21);
    const CGImage have = read("long.png");
    ASSERT_EQ(have.height(), 480);
    const auto rows = [](const CGImage& image, CGFloat y, CGFloat height) {
        return *image.cropping({0, y, 400, height});
    };
    EXPECT_TRUE(picturesAgree(rows(have, 0, 40), rows(page.frame(0), 0, 40)));
    EXPECT_TRUE(picturesAgree(rows(have, 40, 410), rows(whole.frame(0), 40, 410)));
    EXPECT_TRUE(picturesAgree(rows(have, 450, 30), rows(page.frame(180), 270, 30)));
}

TEST_F(ScrollingCommands, StitchLeavesOutWhatDoesNotMatch) {
    writeFrames({0, 100, 200, 300});
    write("other.png", PageFrames(400, 300, 22).frame(0));
    write("small.png", *page.frame(0).cropping({0, 0, 400, 299}));
    const std::string frames = "stitch f0.png other.png f1.png small.png f2.png -o long.png --json";
    const auto loose = run(frames);
    EXPECT_EQ(loose.status, 0);
    EXPECT_EQ(places(loose.output), (std::vector<std::string>{"0", "-", "100", "-", "200"}));
    EXPECT_EQ(read("long.png").height(), 500);

    std::filesystem::remove(folder / "long.png");
    EXPECT_EQ(run(frames + " --strict").status, 1);
    EXPECT_FALSE(std::filesystem::exists(folder / "long.png"));
}

TEST_F(ScrollingCommands, StitchKeepsTheLongestRun) {
    writeFrames({0, 100});
    const PageFrames other(400, 300, 23);
    for (int i = 0; i < 3; ++i)
        write("g" + std::to_string(i) + ".png", other.frame(150 * i));
    const auto result = run("stitch f0.png f1.png g0.png g1.png g2.png -o long.png --json --quiet");
    EXPECT_EQ(places(result.output), (std::vector<std::string>{"-", "-", "0", "150", "300"}));
    EXPECT_TRUE(picturesAgree(read("long.png"), PageFrames(400, 600, 23).frame(0)));
    EXPECT_EQ(result.error, "");
}

TEST_F(ScrollingCommands, StitchTakesPositions) {
    write("a.png", pictureOf(3, 4, [](auto, auto) { return 0xFF0000FF; }));
    write("b.png", pictureOf(2, 4, [](auto, auto) { return 0x80000080; }));
    ASSERT_EQ(run("stitch a.png b.png -o long.png --positions -1,2").status, 0);
    const PictureProbe probe(read("long.png"));
    EXPECT_EQ(read("long.png").height(), 7);
    EXPECT_EQ(probe.pixel(0, 2), 0xFF0000FFU);
    EXPECT_EQ(probe.pixel(0, 3), 0xFF0000FFU) << "red half over red";
    EXPECT_EQ(probe.pixel(1, 4), 0x80000080U);
    EXPECT_EQ(probe.pixel(2, 6), 0U);
}

TEST_F(ScrollingCommands, StitchRefuses) {
    writeFrames({0, 100});
    const auto check = [&](const std::string& line, int status, const std::string& part) {
        const auto result = run("stitch " + line);
        EXPECT_EQ(result.status, status) << line;
        EXPECT_NE(result.error.find(part), std::string::npos) << result.error;
        EXPECT_FALSE(std::filesystem::exists(folder / "long.png")) << line;
    };
    check("f0.png - -o long.png", 2, "standard input");
    check("f0.png f1.png -o - --json", 2, "standard output");
    check("f0.png f1.png -o long.png --positions 1", 2, "1 places for 2 frames");
    check("f0.png f1.png -o long.png --positions 1,x", 2, "\"x\"");
    check("f0.png f1.png -o long.png --positions 0,9223372036854775807", 2, "taller than");
    check("f0.png f1.png -o long.png --max-height 399", 2, "taller than 399 rows");
    check("f0.png gone.png -o long.png", 2, "gone.png");
    check("f0.png f1.png -o nowhere/long.png", 2, "nowhere");
    EXPECT_EQ(run("stitch f0.png f1.png -o long.png --max-height 400").status, 0);
}

}  // namespace pictal
