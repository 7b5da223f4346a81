#include "PictalCore/Annotation/AnnotationRenderer.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Styling/TransparentImageRenderer.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/mount.h>
#include <sys/stat.h>

namespace pictal {
namespace {

namespace fs = std::filesystem;

const char* const arrow =
    R"({"tool": "arrow", "geometry": {"line": {"start": [4, 4], "end": [30, 20]}}, "style": {
        "stroke": {"red": 1, "green": 0, "blue": 0, "alpha": 1},
        "fill": {"red": 0, "green": 0, "blue": 0, "alpha": 0}, "lineWidth": 3, "opacity": 1,
        "fontSize": 18, "textOutline": {"red": 0, "green": 0, "blue": 0, "alpha": 0}}})";

CGImage picture() {
    return pictureOf(40, 30, [](std::int64_t x, std::int64_t y) {
        return kernels::pixelOf(static_cast<std::uint32_t>(x * 6),
                                static_cast<std::uint32_t>(y * 8), 100, 255);
    });
}

CGImage decoded(const std::string& bytes) {
    return PNG::read(std::as_bytes(std::span(bytes))).value();
}

/// A folder with a picture and an annotation in it, and a way to run the program there.
struct PictureCommands : ::testing::Test {
    TemporaryFolder folder;

    PictureCommands() {
        write("in.png", textOf(PNG::write(picture()).value()));
        write("arrow.json", arrow);
    }

    void write(const fs::path& name, const std::string& text) const {
        std::ofstream(folder / name, std::ios::binary) << text;
    }
    [[nodiscard]] CGImage read(const fs::path& name) const {
        return decoded(contents(folder / name));
    }
    [[nodiscard]] Process::Result run(const std::string& line,
                                      const std::string& input = {}) const {
        return Process{.arguments = words(line), .input = input, .folder = folder.path()}.run();
    }
};

TEST_F(PictureCommands, AnnotateAndExportMakeThePicturesOfTheLibrary) {
    const auto annotation = decodeJSON<ScreenshotAnnotation>(arrow).value();
    const CGImage annotated =
        AnnotationRenderer().render(picture(), std::vector{annotation}).value();
    const CGImage card =
        TransparentImageRenderer().render(annotated, ScreenshotStyle::presentationCard).value();

    const auto first = run("annotate in.png --annotations arrow.json -o a.png");
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.output + first.error, "");
    EXPECT_TRUE(picturesAgree(read("a.png"), annotated));

    // The same as a list, through pipes on both sides.
    write("list.json", "[" + std::string(arrow) + "]");
    const auto piped = run("annotate - --annotations list.json -o -", contents(folder / "in.png"));
    EXPECT_EQ(piped.status, 0) << piped.error;
    EXPECT_TRUE(picturesAgree(decoded(piped.output), annotated));
    const auto exported = run("export - -o - --compression fast", piped.output);
    EXPECT_TRUE(picturesAgree(decoded(exported.output), card));
}

TEST_F(PictureCommands, ExportTakesAStyleAndChangesToIt) {
    write("style.json", R"({"cornerRadius": 3, "shadow": {"blur": 9, "offsetX": 1, "offsetY": 2,
        "opacity": 0.5, "color": {"red": 0, "green": 0, "blue": 0, "alpha": 1}}})");
    const auto result =
        run("export in.png -o card.png --style style.json --shadow-blur 4 "
            "--shadow-offset -3,-.5 --shadow-opacity 7 --shadow-color #204060");
    EXPECT_EQ(result.status, 0) << result.error;
    const ShadowStyle shadow(4, -3, -0.5, 1, RGBAColor(32 / 255.0, 64 / 255.0, 96 / 255.0, 1));
    const ScreenshotStyle style(3, shadow, BackgroundStyle::transparent,
                                ScreenshotCardEffect::presentation);
    EXPECT_TRUE(picturesAgree(read("card.png"),
                              TransparentImageRenderer().render(picture(), style).value()));
}

TEST_F(PictureCommands, ExportLeavesTheNumbersOfAStyleAsTheyAre) {
    write("style.json", R"({"shadow": {"blur": 9, "offsetX": 1, "offsetY": 2, "opacity": 2,
        "color": {"red": 0, "green": 0, "blue": 0, "alpha": 0.3}}})");
    const auto style = decodeJSON<ScreenshotStyle>(contents(folder / "style.json")).value();
    EXPECT_EQ(run("export in.png -o card.png --style style.json").status, 0);
    EXPECT_TRUE(picturesAgree(read("card.png"),
                              TransparentImageRenderer().render(picture(), style).value()));
}

TEST_F(PictureCommands, DraftPrintsAnAnnotationThatAnnotateReads) {
    const auto draft = run("draft --tool brush --start -1,2 --points 1,2 -3,.5 -.5,-.25 4,5");
    EXPECT_EQ(draft.status, 0) << draft.error;
    const std::vector<CGPoint> points{{1, 2}, {-3, 0.5}, {-0.5, -0.25}, {4, 5}};
    EXPECT_EQ(decodeJSON<ScreenshotAnnotation>(draft.output).value().geometry,
              AnnotationGeometry{AnnotationGeometry::Points{points}});
    EXPECT_EQ(run("annotate in.png --annotations - -o x.png", draft.output).status, 0);
    const auto box = run("draft --tool rectangle --start 10.4,20.6 --current 5.2,30.1");
    EXPECT_EQ(decodeJSON<ScreenshotAnnotation>(box.output).value().geometry,
              (AnnotationGeometry{AnnotationGeometry::Rect{{5, 20, 6, 11}}}));
    EXPECT_EQ(run("draft --tool text --start 0,0 --text ''").status, 1);
}

TEST_F(PictureCommands, InfoTellsTheHeader) {
    const auto info = nlohmann::json::parse(run("info --json in.png").output);
    EXPECT_EQ(info["width"], 40);
    EXPECT_EQ(info["height"], 30);
    EXPECT_EQ(info["colorSpace"], "sRGB");
    EXPECT_EQ(info["bytes"], fs::file_size(folder / "in.png"));
    EXPECT_TRUE(run("info in.png").output.starts_with("in.png: 40 × 30, 8-bit"));
}

TEST_F(PictureCommands, ReadsNoMoreThanItNeeds) {
    write("in2.png", contents(folder / "in.png") + std::string(1'000'000, ' '));
    const auto shell = [&](const std::string& script) {
        return Process{.program = "/bin/bash",
                       .arguments = {"-c", "ulimit -t 20; " + script},
                       .environment = {{"PICTAL", PICTAL_PROGRAM}},
                       .folder = folder.path()}
            .run();
    };
    // What is behind the header is for the next reader.
    const auto rest = shell("cat in2.png | (\"$PICTAL\" info --json -; wc -c)").output;
    const std::size_t end = rest.find("}\n") + 2;
    EXPECT_EQ(nlohmann::json::parse(rest.substr(0, end))["bytes"], nullptr);
    EXPECT_GT(std::stoi(rest.substr(end)), 999'000);
    for (const char* script :
         {"\"$PICTAL\" export /dev/zero -o out.png", "yes | \"$PICTAL\" info -",
          "truncate -s 20G big; \"$PICTAL\" annotate big --max-bytes 30000000000 "
          "--annotations arrow.json -o out.png"}) {
        const auto result = shell(script);
        EXPECT_EQ(result.status, 2) << script;
        EXPECT_TRUE(result.error.ends_with(": the content is not PNG\n")) << result.error;
    }
}

TEST_F(PictureCommands, LargeMemoryShortageSaysSo) {
    write(
        "large.png",
        textOf(PNG::write(pictureOf(6000, 6000, [](auto, auto) { return 0xFF000000U; })).value()));
    // The picture takes 144 MB, its card somewhat more.
    const auto limited = [&](const char* kilobytes, const std::string& rest) {
        return Process{
            .program = "/bin/bash",
            .arguments = {"-c", std::string("ulimit -v ") + kilobytes + "; \"$PICTAL\" " + rest},
            .environment = {{"PICTAL", PICTAL_PROGRAM}},
            .folder = folder.path()}
            .run();
    };
    const auto card = limited("320000", "export large.png -o out.png");
    EXPECT_EQ(card.error, "pictal: large.png: there is not enough memory for the card\n");
    EXPECT_EQ(card.status, 3);
    const auto picture = limited("160000", "export large.png -o out.png");
    EXPECT_NE(picture.error.find("memory"), std::string::npos) << picture.error;
    EXPECT_EQ(picture.status, 3);
}

TEST_F(PictureCommands, BadInputIsOneClearLineAndNoOutputFile) {
    const std::string png = contents(folder / "in.png");
    write("truncated.png", png.substr(0, png.size() / 2));
    write("text.png", "not a picture");
    write("unknown.json", R"({"tool": "spray", "geometry": {"point": {"_0": [1, 2]}}})");
    write("mosaic.json", R"({"tool": "mosaic", )" + std::string(arrow).substr(17));
    fs::create_directory(folder / "folder");
    fs::create_symlink("circle.png", folder / "circle.png");
    const auto check = [&](const std::string& line, const char* message, int status = 2) {
        const auto result = run(line);
        EXPECT_EQ(result.status, status) << line;
        EXPECT_NE(result.error.find(message), std::string::npos) << line << ": " << result.error;
        EXPECT_EQ(std::ranges::count(result.error, '\n'), 1) << line << ": " << result.error;
        EXPECT_EQ(result.output, "") << line;
        EXPECT_FALSE(fs::exists(folder / "out.png")) << line;
    };
    check("annotate truncated.png --annotations arrow.json -o out.png", "truncated.png: ");
    check("annotate in.png --annotations unknown.json -o out.png", "unknown.json: tool: ");
    check("annotate in.png --annotations mosaic.json -o out.png", "does not draw mosaic");
    check("export text.png -o out.png", "text.png: ");
    check("export absent.png -o out.png", "absent.png: No such file or directory");
    check("export in.png -o out.png --max-pixels 1199",
          "in.png: 40 × 30 pixels are more than the limit of 1199; --max-pixels raises the limit");
    check("export in.png -o out.png --max-bytes 99",
          "in.png: larger than 99 bytes; --max-bytes raises the limit");
    check("export in.png -o out.png --max-pixels 0", "--max-pixels: \"0\" is not a whole number");
    check("annotate in.png --annotations /dev/zero -o out.png", "/dev/zero: larger than 67108864");
    check("export in.png -o ''", "--output: needs the name of a file");
    check("export \x1B[2J\u202E.png -o out.png", "pictal: \\x1B[2J\\u202E.png: No such file");
    check("draft --tool " + std::string(99, 'x') + " --start 0,0",
          ("--tool: \"" + std::string(80, 'x') + "…\" is none").c_str());
    check("draft --tool line --start --current", "--start");
    check("export in.png -o out.png --shadow-blur inf", "--shadow-blur: \"inf\" is not a number");
    check("export in.png -o out.png --shadow-blur 1e300", "lower the shadow's blur");
    check("export in.png -o out.png --shadow-color reddish",
          "--shadow-color: \"reddish\" is not a colour");
    check("export in.png -o folder", "folder: Is a directory");
    check("export in.png -o no/out.png", "pictal: no: No such file or directory");
    check("export in.png -o /dev/full", "/dev/full: No space left on device", 3);
    check("", "See pictal --help");
    check("exprot", "there is no command \"exprot\". See pictal --help");
    check("info a b c", "\"b\" was not expected. See pictal info");
    check("draft --tool 3 --start 0,0", "--tool: \"3\" is none of rectangle, ellipse");
    check("draft --tool number --start 0,0 --number 9223372036854775808",
          "--number: \"9223372036854775808\" does not fit");
    check("export in.png -o circle.png", "circle.png: Too many levels of symbolic links", 3);
    check("export in.png --colour red", "See pictal export --help");
}

TEST_F(PictureCommands, AFullDiskLeavesNothingBehind) {
    const fs::path disk = folder / "disk";
    fs::create_directory(disk);
    if (::mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "mounting needs rights that this user has not";
    write("disk/out.png", "old");
    // Noise does not compress below the size of the disk.
    std::uint32_t noise = 1;
    const CGImage large = pictureOf(256, 256, [&](auto, auto) {
        noise = noise * 1664525 + 1013904223;
        return noise | 0xFF000000;
    });
    write("large.png", textOf(PNG::write(large).value()));
    const auto result = run("export large.png --plain -o disk/out.png");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.error, "pictal: disk/out.png: No space left on device\n");
    EXPECT_EQ(contents(disk / "out.png"), "old");
    EXPECT_EQ(entryCount(disk), 1);
    ::umount(disk.c_str());
}

TEST_F(PictureCommands, LinksAreFollowedAndTheirTargetsReplaced) {
    write("target.png", "old");
    for (const char* target : {"target.png", "fresh.png"}) {
        fs::remove(folder / "link.png");
        fs::create_symlink(target, folder / "link.png");
        EXPECT_EQ(run("export in.png --plain -o link.png").status, 0) << target;
        EXPECT_TRUE(fs::is_symlink(folder / "link.png")) << target;
        EXPECT_TRUE(picturesAgree(read(target), picture())) << target;
    }
}

}  // namespace
}  // namespace pictal
