#include "PictalCore/PictalCore.h"

#include <array>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace pictal {
namespace {

/// Everything on the way from a file to a file, tables that are built on first use included.
std::vector<std::byte> exported(const std::vector<std::byte>& png, const std::string& json) {
    const CGImage image = PNG::read(png).value();
    const auto annotations = decodeJSON<std::vector<ScreenshotAnnotation>>(json).value();
    const CGImage annotated = AnnotationRenderer().render(image, annotations).value();
    const CGImage card =
        TransparentImageRenderer().render(annotated, ScreenshotStyle::presentationCard).value();
    return TransparentImageRenderer().pngData(card).value();
}

TEST(Threads, TheSamePictureOnEveryThread) {
    std::vector<std::uint32_t> pixels(120 * 90);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<std::uint32_t>(i * 2654435761U) | 0xFF000000;
    const CGImage image =
        CGImage::fromBytes(std::as_bytes(std::span(pixels)), {120, 90, 480}, CGColorSpace::sRGB())
            .value();
    const auto png = PNG::write(image).value();
    const std::array annotations{ScreenshotAnnotation::arrow({5, 5}, {80, 60}, {}),
                                 ScreenshotAnnotation::ellipse(CGRect(20, 20, 60, 40), {}),
                                 ScreenshotAnnotation::brush({{10, 80}, {60, 20}, {110, 80}}, {})};
    const std::string json =
        encodeJSON(std::vector<ScreenshotAnnotation>(annotations.begin(), annotations.end()))
            .value();

    std::array<std::vector<std::byte>, 4> results;
    std::vector<std::thread> threads;
    for (auto& result : results)
        threads.emplace_back([&] {
            for (int round = 0; round < 5; ++round)
                result = exported(png, json);
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const auto& result : results)
        EXPECT_EQ(result, results.front());
    EXPECT_EQ(results.front(), exported(png, json));
}

}  // namespace
}  // namespace pictal
