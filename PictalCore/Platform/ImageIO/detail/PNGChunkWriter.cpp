#include "PictalCore/Platform/ImageIO/detail/PNGChunkWriter.h"

#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/ImageIO/detail/BigEndian.h"
#include "PictalCore/Platform/ImageIO/detail/FileFormats.h"
#include "PictalCore/Platform/ImageIO/detail/ZlibStream.h"

#include <algorithm>
#include <new>

#include <libdeflate.h>

namespace pictal::detail {

using PNG::ColorType;

namespace {

/// A chunk's length has 31 bits; longer streams are cut here.
constexpr std::size_t greatestChunk = std::size_t{1} << 30;

void append(std::vector<std::byte>& bytes, std::span<const std::byte> more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

std::byte codeOf(ColorType type) {
    switch (type) {
        case ColorType::grey:
            return std::byte{0};
        case ColorType::rgb:
            return std::byte{2};
        case ColorType::palette:
            return std::byte{3};
        case ColorType::greyAlpha:
            return std::byte{4};
        case ColorType::rgba:
            return std::byte{6};
    }
    return std::byte{6};
}

/// The contents of an iCCP chunk: a name, a zero, the method zero, a zlib stream.
std::vector<std::byte> packedProfile(std::span<const std::byte> profile) {
    std::vector<std::byte> data;
    append(data, std::as_bytes(std::span(std::string_view("ICC profile\0\0", 13))));
    const auto stream = compressed(profile, 9);
    if (!stream) throw std::bad_alloc();
    append(data, stream->span());
    return data;
}

}  // namespace

void PNGChunkWriter::begin(std::int64_t width, std::int64_t height, ColorType colorType,
                           int bitDepth) {
    append(bytes_, std::as_bytes(std::span(pngSignature)));
    std::vector<std::byte> header;
    appendBigEndian32(header, static_cast<std::uint32_t>(width));
    appendBigEndian32(header, static_cast<std::uint32_t>(height));
    header.push_back(static_cast<std::byte>(bitDepth));
    header.push_back(codeOf(colorType));
    header.resize(13);  // compression, filter and interlace methods 0
    chunk("IHDR", header);
}

void PNGChunkWriter::colorSpace(const CGColorSpace& space) {
    constexpr std::byte relativeColorimetric{1};
    if (space.isSRGB()) chunk("sRGB", {&relativeColorimetric, 1});
    if (!space.iccProfile().empty()) chunk("iCCP", packedProfile(space.iccProfile()));
}

void PNGChunkWriter::palette(std::span<const std::uint32_t> colors) {
    std::vector<std::byte> components;
    std::vector<std::byte> alphas;
    for (const std::uint32_t color : colors) {
        for (int shift = 0; shift < 24; shift += 8)
            components.push_back(static_cast<std::byte>(color >> shift & 255));
        if (kernels::alphaOf(color) != 255)
            alphas.push_back(static_cast<std::byte>(kernels::alphaOf(color)));
    }
    chunk("PLTE", components);
    if (!alphas.empty()) chunk("tRNS", alphas);
}

void PNGChunkWriter::imageData(std::span<const std::byte> stream) {
    for (; stream.size() > greatestChunk; stream = stream.subspan(greatestChunk))
        chunk("IDAT", stream.first(greatestChunk));
    chunk("IDAT", stream);
}

void PNGChunkWriter::end() {
    chunk("IEND", {});
}

void PNGChunkWriter::chunk(std::string_view type, std::span<const std::byte> data) {
    appendBigEndian32(bytes_, static_cast<std::uint32_t>(data.size()));
    const std::size_t covered = bytes_.size();
    append(bytes_, std::as_bytes(std::span(type)));
    append(bytes_, data);
    appendBigEndian32(bytes_,
                      libdeflate_crc32(0, bytes_.data() + covered, bytes_.size() - covered));
}

}  // namespace pictal::detail
