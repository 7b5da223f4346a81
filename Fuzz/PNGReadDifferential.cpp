// What the fast reader takes, libpng takes, and both give the same pixels. The input is a file
// whose checksums are made right, or, behind a first byte of at most 'z', the filtered rows of one.

#include "PictalCore/Platform/ImageIO/detail/LibPNG.h"
#include "PictalCore/Platform/ImageIO/detail/PNGFastRead.h"
#include "Tests/Support/PNGBuilder.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

using namespace pictal;
using namespace pictal::detail;

void compare(std::span<const std::byte> bytes) {
    const auto file = PNGFile::parse(bytes, PNGFile::Extent::whole);
    constexpr std::int64_t greatestSide = 128;
    if (!file || file->header.width > greatestSide || file->header.height > greatestSide ||
        file->imageData.empty())
        return;
    const auto allocate = [&] {
        return PixelBuffer::make(file->header.width, file->header.height,
                                 PixelBuffer::Contents::undefined);
    };
    auto fast = allocate();
    if (!fast || !readFast(*file, *fast)) return;
    auto slow = allocate();
    if (!slow || !readWithLibPNG(bytes, file->header, PNGRowReader(*file, PNGColor()), *slow))
        std::abort();
    for (std::int64_t y = 0; y < file->header.height; ++y)
        if (!std::ranges::equal(fast->row(y), slow->row(y))) std::abort();
}

/// Width, and rows of RGB or RGBA as far as the input goes.
void compareRows(std::span<const std::uint8_t> input) {
    if (input.size() < 2) return;
    const int colorType = input[0] % 2 == 0 ? 2 : 6;
    const std::uint32_t width = 1 + input[1] % 64;
    const std::size_t rowBytes = 1 + width * (colorType == 2 ? 3 : 4);
    PNGBuilder::Bytes rows(input.begin() + 2, input.end());
    const std::size_t height = std::min<std::size_t>(rows.size() / rowBytes, 64);
    if (height == 0) return;
    rows.resize(height * rowBytes);
    for (std::size_t at = 0; at < rows.size(); at += rowBytes)
        rows[at] %= 6;  // 5 is no filter
    compare(PNGBuilder(width, static_cast<std::uint32_t>(height), colorType, 8).rows(rows).build());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span input(data, size);
    if (size > 0 && data[0] <= 'z') {
        compareRows(input);
        return 0;
    }
    const auto bytes = std::as_bytes(input);
    std::vector<std::byte> repaired(bytes.begin(), bytes.end());
    pictal::repairChecksums(repaired);
    compare(repaired);
    return 0;
}
