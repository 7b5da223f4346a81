#include "PictalCore/Platform/Graphics/Pixels/ImageOfPixels.h"
#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Platform/ImageIO/detail/FileFormats.h"
#include "PictalCore/Platform/ImageIO/detail/LibPNG.h"
#include "PictalCore/Platform/ImageIO/detail/PNGFastRead.h"

namespace pictal::PNG {

using detail::PNGColor;
using detail::PNGFile;
using detail::PNGHeader;
using detail::PNGRowReader;

namespace {

std::string sizeOf(const PNGHeader& header) {
    return std::to_string(header.width) + " × " + std::to_string(header.height);
}

std::expected<void, ReadError> checkSize(const PNGFile& file, const ReadLimits& limits) {
    const PNGHeader& header = file.header;
    if (header.width > detail::maximumSide || header.height > detail::maximumSide)
        return std::unexpected(
            ReadError(ReadError::Kind::tooLarge,
                      sizeOf(header) + " pixels: a side may have 8,000,000 at most"));
    if (header.width * header.height > limits.maximumPixels)
        return std::unexpected(ReadError(ReadError::Kind::tooLarge,
                                         sizeOf(header) + " pixels are more than the limit of " +
                                             std::to_string(limits.maximumPixels)));
    std::uint64_t compressed = 0;
    for (const PNGFile::Bytes data : file.imageData)
        compressed += data.size();
    // Deflate's longest match, 258 bytes, takes two bits at least.
    constexpr std::uint64_t greatestExpansion = 258 * 8 / 2;
    if (header.filteredBytes() > compressed * greatestExpansion)
        return std::unexpected(ReadError(ReadError::Kind::truncated,
                                         "the PNG claims " + sizeOf(header) + " pixels, but its " +
                                             std::to_string(compressed) +
                                             " bytes of data cannot hold as many"));
    return {};
}

}  // namespace

bool isPNG(std::span<const std::byte> bytes) {
    return bytes.size() >= detail::pngSignature.size() &&
           detail::startsAs(bytes, detail::pngSignature);
}

std::expected<CGImage, ReadError> read(std::span<const std::byte> bytes, const ReadLimits& limits) {
    const auto file = PNGFile::parse(bytes, PNGFile::Extent::whole);
    if (!file) return std::unexpected(file.error());
    if (auto fits = checkSize(*file, limits); !fits) return std::unexpected(fits.error());

    auto pixels = detail::makeBufferFor(*file);
    if (!pixels)
        return std::unexpected(
            ReadError(ReadError::Kind::outOfMemory,
                      "not enough memory for " + sizeOf(file->header) + " pixels"));
    const PNGColor color = PNGColor::of(*file);
    const PNGRowReader rows(*file, color);
    if (const auto opacity = detail::readFast(*file, rows, *pixels))
        return detail::imageOf(*std::move(pixels), color.space, *opacity);
    if (auto done = detail::readWithLibPNG(bytes, file->header, rows, *pixels); !done)
        return std::unexpected(done.error());
    return detail::imageOf(*std::move(pixels), color.space);
}

std::expected<Info, ReadError> readInfo(std::span<const std::byte> bytes) {
    const auto file = PNGFile::parse(bytes, PNGFile::Extent::beforePixels);
    if (!file) return std::unexpected(file.error());
    const PNGHeader& header = file->header;
    const PNGColor color = PNGColor::of(*file);
    return Info{.width = header.width,
                .height = header.height,
                .bitDepth = header.bitDepth,
                .colorType = header.colorType,
                .interlaced = header.interlaced,
                .hasAlpha = header.colorType == ColorType::greyAlpha ||
                            header.colorType == ColorType::rgba || !file->transparency.empty(),
                .colorSpace = color.description(*file),
                .unusedColor = color.unused};
}

}  // namespace pictal::PNG
