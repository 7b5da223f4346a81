#include "PictalCore/Annotation/AnnotationRenderer.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fstream>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Annotation = ScreenshotAnnotation;

/// A folder with a picture of 200 × 100, and the program in it.
struct QuickMarks : ::testing::Test {
    TemporaryFolder folder;
    CGImage page = pictureOf(200, 100, [](auto, auto) { return 0xFFFFFFFF; });

    QuickMarks() { write("in.png", textOf(PNG::write(page).value())); }

    void write(const char* name, const std::string& text) const {
        std::ofstream(folder / name, std::ios::binary) << text;
    }
    [[nodiscard]] Process::Result annotate(
        std::vector<std::string> arguments,
        std::map<std::string, std::string> environment = {}) const {
        arguments.insert(arguments.begin(), {"annotate", "in.png"});
        return Process{.arguments = std::move(arguments),
                       .environment = std::move(environment),
                       .folder = folder.path()}
            .run();
    }
    [[nodiscard]] std::vector<Annotation> listed(std::vector<std::string> arguments) const {
        arguments.emplace_back("--list");
        const auto result = annotate(std::move(arguments));
        EXPECT_EQ(result.status, 0) << result.error;
        return decodeJSON<std::vector<Annotation>>(result.output)
            .value_or(std::vector<Annotation>());
    }
};

AnnotationStyle redPen() {
    AnnotationStyle style;
    style.stroke = RGBAColor(229 / 255.0, 52 / 255.0, 43 / 255.0, 1);
    return style;
}

TEST_F(QuickMarks, EachToolHasAnOptionThatCountsFromTheTop) {
    AnnotationStyle smear = AnnotationStyle::mosaic, disc = redPen();
    smear.mosaicMode = AnnotationMosaicMode::smear;
    disc.fill = disc.stroke;
    const std::vector<Annotation> want{
        Annotation::rectangle({10, 50, 30, 40}, redPen()),
        Annotation::rectangle({10, 50, 30, 40}, redPen()),
        Annotation::ellipse({10, 50, 30, 40}, redPen()),
        Annotation::highlight({-5, 95, 6, 7}, AnnotationStyle::highlight),
        Annotation::arrow({1, 98}, {3.5, 96}, redPen()),
        Annotation::line({1, 98}, {3, 96}, redPen()),
        Annotation::textAt("-5 [°C, K]", {7, 92.5}, AnnotationStyle::text),
        Annotation::number(12, {-0.5, 50}, disc),
        Annotation::mosaic({10, 50, 30, 40}, AnnotationStyle::mosaic),
        {AnnotationTool::mosaic, {AnnotationGeometry::Points{{{10, 90}, {40, 88}}}}, smear},
        Annotation::mosaic({10, 78, 40, 12}, smear),
    };
    const auto have = listed({"--rectangle", "10,10,30,40",  "--rectangle", "40,50,-30,-40",
                              "--ellipse",   "30x40+10+10",  "--highlight", "-4.5,-1.5 5.4x6.2",
                              "--arrow",     "1,2,3.5,4",    "--line",      "1,2 3,4",
                              "--text",      " -5 [°C, K] ", "--at",        "7,7.5",
                              "--number",    "12",           "--at",        "-.5,50",
                              "--mosaic",    "10,10,30,40",  "--smear",     "10,10 40,12",
                              "--smear",     "10,10,40,12"});
    ASSERT_EQ(have.size(), want.size());
    for (std::size_t i = 0; i < want.size(); ++i)
        EXPECT_EQ(have[i], want[i]) << "the option of place " << i;

    const auto up = listed(
        {"--line", "1,2,3,4", "--y-up", "--rectangle", "10,10,30,40", "--smear", "10,10,40,12"});
    EXPECT_EQ(up.at(0), Annotation::line({1, 2}, {3, 4}, redPen()));
    EXPECT_EQ(up.at(1), Annotation::rectangle({10, 10, 30, 40}, redPen()));
    EXPECT_EQ(up.at(2), Annotation::mosaic({10, 10, 40, 12}, smear));
}

TEST_F(QuickMarks, LooksHoldForTheMarksBehindThem) {
    const auto marks = listed({"--line",
                               "0,0,1,1",
                               "--stroke",
                               "blue",
                               "--width",
                               "7",
                               "--line",
                               "0,0,1,1",
                               "--size",
                               "30",
                               "--number",
                               "1",
                               "--at",
                               "5,5",
                               "--fill",
                               "lime",
                               "--outline",
                               "#f00",
                               "--outline-width",
                               "3",
                               "--opacity",
                               "0.5",
                               "--number",
                               "2",
                               "--at",
                               "5,5",
                               "--width",
                               "-3",
                               "--text",
                               "a",
                               "--at",
                               "1,1"});
    ASSERT_EQ(marks.size(), 5U);
    const RGBAColor blue(0, 0, 1, 1);
    AnnotationStyle want = redPen();
    EXPECT_EQ(marks[0].style, want);
    want.stroke = blue;
    want.lineWidth = 7;
    EXPECT_EQ(marks[1].style, want);
    want.fontSize = 30;
    want.fill = blue;
    EXPECT_EQ(marks[2].style, want) << "a disc has the stroke's colour";
    want.fill = {0, 1, 0, 1};
    want.textOutline = {1, 0, 0, 1};
    want.textOutlineWidth = 3;
    want.opacity = 0.5;
    EXPECT_EQ(marks[3].style, want);
    EXPECT_EQ(marks[4].style.lineWidth, 0);
    EXPECT_EQ(marks[4].style.fontSize, 30);
    const auto draft = Process{
        .arguments = words("draft --tool number --start 1,2 --stroke blue --size 30 --width 7")};
    EXPECT_EQ(decodeJSON<Annotation>(draft.run().output).value().style, marks[2].style);
}

TEST_F(QuickMarks, TheFilesMarksAreDrawnFirst) {
    const Annotation red =
        Annotation::rectangle({0, 0, 50, 50}, {{}, {1, 0, 0, 1}, 0, 1, 1, {}, 0, {}});
    write("marks.json", encodeJSON(red).value());
    const auto result = annotate({"--annotations", "marks.json", "--width", "0", "--fill", "#00f",
                                  "--rectangle", "20,70,50,10", "--list", "-o", "out.png"});
    ASSERT_EQ(result.status, 0) << result.error;
    const auto list = decodeJSON<std::vector<Annotation>>(result.output).value();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0], red);
    const std::string file = contents(folder / "out.png");
    const CGImage image = PNG::read(std::as_bytes(std::span(file))).value();
    EXPECT_TRUE(picturesAgree(image, AnnotationRenderer().render(page, list).value()));
    EXPECT_EQ(pixelText(image.row(75)[30]), "#0000FFFF");
    EXPECT_EQ(pixelText(image.row(90)[30]), "#FF0000FF");
}

TEST_F(QuickMarks, WhatIsWrongIsToldInOneLine) {
    const auto check = [&](std::vector<std::string> arguments, const char* message) {
        const auto result = annotate(arguments);
        EXPECT_EQ(result.status, 2) << message;
        EXPECT_NE(result.error.find(message), std::string::npos) << message << ": " << result.error;
        EXPECT_EQ(std::ranges::count(result.error, '\n'), 1) << result.error;
    };
    check({"-o", "x.png"}, "there is nothing to draw");
    check({"--line", "0,0,1,1"}, "-o is missing");
    check({"--line", "0,0,1,1", "--list", "-o", "-"}, "cannot both be standard output");
    check({"--line", "0,0,1", "--list"}, "--line: \"0,0,1\" is not a line");
    check({"--rectangle", "0,0 1,1", "--list"}, "--rectangle: \"0,0 1,1\" is not a rectangle");
    check({"--rectangle", "-1x5+0+0", "--list"}, "is not a rectangle");
    check({"--smear", "1,2 3", "--list"}, "--smear: \"3\" is not a point");
    check({"--smear", " ", "--list"}, "--smear: there is nothing to draw");
    check({"--text", " ", "--at", "1,1", "--list"}, "there is nothing to draw");
    check({"--text", "a", "--list"}, "--at has to follow --text and --number");
    check({"--text", "a", "--size", "9", "--at", "1,1", "--list"}, "--at has to follow");
    check({"--number", "1", "--number", "2", "--at", "1,1", "--list"}, "--at has to follow");
    check({"--at", "1,1", "--list"}, "--at: there is no --text or --number before it");
    check({"--number", "1.5", "--list"}, "--number: \"1.5\" is not a whole number");
    check({"--width", "wide", "--line", "0,0,1,1", "--list"}, "--width: \"wide\" is not a number");
    check({"--stroke", "reddish", "--line", "0,0,1,1", "--list"}, "--stroke: \"reddish\"");
    check({"--line", "0,0,1,1", "2,2,3,3", "--list"}, "\"2,2,3,3\" was not expected");
}

TEST_F(QuickMarks, WithoutFontsNothingIsWrittenAndThatIsSaid) {
    write("fonts.conf", "<?xml version=\"1.0\"?><fontconfig></fontconfig>");
    const std::map<std::string, std::string> environment{
        {"FONTCONFIG_FILE", (folder / "fonts.conf").string()}};
    for (const auto& mark : {std::vector<std::string>{"--text", "a", "--at", "1,1", "-o", "x.png"},
                             {"--number", "1", "--at", "1,1", "-o", "x.png"}}) {
        const auto result = annotate(mark, environment);
        EXPECT_EQ(result.status, 3);
        EXPECT_NE(result.error.find("install the package fonts-inter"), std::string::npos);
        EXPECT_EQ(std::ranges::count(result.error, '\n'), 1) << result.error;
        EXPECT_FALSE(std::filesystem::exists(folder / "x.png"));
    }
    EXPECT_EQ(annotate({"--line", "0,0,9,9", "-o", "x.png"}, environment).status, 0);
}

}  // namespace
}  // namespace pictal
