#pragma once

#include "PictalCore/Platform/ImageIO/detail/PNGColor.h"
#include "PictalCore/Platform/ImageIO/detail/PNGFile.h"

namespace pictal::detail {

/// Turns the rows of a file, unfiltered but otherwise as stored, into premultiplied pixels. Each
/// component is rounded once, from the depth of the file.
class PNGRowReader {
  public:
    PNGRowReader(const PNGFile& file, const PNGColor& color);

    /// @param stored  as many bytes as `pixels` take in this file
    /// @return whether all of them are opaque
    bool convert(const std::uint8_t* stored, std::span<std::uint32_t> pixels) const;

  private:
    /// A sample of each channel in the depth of the file.
    struct Sample {
        std::uint32_t red, green, blue, alpha;
    };

    /// These return all pixels and-ed.
    std::uint32_t convertBytes(const std::uint8_t* stored, std::span<std::uint32_t> pixels) const;
    std::uint32_t convertWide(const std::uint8_t* stored, std::span<std::uint32_t> pixels) const;
    std::uint32_t convertSamples(const std::uint8_t* stored, std::span<std::uint32_t> pixels) const;
    [[nodiscard]] std::vector<std::uint32_t> paletteColors(const PNGFile& file) const;
    [[nodiscard]] std::vector<std::uint32_t> greyColors() const;
    [[nodiscard]] bool isKey(const Sample& sample) const;
    void fillByteTable();

    PNGHeader header_;
    /// The pixel of every value that a sample can have: for palettes, and for grey without alpha.
    std::vector<std::uint32_t> colors_;
    /// Of those with up to 8 bits, the pixels of every byte: eight of one bit, one of eight.
    std::vector<std::uint32_t> byteTable_;
    /// What a level of grey is when it goes through a profile.
    std::vector<WideRGB> greys_;
    /// The colour that stands for transparent.
    std::optional<std::array<std::uint32_t, 3>> key_;
};

}  // namespace pictal::detail
