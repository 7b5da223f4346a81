#include "PictalCore/OCR/PaddleOCRImagePreprocessor.h"
#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorProfile.h"
#include "Tests/Support/PictureProbe.h"

#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using kernels::pixelOf;
using namespace PaddleOCRImagePreprocessor;
using Error = PaddleOCRImagePreprocessorError;
using Size = PaddleOCRImageSize;

CGImage plain(std::int64_t width, std::int64_t height, std::uint32_t pixel = ~0U) {
    return pictureOf(width, height, [=](std::uint32_t, std::uint32_t) { return pixel; });
}

PaddleOCRRecognitionConfig lines(std::vector<std::int64_t> shape = {3, 48, 320}) {
    return {.imageShape = std::move(shape), .characterDictionary = {"a"}};
}

TEST(PaddleOCRImagePreprocessor, DetectionSizes) {
    struct Case {
        const char* name;
        Size image;
        std::int64_t limit;
        const char* type;
        std::int64_t most;
        Size expected;
    };
    for (const auto& [name, image, limit, type, most, expected] : {
             Case{"a screen", {1920, 1080}, 736, "max", 4000, {736, 416}},
             {"small enough", {300, 200}, 736, "max", 4000, {288, 192}},  // 9.375, 6.25 units
             {"upright", {1080, 1920}, 736, "anything", 4000, {416, 736}},
             {"a pixel", {1, 1}, 736, "max", 4000, {32, 32}},
             {"halves go up", {48, 80}, 736, "max", 4000, {64, 96}},  // 1.5, 2.5 units
             {"the shorter side", {300, 200}, 736, "min", 4000, {1120, 736}},
             {"long enough", {800, 736}, 736, "min", 4000, {800, 736}},
             {"the longer side grows", {100, 50}, 640, "resize_long", 4000, {640, 320}},
             {"at least 32", {100, 64}, 16, "resize_long", 4000, {32, 32}},
             {"at least 32, and compared by 16", {20, 20}, 16, "max", 4000, {32, 32}},
             {"negative", {640, 64}, -5, "max", 4000, {32, 32}},
             {"clamped", {200, 8000}, 200, "min", 4000, {96, 4000}},  // 100 is 3.125 units
             {"not clamped", {64, 5120}, 64, "min", 0, {64, 5120}},
         }) {
        const PaddleOCRDetectionConfig config{
            .limitSideLength = limit, .limitType = type, .maxSideLimit = most};
        const auto tensor = detectionTensor(plain(image.width, image.height), config).value();
        EXPECT_EQ(tensor.originalSize, image) << name;
        EXPECT_EQ(tensor.resizedSize.width, expected.width) << name;
        EXPECT_EQ(tensor.resizedSize.height, expected.height) << name;
        EXPECT_EQ(tensor.shape, (std::vector<std::int64_t>{1, 3, expected.height, expected.width}));
        EXPECT_EQ(tensor.data.size(),
                  static_cast<std::size_t>(3 * expected.width * expected.height));
    }
}

TEST(PaddleOCRImagePreprocessor, NormalisesEachChannelByItsOwnNumbers) {
    // 32 × 32 of one colour, so that nothing is resized.
    const CGImage image = plain(32, 32, pixelOf(10, 100, 200, 255));
    PaddleOCRDetectionConfig config;
    config.normalize = {0.01F, {0.5F, 0.25F, 0.125F}, {0.5F, 0.2F, 0.1F}};
    const std::array<float, 3> expected{(0.01F * 200) / 0.5F - 0.5F / 0.5F,
                                        (0.01F * 100) / 0.2F - 0.25F / 0.2F,
                                        (0.01F * 10) / 0.1F - 0.125F / 0.1F};
    const auto bgr = detectionTensor(image, config).value();
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(bgr.data[i * 1024], expected[i]);
        EXPECT_EQ(bgr.data[i * 1024 + 1023], expected[i]);
    }
    config.channelOrder = PaddleOCRImageChannelOrder::rgb;
    EXPECT_EQ(detectionTensor(image, config).value().data[2048],
              (0.01F * 200) / 0.1F - 0.125F / 0.1F);
    // Lists that are not one a channel are those that the models were trained with.
    config.normalize = {1.0F / 255, {0.5F, 0.5F}, {1, 1, 1, 1}};
    const auto white = detectionTensor(plain(32, 32, 0), config).value();
    EXPECT_EQ(white.data[0], (1.0F / 255 * 255) / 0.229F - 0.485F / 0.229F);
    EXPECT_EQ(white.data[2048], (1.0F / 255 * 255) / 0.225F - 0.406F / 0.225F);
}

/// The cubic of the resampler, widened by `scale`, over the whole axis.
std::vector<double> weights(double at, double scale, std::int64_t size) {
    std::vector<double> result;
    double sum = 0;
    for (std::int64_t i = 0; i < size; ++i) {
        const double x = std::abs(static_cast<double>(i) + 0.5 - at) / std::max(scale, 1.0);
        const double weight = x < 1   ? 1.5 * x * x * x - 2.5 * x * x + 1
                              : x < 2 ? -0.5 * x * x * x + 2.5 * x * x - 4 * x + 2
                                      : 0;
        result.push_back(weight);
        sum += weight;
    }
    for (double& weight : result)
        weight /= sum;
    return result;
}

TEST(PaddleOCRImagePreprocessor, PicturesAreResizedOnceOverWhite) {
    std::mt19937 random{11};
    for (const auto& [width, height] : {std::pair{70, 90}, {20, 17}, {64, 31}, {9, 200}}) {
        const CGImage image = pictureOf(width, height, [&](std::uint32_t, std::uint32_t) {
            return kernels::premultiplied(static_cast<std::uint32_t>(random()));
        });
        const auto tensor =
            recognitionTensor(image, lines({3, 32, 8})).value();  // 1 unit of 1/127.5 a level
        const std::int64_t wide = std::min<std::int64_t>(
            static_cast<std::int64_t>(
                std::ceil(static_cast<float>(width) / static_cast<float>(height) * 32)),
            tensor.resizedSize.width);
        for (std::int64_t y = 0; y < 32; ++y) {
            const double scaleY = height / 32.0, scaleX = width / static_cast<double>(wide);
            const auto rows = weights((static_cast<double>(y) + 0.5) * scaleY, scaleY, height);
            for (std::int64_t x = 0; x < wide; ++x) {
                const auto columns =
                    weights((static_cast<double>(x) + 0.5) * scaleX, scaleX, width);
                std::array<double, 4> sum{};
                for (std::size_t j = 0; j < rows.size(); ++j)
                    for (std::size_t i = 0; i < columns.size(); ++i)
                        for (std::size_t c = 0; c < 4; ++c)
                            sum[c] += rows[j] * columns[i] *
                                      (image.row(static_cast<std::int64_t>(j))[i] >> 8 * c & 255);
                const double alpha = std::round(std::clamp(sum[3], 0.0, 255.0));
                for (std::size_t channel = 0; channel < 3; ++channel) {  // blue first
                    const double level = std::clamp(sum[2 - channel], 0.0, alpha) + 255 - alpha;
                    const float found =
                        tensor.data[(channel * 32 + static_cast<std::size_t>(y)) *
                                        static_cast<std::size_t>(tensor.resizedSize.width) +
                                    static_cast<std::size_t>(x)];
                    ASSERT_NEAR((double{found} + 1) * 127.5, level, 0.502)
                        << width << ' ' << x << ' ' << y;
                }
            }
        }
    }
}

TEST(PaddleOCRImagePreprocessor, RecognitionWidths) {
    struct Case {
        const char* name;
        Size image;
        std::vector<std::int64_t> shape;
        std::int64_t canvas, filled;
    };
    for (const auto& [name, image, shape, canvas, filled] : {
             Case{"short", {100, 48}, {3, 48, 320}, 320, 100},
             {"long", {1000, 48}, {3, 48, 320}, 1000, 1000},
             {"rounded up", {401, 48}, {3, 48, 320, 9}, 401, 401},
             {"longer than a line may be", {4000, 10}, {3, 48, 320}, 3200, 3200},
             {"a pixel of height", {4000, 1}, {3, 48, 320}, 3200, 3200},
             {"a pixel of width", {1, 4000}, {3, 48, 320}, 320, 1},
             {"a wide canvas", {10, 10}, {3, 4, 5000}, 3200, 4},
         }) {
        const auto tensor =
            recognitionTensor(plain(image.width, image.height, pixelOf(255, 0, 0, 255)),
                              lines(shape))
                .value();
        EXPECT_EQ(tensor.shape, (std::vector<std::int64_t>{1, 3, shape[1], canvas})) << name;
        EXPECT_EQ(tensor.resizedSize, (Size{canvas, shape[1]})) << name;
        for (std::int64_t x = 0; x < canvas; ++x) {
            const auto at = static_cast<std::size_t>((2 * shape[1] + shape[1] - 1) * canvas + x);
            ASSERT_EQ(tensor.data[at], x < filled ? 1 : 0) << name << ' ' << x;  // red is last
            ASSERT_EQ(tensor.data[static_cast<std::size_t>(x)], x < filled ? -1 : 0) << name;
        }
    }
}

TEST(PaddleOCRImagePreprocessor, ABatchIsAsWideAsItsLongestLine) {
    const CGImage images[] = {plain(10, 4, pixelOf(0, 255, 0, 255)), plain(30, 4, ~0U),
                              plain(4, 4)};
    const auto tensor = recognitionBatch(images, lines({3, 4, 2})).value();
    EXPECT_EQ(tensor.shape, (std::vector<std::int64_t>{3, 3, 4, 30}));
    EXPECT_EQ(tensor.originalSize, (Size{10, 4}));
    EXPECT_EQ(tensor.resizedSize, (Size{30, 4}));
    const std::size_t filled[] = {10, 30, 4};
    for (std::size_t i = 0; i < tensor.data.size(); ++i) {
        const std::size_t x = i % 30, channel = i / 120 % 3, picture = i / 360;
        const float ink = picture == 0 && channel != 1 ? -1 : 1;
        ASSERT_EQ(tensor.data[i], x < filled[picture] ? ink : 0) << i;
    }
}

TEST(PaddleOCRImagePreprocessor, ColoursBecomeSRGB) {
    const auto linear =
        CGColorSpace::fromICCProfile(*detail::makeRGBProfile({}, detail::ToneCurve::power(1)))
            .value();
    const double level = 255 * (1.055 * std::pow(100 / 255.0, 1 / 2.4) - 0.055);
    const CGImage grey = pictureOf(
        8, 8, [](std::uint32_t, std::uint32_t) { return pixelOf(100, 100, 100, 255); }, linear);
    EXPECT_NEAR((double{recognitionTensor(grey, lines({3, 8, 8})).value().data[0]} + 1) * 127.5,
                level, 0.6);
}

TEST(PaddleOCRImagePreprocessor, Failures) {
    const CGImage image = plain(4, 4), none;
    const CGImage both[] = {image, none};
    EXPECT_EQ(detectionTensor(none, {}).error(), Error::invalidImageSize());
    EXPECT_EQ(recognitionTensor(none, lines()).error(), Error::invalidImageSize());
    EXPECT_EQ(recognitionBatch(both, lines()).error(), Error::invalidImageSize());
    EXPECT_EQ(recognitionBatch({}, lines({1})).error(), Error::invalidImageSize());
    for (const std::vector<std::int64_t>& shape : std::vector<std::vector<std::int64_t>>{
             {}, {3, 48}, {1, 48, 320}, {3, 0, 320}, {3, 48, -1}})
        EXPECT_EQ(recognitionTensor(none, lines(shape)).error(),
                  Error::invalidRecognitionShape(shape));
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(recognitionTensor(image, lines({3, most, most})).error(),
              Error::cannotCreateBitmapContext());
    EXPECT_EQ(recognitionTensor(image, lines({3, 8'000'000, 3'200})).error(),
              Error::cannotCreateBitmapContext());
    for (const char* type : {"min", "resize_long"})
        EXPECT_EQ(
            detectionTensor(image, {.limitSideLength = most, .limitType = type, .maxSideLimit = 0})
                .error(),
            Error::cannotCreateBitmapContext());
    EXPECT_EQ(Error::invalidRecognitionShape({3, 48}).description(),
              "PP-OCR recognition image shape is invalid: [3, 48].");
    EXPECT_EQ(Error::invalidRecognitionShape({}).description(),
              "PP-OCR recognition image shape is invalid: [].");
    EXPECT_EQ(Error::invalidImageSize().description(),
              "Image size is invalid for OCR preprocessing.");
    EXPECT_EQ(Error::cannotCreateBitmapContext().description(),
              "Could not create OCR preprocessing bitmap context.");
}

}  // namespace
}  // namespace pictal
