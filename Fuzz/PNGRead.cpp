// Any bytes are a picture or an error, as they come and with their checksums made right.

#include "PictalCore/Platform/ImageIO/PNG.h"
#include "Tests/Support/PNGBuilder.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

void read(std::span<const std::byte> file) {
    constexpr pictal::PNG::ReadLimits limits{.maximumPixels = 128 * 128};
    const auto image = pictal::PNG::read(file, limits);
    const auto info = pictal::PNG::readInfo(file);
    if (!image) return;
    // What can be read can be looked at, and every pixel is premultiplied.
    if (!info || info->width != image->width() || info->height != image->height()) std::abort();
    for (std::int64_t y = 0; y < image->height(); ++y)
        for (const std::uint32_t pixel : image->row(y))
            for (int shift = 0; shift < 24; shift += 8)
                if ((pixel >> shift & 255) > pixel >> 24) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    read(bytes);
    std::vector<std::byte> repaired(bytes.begin(), bytes.end());
    pictal::repairChecksums(repaired);
    read(repaired);
    return 0;
}
