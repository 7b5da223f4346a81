#include "PictalCore/Platform/ImageIO/detail/PNGFastRead.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
#include "PictalCore/Platform/Graphics/Kernels/UnfilterRows.h"
#include "PictalCore/Platform/ImageIO/detail/ZlibStream.h"

namespace pictal::detail {

using kernels::RowFilter;
using PNG::ColorType;

namespace {

bool isCommon(const PNGFile& file) {
    const PNGHeader& header = file.header;
    const bool hasKey = header.colorType == ColorType::rgb && !file.transparency.empty();
    return file.hasPlainLayout && header.bitDepth == 8 && !header.interlaced && !hasKey &&
           (header.colorType == ColorType::rgb || header.colorType == ColorType::rgba);
}

/// Unpacks the stream when it ends exactly where it should on both sides, in `room`.
bool inflateRows(const PNGFile& file, std::span<std::uint8_t> room) {
    std::vector<std::byte> joined;
    if (file.imageData.size() > 1)
        for (const PNGFile::Bytes piece : file.imageData)
            joined.insert(joined.end(), piece.begin(), piece.end());
    const PNGFile::Bytes stream = joined.empty() ? file.imageData[0] : PNGFile::Bytes(joined);
    // A window of 32 kB: libpng refuses distances beyond a smaller one, libdeflate does not look.
    constexpr std::byte deflateWithFullWindow{0x78};
    if (stream.empty() || stream[0] != deflateWithFullWindow) return false;
    const Inflation result = inflate(stream, std::as_writable_bytes(room));
    return result.status == Inflation::Status::done && result.taken == stream.size() &&
           result.made == room.size();
}

/// RGB rows become pixels in place; rows with alpha pass through two rows of straight pixels.
class Rows {
  public:
    Rows(const PNGHeader& header, PixelBuffer& pixels)
        : hasAlpha_(header.colorType == ColorType::rgba),
          pixels_(pixels),
          above_(static_cast<std::size_t>(header.width)),
          straight_(hasAlpha_ ? above_.size() : 0) {}

    void take(std::int64_t y, RowFilter filter, const std::uint8_t* stored) {
        const std::span<std::uint32_t> row = pixels_.row(y);
        if (hasAlpha_) {
            kernels::unfilterRGBA(filter, stored, above_, straight_);
            alpha_.premultiply(straight_, row);
            std::swap(straight_, above_);
        } else if (y == 0) {
            kernels::unfilterRGB(filter, stored, above_, row);
        } else {
            kernels::unfilterRGB(filter, stored, pixels_.row(y - 1), row);
        }
    }

  private:
    const kernels::AlphaKernels& alpha_ = kernels::alphaKernels();
    bool hasAlpha_;
    PixelBuffer& pixels_;
    std::vector<std::uint32_t> above_;
    std::vector<std::uint32_t> straight_;
};

}  // namespace

bool readFast(const PNGFile& file, PixelBuffer& pixels) {
    if (!isCommon(file)) return false;
    const PNGHeader& header = file.header;
    const std::size_t rowBytes = header.rowBytes(header.width) + 1;
    // Pixel memory comes with huge pages; a word more in each row leaves bytes behind the last.
    auto memory = PixelBuffer::make(static_cast<std::int64_t>(rowBytes / 4 + 2), header.height,
                                    PixelBuffer::Contents::undefined);
    if (!memory) return false;
    auto* const filtered = reinterpret_cast<std::uint8_t*>(memory->row(0).data());
    if (!inflateRows(file, {filtered, rowBytes * static_cast<std::size_t>(header.height)}))
        return false;
    Rows rows(header, pixels);
    for (std::int64_t y = 0; y < header.height; ++y) {
        const std::uint8_t* const row = filtered + static_cast<std::size_t>(y) * rowBytes;
        if (*row >= kernels::rowFilterCount) return false;
        rows.take(y, static_cast<RowFilter>(*row), row + 1);
    }
    return true;
}

}  // namespace pictal::detail
