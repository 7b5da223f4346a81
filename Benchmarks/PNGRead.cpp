// PNG reading, libpng beside ours on the same files.

#include "Benchmarks/PNGPictures.h"
#include "PictalCore/Platform/ImageIO/PNG.h"

#include <cstring>

#include <benchmark/benchmark.h>
#include <png.h>

namespace pictal {
namespace {

using File = std::vector<std::byte>;

/// The file as libpng writes it by default.
File writtenByLibPNG(const CGImage& image) {
    std::vector<std::byte> pixels;
    for (std::int64_t y = 0; y < image.height(); ++y) {
        const auto row = std::as_bytes(image.row(y));
        pixels.insert(pixels.end(), row.begin(), row.end());
    }
    // Opaque pictures are RGB files; the simplified interface cannot drop the alpha itself.
    const bool isOpaque = image.isOpaque();
    if (isOpaque)
        for (std::size_t from = 0, to = 0; from < pixels.size(); from += 4, to += 3)
            std::memmove(&pixels[to], &pixels[from], 3);
    png_image description{};
    description.version = PNG_IMAGE_VERSION;
    description.width = static_cast<png_uint_32>(image.width());
    description.height = static_cast<png_uint_32>(image.height());
    description.format = isOpaque ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(description);
    File file(size);
    if (!png_image_write_to_memory(&description, file.data(), &size, 0, pixels.data(), 0, nullptr))
        return {};
    file.resize(size);
    return file;
}

void read(benchmark::State& state, const File& file) {
    for (auto _ : state)
        benchmark::DoNotOptimize(PNG::read(file)->width());
}

void readByLibPNG(benchmark::State& state, const File& file) {
    for (auto _ : state) {
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        png_image_begin_read_from_memory(&image, file.data(), file.size());
        image.format = PNG_FORMAT_RGBA;
        const std::unique_ptr<std::byte[]> pixels(new std::byte[PNG_IMAGE_SIZE(image)]);
        png_image_finish_read(&image, nullptr, pixels.get(), 0, nullptr);
        benchmark::DoNotOptimize(pixels[0]);
    }
}

const bool registered = [] {
    for (const auto& [name, picture] : pngPictures()) {
        const CGImage image = picture();
        const std::pair<std::string, File> files[] = {{"ours", *PNG::write(image)},
                                                      {"libpng's", writtenByLibPNG(image)}};
        for (const auto& [writer, file] : files) {
            const std::string what = "PNGRead/" + name + ", file of " + writer;
            benchmark::RegisterBenchmark((what + "/read").c_str(), [file](benchmark::State& state) {
                read(state, file);
            })->Unit(benchmark::kMillisecond);
            benchmark::RegisterBenchmark((what + "/libpng").c_str(), [file](
                                                                         benchmark::State& state) {
                readByLibPNG(state, file);
            })->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace pictal
