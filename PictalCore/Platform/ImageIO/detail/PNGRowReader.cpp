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

/// Looks up rows of bytes that hold so many pixels each.
template <std::size_t perByte>
std::uint32_t lookUp(const std::uint32_t* table, const std::uint8_t* stored,
                     std::span<std::uint32_t> pixels) {
    std::uint32_t all = ~0U;
    std::size_t i = 0;
    for (; i + perByte <= pixels.size(); i += perByte) {
        const std::uint32_t* const from = table + *stored++ * perByte;
        for (std::size_t j = 0; j < perByte; ++j) {
            pixels[i + j] = from[j];
            all &= from[j];
        }
    }
    for (std::size_t j = 0; i < pixels.size(); ++i, ++j)
        all &= pixels[i] = table[*stored * perByte + j];
    return all;
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
    if (!colors_.empty() && header_.bitDepth <= 8) fillByteTable();
}

void PNGRowReader::fillByteTable() {
    const int depth = header_.bitDepth;
    for (unsigned byte = 0; byte < 256; ++byte)
        for (int shift = 8 - depth; shift >= 0; shift -= depth)
            byteTable_.push_back(colors_[byte >> shift & ((1U << depth) - 1)]);
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

bool PNGRowReader::convert(const std::uint8_t* stored, std::span<std::uint32_t> pixels) const {
    const std::uint32_t all = !byteTable_.empty() ? convertBytes(stored, pixels)
                              : !colors_.empty()  ? convertWide(stored, pixels)
                                                  : convertSamples(stored, pixels);
    return kernels::alphaOf(all) == 255;
}

std::uint32_t PNGRowReader::convertBytes(const std::uint8_t* stored,
                                         std::span<std::uint32_t> pixels) const {
    const std::uint32_t* const table = byteTable_.data();
    switch (header_.bitDepth) {
        case 1:
            return lookUp<8>(table, stored, pixels);
        case 2:
            return lookUp<4>(table, stored, pixels);
        case 4:
            return lookUp<2>(table, stored, pixels);
        default:
            return lookUp<1>(table, stored, pixels);
    }
}

std::uint32_t PNGRowReader::convertWide(const std::uint8_t* stored,
                                        std::span<std::uint32_t> pixels) const {
    std::uint32_t all = ~0U;
    for (std::size_t i = 0; i < pixels.size(); ++i)
        all &= pixels[i] = colors_[word16(stored + i * 2)];
    return all;
}

std::uint32_t PNGRowReader::convertSamples(const std::uint8_t* stored,
                                           std::span<std::uint32_t> pixels) const {
    std::uint32_t all = ~0U;
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
        all &= pixels[i];
    }
    return all;
}

}  // namespace pictal::detail
