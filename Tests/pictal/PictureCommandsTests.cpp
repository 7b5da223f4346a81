#include "PictalCore/Annotation/AnnotationRenderer.h"
#include "PictalCore/Platform/Foundation/Files.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Styling/TransparentImageRenderer.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fstream>

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

std::string textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
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
        return PNG::read(readFile(folder / name).value()).value();
    }
    [[nodiscard]] Process::Result run(std::vector<std::string> arguments,
                                      const std::string& input = {}) const {
        return Process{.arguments = std::move(arguments), .input = input, .folder = folder.path()}
            .run();
    }
};

TEST_F(PictureCommands, AnnotateAndExportMakeThePicturesOfTheLibrary) {
    const auto annotation = decodeJSON<ScreenshotAnnotation>(arrow).value();
    const CGImage annotated =
        AnnotationRenderer().render(picture(), std::vector{annotation}).value();
    const CGImage card =
        TransparentImageRenderer().render(annotated, ScreenshotStyle::presentationCard).value();

    const auto first = run({"annotate", "in.png", "--annotations", "arrow.json", "-o", "a.png"});
    EXPECT_EQ(first.status, 0) << first.error;
    EXPECT_EQ(first.output + first.error, "");
    EXPECT_TRUE(picturesAgree(read("a.png"), annotated));

    // The same as a list, through pipes on both sides.
    write("list.json", "[" + std::string(arrow) + "]");
    const std::string png = textOf(readFile(folder / "in.png").value());
    const auto piped = run({"annotate", "-", "--annotations", "list.json", "-o", "-"}, png);
    EXPECT_EQ(piped.status, 0) << piped.error;
    EXPECT_TRUE(picturesAgree(decoded(piped.output), annotated));
    const auto exported = run({"export", "-", "-o", "-", "--compression", "fast"}, piped.output);
    EXPECT_TRUE(picturesAgree(decoded(exported.output), card));

    const auto plain = run({"export", "in.png", "--plain", "-o", "plain.png"});
    EXPECT_EQ(plain.status, 0) << plain.error;
    EXPECT_TRUE(picturesAgree(read("plain.png"), picture()));
}

TEST_F(PictureCommands, ExportTakesAStyleAndChangesToIt) {
    write("style.json", R"({"cornerRadius": 3, "shadow": {"blur": 9, "offsetX": 1, "offsetY": 2,
        "opacity": 0.5, "color": {"red": 0, "green": 0, "blue": 0, "alpha": 1}}})");
    const auto result =
        run({"export", "in.png", "-o", "card.png", "--style", "style.json", "--shadow-blur", "4",
             "--shadow-offset", "-3,-.5", "--shadow-opacity", "7", "--shadow-color", "#204060"});
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
    const auto style = decodeJSON<ScreenshotStyle>(textOf(readFile(folder / "style.json").value()));
    EXPECT_EQ(run({"export", "in.png", "-o", "card.png", "--style", "style.json"}).status, 0);
    EXPECT_TRUE(picturesAgree(read("card.png"),
                              TransparentImageRenderer().render(picture(), *style).value()));
}

TEST_F(PictureCommands, DraftPrintsAnAnnotationThatAnnotateReads) {
    const auto draft = run({"draft", "--tool", "brush", "--start", "-1,2", "--points", "1,2",
                            "-3,.5", "-.5,-.25", "4,5"});
    EXPECT_EQ(draft.status, 0) << draft.error;
    const auto annotation = decodeJSON<ScreenshotAnnotation>(draft.output);
    ASSERT_TRUE(annotation);
    EXPECT_EQ(annotation->geometry, (AnnotationGeometry{AnnotationGeometry::Points{
                                        {{1, 2}, {-3, 0.5}, {-0.5, -0.25}, {4, 5}}}}));
    EXPECT_EQ(run({"annotate", "in.png", "--annotations", "-", "-o", "x.png"}, draft.output).status,
              0);
    const auto box =
        run({"draft", "--tool", "rectangle", "--start", "10.4,20.6", "--current", "5.2,30.1"});
    EXPECT_EQ(decodeJSON<ScreenshotAnnotation>(box.output)->geometry,
              (AnnotationGeometry{AnnotationGeometry::Rect{{5, 20, 6, 11}}}));
    EXPECT_EQ(run({"draft", "--tool", "text", "--start", "0,0", "--text", " \n"}).status, 1);
}

TEST_F(PictureCommands, InfoTellsTheHeader) {
    const auto result = run({"info", "--json", "in.png"});
    EXPECT_EQ(result.status, 0) << result.error;
    const auto info = nlohmann::json::parse(result.output);
    EXPECT_EQ(info["width"], 40);
    EXPECT_EQ(info["height"], 30);
    EXPECT_EQ(info["colorSpace"], "sRGB");
    EXPECT_NE(run({"info", "in.png"}).output.find("in.png: 40 × 30, 8-bit"), std::string::npos);
}

TEST_F(PictureCommands, BadInputIsOneClearLineAndNoOutputFile) {
    const std::string png = textOf(readFile(folder / "in.png").value());
    write("truncated.png", png.substr(0, png.size() / 2));
    write("text.png", "not a picture");
    write("unknown.json", R"({"tool": "spray", "geometry": {"point": {"_0": [1, 2]}}})");
    std::string blurred = arrow;
    blurred.replace(blurred.find("\"lineWidth\""), 0, R"("mosaicMode": "blur", )");
    write("mode.json", blurred);
    write("deep.json", std::string(10000, '[') + std::string(10000, ']'));
    write("text.json", R"({"tool": "text", "text": "a", )" + std::string(arrow).substr(17));
    write("infinite.json", R"({"shadow": {"blur": 1e999}})");
    fs::create_directory(folder / "folder");
    fs::create_symlink("circle.png", folder / "circle.png");
    using Arguments = std::vector<std::string>;
    const auto annotate = [](const char* in, const char* file) {
        return Arguments{"annotate", in, "--annotations", file, "-o", "out.png"};
    };
    struct Case {
        const char* name;
        Arguments arguments;
        int status;
        const char* message;
    };
    for (const Case& c :
         {Case{"truncated", annotate("truncated.png", "arrow.json"), 2, "truncated.png: "},
          Case{"no picture", {"export", "text.png", "-o", "out.png"}, 2, "text.png: "},
          Case{"no file",
               {"export", "absent.png", "-o", "out.png"},
               2,
               "absent.png: No such file or directory"},
          Case{"too many pixels",
               {"export", "in.png", "-o", "out.png", "--max-pixels", "1199"},
               2,
               "in.png: "},
          Case{"unknown tool", annotate("in.png", "unknown.json"), 2, "unknown.json: tool: "},
          Case{"unknown mode", annotate("in.png", "mode.json"), 2,
               "Unknown annotation mosaic mode: blur"},
          Case{"deep", annotate("in.png", "deep.json"), 2, "nested deeper"},
          Case{"not drawn yet", annotate("in.png", "text.json"), 2, "does not draw text"},
          Case{"infinite blur in a file",
               {"export", "in.png", "-o", "out.png", "--style", "infinite.json"},
               2,
               "out of range"},
          Case{"infinite blur",
               {"export", "in.png", "-o", "out.png", "--shadow-blur", "inf"},
               2,
               "--shadow-blur: \"inf\" is not a number"},
          Case{"huge blur",
               {"export", "in.png", "-o", "out.png", "--shadow-blur", "1e300"},
               2,
               "lower the shadow's blur"},
          Case{"bad colour",
               {"export", "in.png", "-o", "out.png", "--shadow-color", "reddish"},
               2,
               "--shadow-color: \"reddish\" is not a colour"},
          Case{"folder as output",
               {"export", "in.png", "-o", "folder"},
               2,
               "folder: Is a directory"},
          Case{"no such folder",
               {"export", "in.png", "-o", "no/out.png"},
               2,
               "no/out.png: No such file or directory"},
          Case{"full device",
               {"export", "in.png", "-o", "/dev/full"},
               3,
               "/dev/full: No space left on device"},
          Case{"no command", {}, 2, "See pictal --help"},
          Case{"unknown command",
               {"exprot"},
               2,
               "there is no command \"exprot\". See pictal --help"},
          Case{"unknown word",
               {"info", "a", "b", "c"},
               2,
               "\"b\" was not expected. See pictal info"},
          Case{"the number of a tool",
               {"draft", "--tool", "3", "--start", "0,0"},
               2,
               "--tool: \"3\" is none of rectangle, ellipse"},
          Case{"a number that does not fit",
               {"draft", "--tool", "number", "--start", "0,0", "--number", "9223372036854775808"},
               2,
               "--number: \"9223372036854775808\" does not fit"},
          Case{"links in a circle",
               {"export", "in.png", "-o", "circle.png"},
               3,
               "circle.png: Too many levels of symbolic links"},
          Case{"unknown option",
               {"export", "in.png", "--colour", "red"},
               2,
               "See pictal export --help"}}) {
        const auto result = run(c.arguments);
        EXPECT_EQ(result.status, c.status) << c.name;
        EXPECT_NE(result.error.find(c.message), std::string::npos)
            << c.name << ": " << result.error;
        EXPECT_EQ(std::ranges::count(result.error, '\n'), 1) << c.name << ": " << result.error;
        EXPECT_EQ(result.output, "") << c.name;
        EXPECT_FALSE(fs::exists(folder / "out.png")) << c.name;
    }
}

TEST_F(PictureCommands, AFullDiskLeavesNothingBehind) {
    const fs::path disk = folder / "disk";
    fs::create_directory(disk);
    if (::mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "mounting needs rights that this user has not";
    write("old.png", "old");
    fs::copy(folder / "old.png", disk / "out.png");
    // Noise does not compress below the size of the disk.
    std::uint32_t noise = 1;
    const CGImage large = pictureOf(256, 256, [&](auto, auto) {
        noise = noise * 1664525 + 1013904223;
        return noise | 0xFF000000;
    });
    write("large.png", textOf(PNG::write(large).value()));
    const auto result = run({"export", "large.png", "--plain", "-o", "disk/out.png"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.error, "pictal: disk/out.png: No space left on device\n");
    EXPECT_EQ(textOf(readFile(disk / "out.png").value()), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(disk), {}), 1);
    ::umount(disk.c_str());
}

TEST_F(PictureCommands, LinksAreFollowedAndTheirTargetsReplaced) {
    write("target.png", "old");
    fs::create_symlink("target.png", folder / "link.png");
    fs::create_symlink("fresh.png", folder / "dangling.png");
    EXPECT_EQ(run({"export", "in.png", "--plain", "-o", "link.png"}).status, 0);
    EXPECT_EQ(run({"export", "in.png", "--plain", "-o", "dangling.png"}).status, 0);
    EXPECT_TRUE(fs::is_symlink(folder / "link.png"));
    EXPECT_TRUE(picturesAgree(read("target.png"), picture()));
    EXPECT_TRUE(picturesAgree(read("fresh.png"), picture()));
}

}  // namespace
}  // namespace pictal
