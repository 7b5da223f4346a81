#include "PictalCore/OCR/PaddleOCRImagePreprocessor.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/PictureProbe.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"
#include "pictal/ocr/NumPyFile.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace pictal {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using program::numPyFile;
using program::parsedNumPyFile;

CGImage picture() {
    return pictureOf(64, 32, [](std::uint32_t x, std::uint32_t y) {
        return kernels::pixelOf(x * 4, y * 8, 100, 255);
    });
}

/// A folder with a picture and configurations, and a way to run the program there.
struct OCRCommands : ::testing::Test {
    TemporaryFolder folder;

    OCRCommands() {
        write("in.png", textOf(PNG::write(picture()).value()));
        write("det.yml", "limit_side_len: 960\nthresh: 0.3\nbox_thresh: 0.6\nunclip_ratio: 1\n");
        write("rec.yml", "image_shape:\n- 3\n- 8\n- 8\ncharacter_dict:\n- a\n- '中'\n");
    }
    void write(const fs::path& name, const std::string& text) const {
        std::ofstream(folder / name, std::ios::binary) << text;
    }
    void write(const fs::path& name, const std::vector<std::int64_t>& shape,
               const std::vector<float>& data) const {
        write(name, textOf(numPyFile(shape, data)));
    }
    [[nodiscard]] program::FloatArray array(const fs::path& name) const {
        const std::string text = contents(folder / name);
        return parsedNumPyFile(std::as_bytes(std::span(text))).value();
    }
    [[nodiscard]] Process::Result run(const std::string& line,
                                      const std::string& input = {}) const {
        return Process{.arguments = words(line),
                       .input = input,
                       .environment = {{"PICTAL_OCR_MODELS", ""},
                                       {"PICTAL_ONNXRUNTIME", ""},
                                       {"XDG_DATA_HOME", (folder / "data").string()}},
                       .folder = folder.path()}
            .run();
    }
    void expectRefused(const std::string& line, const std::string& reason) const {
        const auto result = run(line);
        EXPECT_EQ(result.status, 2) << line;
        EXPECT_EQ(result.output, "") << line;
        EXPECT_NE(result.error.find(reason), std::string::npos) << line << ": " << result.error;
        EXPECT_EQ(std::ranges::count(result.error, '\n'), 1) << result.error;
    }
};

TEST_F(OCRCommands, StepsExchangeArrays) {
    ASSERT_EQ(run("ocr-tensor in.png --config det.yml -o det.npy").status, 0);
    const auto tensor = PaddleOCRImagePreprocessor::detectionTensor(picture(), {}).value();
    EXPECT_EQ(array("det.npy").shape, (std::vector<std::int64_t>{1, 3, 32, 64}));
    EXPECT_EQ(array("det.npy").data, tensor.data);

    // A map of half the size with two regions: 12 x 4 cells at (10, 8), 4 x 4 at (2, 9).
    std::vector<float> map(32 * 16);
    for (std::size_t y = 8; y < 12; ++y)
        std::fill_n(map.begin() + static_cast<std::ptrdiff_t>(y * 32 + 10), 12, 0.75F);
    for (std::size_t y = 9; y < 13; ++y)
        std::fill_n(map.begin() + static_cast<std::ptrdiff_t>(y * 32 + 2), 4, 1.0F);
    for (const std::vector<std::int64_t>& shape :
         std::vector<std::vector<std::int64_t>>{{1, 1, 16, 32}, {16, 32}}) {
        write("map.npy", shape, map);
        const auto boxes = run("ocr-boxes map.npy --config det.yml --size 64x32 --json");
        ASSERT_EQ(boxes.status, 0) << boxes.error;
        // Grown by a cell, times two; read from the left.
        EXPECT_EQ(json::parse(boxes.output),
                  json::parse(R"({"boxes": [{"box": [2, 16, 12, 26], "confidence": 1},
                                            {"box": [18, 14, 44, 24], "confidence": 0.75}]})"));
        write("boxes.json", boxes.output);
    }

    // Grown by a fifth of the height, outwards to whole pixels: 14 x 14 and 30 x 14 pixels.
    ASSERT_EQ(run("ocr-lines in.png --boxes boxes.json --config rec.yml -o rec.npy").status, 0);
    const CGImage lines[] = {picture().cropping(CGRect(0, 14, 14, 14)).value(),
                             picture().cropping(CGRect(16, 12, 30, 14)).value()};
    const auto batch = PaddleOCRImagePreprocessor::recognitionBatch(
                           lines, {.imageShape = {3, 8, 8}, .characterDictionary = {"a"}})
                           .value();
    EXPECT_EQ(array("rec.npy").shape, batch.shape);
    EXPECT_EQ(array("rec.npy").data, batch.data);

    write("out.npy", {2, 2, 4}, {0, 0.5F, 0.1F, 0, 0, 0, 0.25F, 0, 1, 0, 0, 0, 0, 0, 0, 1});
    const auto text = run("ocr-decode out.npy --config rec.yml");
    EXPECT_EQ(text.output, "a中\n \n");
    EXPECT_EQ(text.error, "");
    const auto decoded = run("ocr-decode - --config rec.yml --json", contents(folder / "out.npy"));
    EXPECT_EQ(json::parse(decoded.output),
              json::parse(R"({"lines": [{"text": "a中", "confidence": 0.375},
                                        {"text": " ", "confidence": 1}]})"));
    write("out.npy", {1, 1, 5}, {0, 1, 0, 0, 0});
    const auto warned = run("ocr-decode out.npy --config rec.yml");
    EXPECT_EQ(warned.output, "a\n");
    EXPECT_NE(warned.error.find("5 classes, the dictionary 2"), std::string::npos) << warned.error;
}

TEST_F(OCRCommands, RefuseWhatCannotBeUsed) {
    write("map.npy", {2, 16, 32}, std::vector<float>(1024));
    write("flat.npy", {1024}, std::vector<float>(1024));
    write("good.npy", {1, 1, 8, 8}, std::vector<float>(64));
    write("crlf.yml", "character_dict:\r\n- a\r\n");
    write("shape.yml", "image_shape:\n- 3\n- 8\ncharacter_dict:\n- a\n");
    write("none.json", R"({"boxes": []})");
    write("far.json", R"({"boxes": [{"box": [500, 500, 510, 510]}]})");
    write("bad.json", R"({"boxes": [{"box": [0, 0, 1, 1]}, {"box": [0, 0, 1]}]})");
    write("list.json", "[1]");
    write("here.json", R"({"boxes": [{"box": [5, 5, 10, 10]}]})");
    const std::pair<const char*, const char*> cases[] = {
        {"ocr-boxes map.npy --config det.yml --size 4x4", "[1, 1, height, width]"},
        {"ocr-boxes flat.npy --config det.yml --size 4x4", "[1, 1, height, width]"},
        {"ocr-boxes in.png --config det.yml --size 4x4", "in.png is no .npy file"},
        {"ocr-boxes good.npy --config det.yml --size 4", "1920x1080"},
        {"ocr-boxes good.npy --config det.yml --size 0x4", "1920x1080"},
        {"ocr-boxes good.npy --config det.yml --size 4x4x4", "1920x1080"},
        {"ocr-boxes good.npy --config no.yml --size 4x4", "no.yml"},
        {"ocr-boxes no.npy --config det.yml --size 4x4", "no.npy"},
        {"ocr-decode good.npy --config rec.yml", "output shape is invalid: [1, 1, 8, 8]"},
        {"ocr-decode good.npy --config det.yml", "character_dict"},
        {"ocr-decode good.npy --config crlf.yml", "LF alone"},
        {"ocr-decode - --config -", "standard input"},
        {"ocr-tensor - --config - -o x.npy", "standard input"},
        {"ocr-tensor det.yml --config det.yml -o x.npy", "det.yml"},
        {"ocr-lines in.png --boxes none.json --config rec.yml -o x.npy", "no boxes"},
        {"ocr-lines in.png --boxes far.json --config rec.yml -o x.npy", "box 1 is outside"},
        {"ocr-lines in.png --boxes bad.json --config rec.yml -o x.npy", "box 2"},
        {"ocr-lines in.png --boxes list.json --config rec.yml -o x.npy", "\"boxes\""},
        {"ocr-lines in.png --boxes here.json --config shape.yml -o x.npy", "[3, 8]"},
        {"ocr-lines - --boxes - --config rec.yml -o x.npy", "standard input"},
    };
    for (const auto& [line, reason] : cases)
        expectRefused(line, reason);
    EXPECT_FALSE(fs::exists(folder / "x.npy"));
}

TEST_F(OCRCommands, SayWhatIsMissingForReading) {
    expectRefused("ocr in.png", "data/pictal/ocr: there is no det.onnx");
    expectRefused("ocr in.png", "pictal-ocr-models");
    expectRefused("ocr in.png --models nowhere", "nowhere: there is no det.onnx");
    write("det.onnx", "no model");
    write("rec.onnx", "no model");
    expectRefused("ocr in.png --models . --runtime det.yml", "det.yml");
    expectRefused("ocr in.png --models . --runtime libm.so.6", "libm.so.6 is no ONNX Runtime");
    write("rec.yml", "character_dict:\r\n- a\r\n");
    expectRefused("ocr in.png --models .", "LF alone");
    fs::remove(folder / "rec.yml");
    expectRefused("ocr in.png --models .", ".: there is no rec.yml");
    expectRefused("ocr in.png --side-limit 5", "--side-limit");
}

TEST_F(OCRCommands, TheModelsReadAScreenshot) {
    const char* const models = std::getenv("PICTAL_OCR_MODELS");
    if (!models || *models == '\0')
        GTEST_SKIP() << "PICTAL_OCR_MODELS names no folder; script/ocr-models fills one";
    const auto read = [&](const std::string& arguments) {
        return Process{.arguments = words("ocr " + arguments + " --models " + models),
                       .folder = folder.path()}
            .run();
    };
    const std::string sample = PICTAL_SOURCE_DIR "/samples/screenshot.png";
    const auto lines = read(sample);
    ASSERT_EQ(lines.status, 0) << lines.error;
    EXPECT_EQ(lines.error, "");
    for (const char* line : {"Saltgrass Reserve\n", "Thursday 16 October, 07:42", "Domestic cat\n",
                             "Faces the camera, no ear tag\n", "Cards collected 16 October\n"})
        EXPECT_NE(lines.output.find(line), std::string::npos) << line;
    const json document = json::parse(read(sample + " --json").output);
    for (const json& line : document["lines"]) {
        EXPECT_FALSE(line["text"].get<std::string>().empty());
        if (line["text"] != "Saltgrass Reserve") continue;
        // By eye: the ink is in columns 116 to 345 and rows 36 to 59.
        const std::array<double, 4> ink{116, 36, 345, 59};
        for (std::size_t side = 0; side < 4; ++side)
            EXPECT_NEAR(line["box"][side].get<double>(), ink[side], 12) << side;
        EXPECT_GT(line["confidence"], 0.9);
    }
    // An empty picture has no text, and that is no failure.
    write("white.png",
          textOf(PNG::write(pictureOf(90, 4'000, [](auto, auto) { return 0U; })).value()));
    EXPECT_EQ(read("white.png --quiet").output, "");
    EXPECT_EQ(json::parse(read("white.png --json").output), json::parse(R"({"lines": []})"));
    // A broken model, and one in the place of the other.
    for (const char* name : {"det.yml", "rec.yml", "libonnxruntime.so", "rec.onnx"})
        fs::create_symlink(fs::absolute(models) / name, folder / "models.tmp"),
            fs::create_directories(folder / "bad"),
            fs::rename(folder / "models.tmp", folder / "bad" / name);
    write("bad/det.onnx", "no model");
    expectRefused("ocr in.png --models bad", "bad/det.onnx: the model cannot be used");
    fs::remove(folder / "bad/det.onnx");
    fs::create_symlink("rec.onnx", folder / "bad/det.onnx");
    const auto swapped = run("ocr in.png --models bad");
    EXPECT_NE(swapped.status, 0);
    EXPECT_EQ(std::ranges::count(swapped.error, '\n'), 1) << swapped.error;
    EXPECT_NE(swapped.error.find("det.onnx"), std::string::npos) << swapped.error;
}

}  // namespace
}  // namespace pictal
