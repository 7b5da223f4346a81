#include "PictalCore/Platform/ImageIO/detail/PNGRowReader.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
#include "PictalCore/Platform/ImageIO/detail/BigEndian.h"

#include <algorithm>

namespace pictal::detail {

using PNG::ColorType;

namespace {

constexpr std::uint32_t wide = 65535;

/// A component of 16 bits times an alpha of 16 bits as one of 8, exactly rounded.
constexpr std::uint32_t premultiplied16(std::uint64_t component, std::uint64_t alpha) {
    constexpr std::uint64_t one = std::uint64_t{wide} * wide;
    return static_cast<std::uint32_t>((component * alpha * 255 + one / 2) / one);
}

constexpr std::uint32_t pixelOf16(const WideRGB& color, std::uint32_t alpha) {
    return kernels::pixelOf(premultiplied16(color[0], alpha), premultiplied16(color[1], alpha),
                            premultiplied16(color[2], alpha), premultiplied16(alpha, wide));
}

constexpr std::uint32_t word16(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) << 8 | bytes[1];
}

/// The sample of `depth` bits, at most 8, at a place in a row.
constexpr std::uint32_t packedSample(const std::uint8_t* row, std::size_t index, int depth) {
    const std::size_t bit = index * static_cast<std::size_t>(depth);
    return row[bit / 8] >> (8 - depth - static_cast<int>(bit % 8)) & ((1 << depth) - 1);
}

}  // namespace

PNGRowReader::PNGRowReader(const PNGFile& file, const PNGColor& color) : header_(file.header) {
    const std::size_t levels = std::size_t{1} << header_.bitDepth;
    if (!color.greyProfile.empty())
        greys_ = greyLevelsInSRGB(color.greyProfile, levels).value_or(std::vector<WideRGB>());
    const std::size_t keyBytes = header_.colorType == ColorType::grey  ? 2
                                 : header_.colorType == ColorType::rgb ? 6
                                                                       : 0;
    if (keyBytes != 0 && file.transparency.size() == keyBytes) {
        key_.emplace();
        for (std::size_t i = 0; i < 3; ++i)
            (*key_)[i] = bigEndian16(file.transparency.data() + i * 2 % keyBytes) &
                         static_cast<std::uint32_t>(levels - 1);
    }
    if (header_.colorType == ColorType::palette) colors_ = paletteColors(file);
    if (header_.colorType == ColorType::grey) colors_ = greyColors();
}

bool PNGRowReader::isKey(const Sample& sample) const {
    return key_ && std::array{sample.red, sample.green, sample.blue} == *key_;
}

std::vector<std::uint32_t> PNGRowReader::paletteColors(const PNGFile& file) const {
    // A value behind the palette's end is opaque black.
    std::vector<std::uint32_t> colors(std::size_t{1} << header_.bitDepth, 0xFF000000);
    const auto byte = [](PNGFile::Bytes bytes, std::size_t i) {
        return std::to_integer<std::uint32_t>(bytes[i]);
    };
    for (std::size_t i = 0; i < std::min(colors.size(), file.palette.size() / 3); ++i) {
        const std::uint32_t alpha = i < file.transparency.size() ? byte(file.transparency, i) : 255;
        colors[i] = kernels::premultiplied(kernels::pixelOf(byte(file.palette, i * 3),
                                                            byte(file.palette, i * 3 + 1),
                                                            byte(file.palette, i * 3 + 2), alpha));
    }
    return colors;
}

std::vector<std::uint32_t> PNGRowReader::greyColors() const {
    const std::uint32_t greatest = (1U << header_.bitDepth) - 1;
    std::vector<std::uint32_t> colors(greatest + 1);
    for (std::uint32_t level = 0; level <= greatest; ++level) {
        const std::uint32_t grey = (level * 255 + greatest / 2) / greatest;
        colors[level] = isKey({level, level, level, greatest}) ? 0
                        : greys_.empty() ? kernels::pixelOf(grey, grey, grey, 255)
                                         : pixelOf16(greys_[level], wide);
    }
    return colors;
}

void PNGRowReader::convert(const std::uint8_t* stored, std::span<std::uint32_t> pixels) const {
    if (!colors_.empty())
        convertIndexed(stored, pixels);
    else
        convertSamples(stored, pixels);
}

void PNGRowReader::convertIndexed(const std::uint8_t* stored,
                                  std::span<std::uint32_t> pixels) const {
    const int depth = header_.bitDepth;
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = colors_[depth == 16 ? word16(stored + i * 2) : packedSample(stored, i, depth)];
}

void PNGRowReader::convertSamples(const std::uint8_t* stored,
                                  std::span<std::uint32_t> pixels) const {
    const bool isWide = header_.bitDepth == 16;
    const bool isGrey = header_.colorType == ColorType::greyAlpha;
    const bool hasAlpha = isGrey || header_.colorType == ColorType::rgba;
    const std::size_t channels = static_cast<std::size_t>(header_.channels());
    const std::uint32_t greatest = isWide ? wide : 255;
    std::array<std::uint32_t, 4> channel{};
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        for (std::size_t c = 0; c < channels; ++c)
            channel[c] =
                isWide ? word16(stored + (i * channels + c) * 2) : stored[i * channels + c];
        Sample sample{channel[0], isGrey ? channel[0] : channel[1],
                      isGrey ? channel[0] : channel[2],
                      hasAlpha ? channel[channels - 1] : greatest};
        if (isKey(sample)) sample = {0, 0, 0, 0};
        const std::uint32_t scale = wide / greatest;
        if (!greys_.empty())
            pixels[i] = pixelOf16(greys_[sample.red], sample.alpha * scale);
        else if (isWide)
            pixels[i] = pixelOf16(
                {static_cast<std::uint16_t>(sample.red), static_cast<std::uint16_t>(sample.green),
                 static_cast<std::uint16_t>(sample.blue)},
                sample.alpha);
        else
            pixels[i] = kernels::premultiplied(
                kernels::pixelOf(sample.red, sample.green, sample.blue, sample.alpha));
    }
}

}  // namespace pictal::detail
