#include "PictalCore/OCR/PaddleOCRCTCDecoder.h"
#include "PictalCore/OCR/detail/GreatestValue.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Error = PaddleOCRCTCDecoderError;
using Shape = std::vector<std::int64_t>;
constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinite = std::numeric_limits<float>::infinity();

PaddleOCRCTCDecoder decoder(std::vector<std::string> dictionary = {"a", "b"}) {
    return PaddleOCRCTCDecoder::make(std::move(dictionary)).value();
}

/// One step a class, the class having the value and all others less.
std::vector<float> output(const std::vector<std::pair<std::size_t, float>>& steps,
                          std::size_t classes) {
    std::vector<float> data;
    for (const auto& [best, value] : steps)
        for (std::size_t i = 0; i < classes; ++i)
            data.push_back(i == best ? value : value / 4);
    return data;
}

PaddleOCRDecodedText decoded(const std::vector<std::pair<std::size_t, float>>& steps,
                             std::size_t classes = 4) {
    const Shape shape{1, static_cast<std::int64_t>(steps.size()),
                      static_cast<std::int64_t>(classes)};
    return decoder().decode(output(steps, classes), shape).value();
}

TEST(PaddleOCRCTCDecoder, Labels) {
    EXPECT_EQ(decoder({"a", "", "a"}).characters(),
              (std::vector<std::string>{"blank", "a", "", "a", " "}));
    EXPECT_EQ(decoder().blankIndex(), 0);
    EXPECT_EQ(PaddleOCRCTCDecoder::make({}).error(), Error::emptyDictionary());
}

TEST(PaddleOCRCTCDecoder, RepetitionsAreTakenOnceAndBlanksLeftOut) {
    EXPECT_EQ(decoded({{1, 0.9F}, {1, 0.8F}, {0, 0.99F}, {1, 0.7F}, {2, 0.6F}, {2, 0.5F}}),
              (PaddleOCRDecodedText{"aab", (0.9F + 0.7F + 0.6F) / 3}));
    EXPECT_EQ(decoded({{0, 1}, {0, 0.5F}}), (PaddleOCRDecodedText{"", 0}));
    EXPECT_EQ(decoded({{3, 0.5F}}), (PaddleOCRDecodedText{" ", 0.5F}));
    // A class without a label says nothing, but it is a class: the same one twice around it counts.
    EXPECT_EQ(decoded({{1, 1}, {5, 1}, {1, 0.5F}, {4, 1}}, 6), (PaddleOCRDecodedText{"aa", 0.75F}));
    const std::vector<float> tie{0.1F, 0.4F, 0.4F, 0.2F};
    EXPECT_EQ(decoder().decode(tie, Shape{1, 1, 4})->text, "a");
}

TEST(PaddleOCRCTCDecoder, Batches) {
    const auto data = output({{1, 1}, {2, 1}, {2, 1}, {0, 1}, {0, 1}, {3, 0.5F}}, 4);
    const auto texts = decoder().decodeBatch(data, Shape{3, 2, 4}).value();
    EXPECT_EQ(texts, (std::vector<PaddleOCRDecodedText>{{"ab", 1}, {"b", 1}, {" ", 0.5F}}));
    EXPECT_EQ(decoder().decode(data, Shape{3, 2, 4})->text, "ab");
}

TEST(PaddleOCRCTCDecoder, Failures) {
    const std::vector<float> data(7'000);
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    for (const Shape& shape : {Shape{},
                               {1, 40},
                               {1, 0, 97},
                               {-1, -1, 7'000},
                               {1, 7, 10, 100},
                               {most, 2, 2},
                               {1LL << 32, 1LL << 32, 1},
                               {3, most, 3}}) {
        EXPECT_EQ(decoder().decodeBatch(data, shape).error(), Error::invalidOutputShape(shape));
        EXPECT_EQ(decoder().decode(data, shape).error(), Error::invalidOutputShape(shape));
    }
    const Error mismatch = Error::outputElementCountMismatch(7'760, 7'000);
    EXPECT_EQ(decoder().decodeBatch(data, Shape{2, 40, 97}).error(), mismatch);
    EXPECT_EQ(decoder().decode(data, Shape{2, 40, 97}).error(), mismatch);
    EXPECT_EQ(mismatch.description(),
              "PP-OCR recognition output element count mismatch: expected 7760, got 7000.");
    EXPECT_EQ(Error::invalidOutputShape({1, 40}).description(),
              "PP-OCR recognition output shape is invalid: [1, 40].");
    EXPECT_EQ(Error::emptyDictionary().description(), "PP-OCR character dictionary is empty.");
}

/// The first number, then whatever is strictly greater.
std::size_t plainGreatest(const std::vector<float>& values) {
    std::size_t best = 0;
    for (std::size_t i = 1; i < values.size(); ++i)
        if (values[i] > values[best] || (std::isnan(values[best]) && !std::isnan(values[i])))
            best = i;
    return best;
}

TEST(GreatestValue, IsThePlainOneAtEveryTarget) {
    std::mt19937 random{3};
    for (const kernels::Target target : kernels::allTargets) {
        if (!kernels::isAvailable(target)) continue;
        const auto firstGreatest = detail::firstGreatestAt(target);
        for (std::size_t size = 1; size < 3'000; size += size < 140 ? 1 : 401)
            for (const std::uint32_t levels : {1U, 3U, 1'000U, 4'000'000'000U}) {
                std::vector<float> values(size);
                for (float& value : values)
                    value = random() % 9 == 0 ? nan : static_cast<float>(random() % levels) - 1;
                EXPECT_EQ(firstGreatest(values), plainGreatest(values)) << size << ' ' << levels;
            }
        for (const auto& values : {std::vector{nan},
                                   {nan, nan, nan},
                                   {nan, -infinite, -1.0F},
                                   {nan, -infinite, -infinite},
                                   {-infinite, -infinite},
                                   {-0.0F, 0.0F},
                                   {0.0F, infinite, nan, infinite}})
            EXPECT_EQ(firstGreatest(values), plainGreatest(values)) << values[0];
    }
}

}  // namespace
}  // namespace pictal
