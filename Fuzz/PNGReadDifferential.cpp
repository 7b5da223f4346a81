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
    const PNGRowReader rows(*file, PNGColor());
    auto fast = makeBufferFor(*file);
    if (!fast) return;
    const auto opacity = readFast(*file, rows, *fast);
    if (!opacity) return;
    auto slow = makeBufferFor(*file);
    if (!slow || !readWithLibPNG(bytes, file->header, rows, *slow)) std::abort();
    bool isOpaque = true;
    for (std::int64_t y = 0; y < file->header.height; ++y) {
        if (!std::ranges::equal(fast->row(y), slow->row(y))) std::abort();
        for (const std::uint32_t pixel : fast->row(y))
            isOpaque &= pixel >> 24 == 255;
    }
    if (isOpaque != (*opacity == Opacity::opaque)) std::abort();
}

/// The kind, the width, and rows as far as the input goes.
void compareRows(std::span<const std::uint8_t> input) {
    if (input.size() < 2) return;
    struct Kind {
        int colorType, bitDepth, channels;
    };
    constexpr Kind kinds[] = {{2, 8, 3}, {6, 8, 4}, {0, 8, 1}, {0, 1, 1}, {0, 2, 1},
                              {0, 4, 1}, {3, 8, 1}, {3, 1, 1}, {3, 2, 1}, {3, 4, 1}};
    const Kind kind = kinds[input[0] % std::size(kinds)];
    const std::uint32_t width = 1 + input[1] % 64;
    const std::size_t bits = width * static_cast<std::size_t>(kind.bitDepth * kind.channels);
    const std::size_t rowBytes = 1 + (bits + 7) / 8;
    PNGBuilder::Bytes rows(input.begin() + 2, input.end());
    const std::size_t height = std::min<std::size_t>(rows.size() / rowBytes, 64);
    if (height == 0) return;
    rows.resize(height * rowBytes);
    for (std::size_t at = 0; at < rows.size(); at += rowBytes)
        rows[at] %= 6;  // 5 is no filter
    PNGBuilder file(width, static_cast<std::uint32_t>(height), kind.colorType, kind.bitDepth);
    // Colours that are made of the rows' bytes, the first of them translucent.
    if (kind.colorType == 3) {
        PNGBuilder::Bytes colors(std::min<std::size_t>(rows.size(), 3U << kind.bitDepth) / 3 * 3);
        std::copy_n(rows.begin(), colors.size(), colors.begin());
        if (colors.empty()) return;
        file.chunk("PLTE", colors);
    }
    if (kind.colorType == 3 && input[1] >= 128) file.chunk("tRNS", {input[1]});
    if (kind.colorType == 0 && input[1] >= 128) file.chunk("tRNS", {0, input[1]});
    compare(file.rows(rows).build());
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
