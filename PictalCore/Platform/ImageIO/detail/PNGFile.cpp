#include "PictalCore/Platform/ImageIO/detail/PNGFile.h"

#include "PictalCore/Platform/ImageIO/detail/BigEndian.h"
#include "PictalCore/Platform/ImageIO/detail/FileFormats.h"

#include <algorithm>
#include <array>

#include <libdeflate.h>

namespace pictal::detail {

using PNG::ColorType;
using PNG::ReadError;

namespace {

constexpr std::array<PNGPass, 1> wholePicture{{{0, 0, 1, 1}}};
constexpr std::array<PNGPass, 7> adam7{{{0, 0, 8, 8},
                                        {4, 0, 8, 8},
                                        {0, 4, 4, 8},
                                        {2, 0, 4, 4},
                                        {0, 2, 2, 4},
                                        {1, 0, 2, 2},
                                        {0, 1, 1, 2}}};

/// Chunks that the standard knows besides the header, the pixels and the end; in what order they
/// may stand is mostly for libpng to judge.
constexpr std::array<std::string_view, 18> knownChunks{
    "PLTE", "tRNS", "gAMA", "cHRM", "sRGB", "iCCP", "sBIT", "bKGD", "hIST",
    "pHYs", "sPLT", "tIME", "tEXt", "zTXt", "iTXt", "eXIf", "cICP", "oFFs"};

struct Chunk {
    std::string_view type;
    PNGFile::Bytes data;
};

std::unexpected<ReadError> truncated(const std::string& where) {
    return std::unexpected(ReadError(ReadError::Kind::truncated,
                                     "the PNG is cut short: " + where + "; get the file again"));
}

std::unexpected<ReadError> corrupt(const std::string& what) {
    return std::unexpected(ReadError(ReadError::Kind::corrupt,
                                     "the PNG is damaged: " + what + "; get the file again"));
}

/// Takes the next chunk off `rest`.
std::expected<Chunk, ReadError> takeChunk(PNGFile::Bytes& rest, std::size_t position) {
    constexpr std::size_t frame = 12;  // length, type and checksum
    if (rest.size() < frame)
        return truncated("the file ends at byte " + std::to_string(position + rest.size()) +
                         " without its last chunk");
    const std::size_t length = bigEndian32(rest.data());
    const std::string_view type(reinterpret_cast<const char*>(rest.data()) + 4, 4);
    const bool isNamed = std::ranges::all_of(
        type, [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
    if (!isNamed || length > 0x7FFFFFFF)
        return corrupt("there is no chunk at byte " + std::to_string(position));
    const std::string name = std::string(type) + " at byte " + std::to_string(position);
    if (rest.size() - frame < length) return truncated("the file ends inside chunk " + name);
    if (libdeflate_crc32(0, rest.data() + 4, length + 4) != bigEndian32(rest.data() + 8 + length))
        return corrupt("the checksum of chunk " + name + " is wrong");
    const Chunk chunk{type, rest.subspan(8, length)};
    rest = rest.subspan(frame + length);
    return chunk;
}

std::optional<ColorType> colorTypeOf(unsigned code) {
    switch (code) {
        case 0:
            return ColorType::grey;
        case 2:
            return ColorType::rgb;
        case 3:
            return ColorType::palette;
        case 4:
            return ColorType::greyAlpha;
        case 6:
            return ColorType::rgba;
        default:
            return std::nullopt;
    }
}

bool allows(ColorType type, int depth) {
    const bool isPowerOfTwo = depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
    if (type == ColorType::grey) return isPowerOfTwo;
    if (type == ColorType::palette) return isPowerOfTwo && depth <= 8;
    return depth == 8 || depth == 16;
}

std::expected<PNGHeader, ReadError> parseHeader(const Chunk& chunk) {
    if (chunk.type != "IHDR" || chunk.data.size() != 13) return corrupt("it has no header");
    const std::byte* const data = chunk.data.data();
    const auto at = [=](int i) { return std::to_integer<unsigned>(data[i]); };
    const std::uint32_t width = bigEndian32(data);
    const std::uint32_t height = bigEndian32(data + 4);
    const auto colorType = colorTypeOf(at(9));
    const int depth = static_cast<int>(at(8));
    constexpr std::uint32_t greatest = 0x7FFFFFFF;
    if (width < 1 || height < 1 || width > greatest || height > greatest)
        return corrupt("its size is impossible");
    if (!colorType || !allows(*colorType, depth) || at(10) != 0 || at(11) != 0 || at(12) > 1)
        return corrupt("its header holds impossible values");
    return PNGHeader{width, height, depth, *colorType, at(12) == 1};
}

/// Where a chunk of this type is kept; nowhere for the types that say nothing about pixels.
PNGFile::Bytes* placeOf(PNGFile& file, std::string_view type) {
    if (type == "PLTE") return &file.palette;
    if (type == "tRNS") return &file.transparency;
    if (type == "cICP") return &file.codingPoints;
    if (type == "iCCP") return &file.profile;
    if (type == "sRGB") return &file.standardRGB;
    if (type == "gAMA") return &file.gamma;
    if (type == "cHRM") return &file.chromaticities;
    return nullptr;
}

}  // namespace

int PNGHeader::channels() const {
    switch (colorType) {
        case ColorType::grey:
        case ColorType::palette:
            return 1;
        case ColorType::greyAlpha:
            return 2;
        case ColorType::rgb:
            return 3;
        case ColorType::rgba:
            return 4;
    }
    return 4;
}

std::size_t PNGHeader::rowBytes(std::int64_t pixels) const {
    return (static_cast<std::size_t>(pixels) * static_cast<std::size_t>(channels() * bitDepth) +
            7) /
           8;
}

std::uint64_t PNGHeader::filteredBytes() const {
    std::uint64_t sum = 0;
    for (const PNGPass& pass : passesOf(*this)) {
        const std::int64_t columns = pass.columns(width);
        if (columns == 0) continue;
        sum += static_cast<std::uint64_t>(pass.rows(height)) * (rowBytes(columns) + 1);
    }
    return sum;
}

std::span<const PNGPass> passesOf(const PNGHeader& header) {
    if (header.interlaced) return adam7;
    return wholePicture;
}

std::expected<PNGFile, ReadError> PNGFile::parse(Bytes bytes, Extent extent) {
    if (!PNG::isPNG(bytes)) {
        if (!bytes.empty() && bytes.size() < pngSignature.size() && startsAs(bytes, pngSignature))
            return truncated("it holds " + std::to_string(bytes.size()) + " bytes");
        return std::unexpected(ReadError(ReadError::Kind::notPNG, whyNotPNG(bytes)));
    }
    Bytes rest = bytes.subspan(pngSignature.size());
    const auto first = takeChunk(rest, bytes.size() - rest.size());
    if (!first) return std::unexpected(first.error());
    const auto header = parseHeader(*first);
    if (!header) return std::unexpected(header.error());

    PNGFile file;
    file.header = *header;
    bool pixelsEnded = false;
    for (;;) {
        const bool atPixels = rest.size() >= 8 && startsAs(rest.subspan(4), "IDAT");
        if (extent == Extent::beforePixels && atPixels) return file;
        const auto chunk = takeChunk(rest, bytes.size() - rest.size());
        if (!chunk) return std::unexpected(chunk.error());
        if (chunk->type == "IEND") return file;
        if (chunk->type == "IDAT") {
            if (pixelsEnded) file.hasPlainLayout = false;
            file.imageData.push_back(chunk->data);
            continue;
        }
        pixelsEnded = !file.imageData.empty();
        if (std::ranges::find(knownChunks, chunk->type) == knownChunks.end())
            file.hasPlainLayout = false;
        Bytes* const place = placeOf(file, chunk->type);
        const bool isColors = place == &file.palette || place == &file.transparency;
        if (isColors && (pixelsEnded || chunk->data.empty() || !place->empty() ||
                         (place == &file.palette && !file.transparency.empty())))
            file.hasPlainLayout = false;
        if (place && !pixelsEnded && place->empty()) *place = chunk->data;
    }
}

}  // namespace pictal::detail
