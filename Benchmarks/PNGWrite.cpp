// PNG writing, libpng's default beside ours on the same pictures.

#include "Benchmarks/PNGPictures.h"
#include "PictalCore/Platform/ImageIO/PNG.h"

#include <benchmark/benchmark.h>
#include <png.h>

namespace pictal {
namespace {

void report(benchmark::State& state, const CGImage& image, std::size_t fileSize) {
    state.SetBytesProcessed(state.iterations() * image.width() * image.height() * 4);
    state.counters["fileBytes"] = static_cast<double>(fileSize);
}

void write(benchmark::State& state, const CGImage& image, PNG::Compression compression) {
    std::size_t size = 0;
    for (auto _ : state)
        size = PNG::write(image, compression)->size();
    report(state, image, size);
}

void append(png_structp png, png_bytep data, std::size_t size) {
    auto& bytes = *static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    bytes.insert(bytes.end(), data, data + size);
}

/// RGB, or RGBA where the picture is translucent; all else as libpng has it.
void writeByLibPNG(benchmark::State& state, const CGImage& image) {
    std::vector<std::uint8_t> bytes;
    for (auto _ : state) {
        bytes.clear();
        png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        if (setjmp(png_jmpbuf(png))) return;
        png_set_write_fn(png, &bytes, append, nullptr);
        png_set_IHDR(png, info, static_cast<png_uint_32>(image.width()),
                     static_cast<png_uint_32>(image.height()), 8,
                     image.isOpaque() ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGBA, 0, 0, 0);
        png_write_info(png, info);
        if (image.isOpaque()) png_set_filler(png, 0, PNG_FILLER_AFTER);
        for (std::int64_t y = 0; y < image.height(); ++y)
            png_write_row(png, reinterpret_cast<png_const_bytep>(image.row(y).data()));
        png_write_end(png, info);
        png_destroy_write_struct(&png, &info);
    }
    report(state, image, bytes.size());
}

const bool registered = [] {
    for (const auto& [name, picture] : pngPictures()) {
        const auto add = [&](const std::string& how, auto&& run) {
            benchmark::RegisterBenchmark(("PNGWrite/" + name + "/" + how).c_str(), run)
                ->Unit(benchmark::kMillisecond);
        };
        const CGImage image = picture();
        for (const auto compression : allCases<PNG::Compression>())
            add(std::string(rawValue(compression)),
                [=](benchmark::State& state) { write(state, image, compression); });
        add("libpng", [=](benchmark::State& state) { writeByLibPNG(state, image); });
    }
    return true;
}();

}  // namespace
}  // namespace pictal
