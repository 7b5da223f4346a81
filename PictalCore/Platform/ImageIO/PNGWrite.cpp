#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Platform/ImageIO/detail/DeflateStream.h"
#include "PictalCore/Platform/ImageIO/detail/PNGChunkWriter.h"
#include "PictalCore/Platform/ImageIO/detail/PNGPalette.h"
#include "PictalCore/Platform/ImageIO/detail/PNGStripWriter.h"
#include "PictalCore/Platform/ImageIO/detail/ZlibStream.h"

#include <memory>
#include <new>

namespace pictal::PNG {

using detail::DeflateStream;
using detail::PNGChunkWriter;
using detail::PNGPalette;
using detail::PNGStripWriter;

namespace {

/// The rows of a picture as the bytes that a file compresses, a strip at a time from the top.
class StripSource {
  public:
    /// @param colorType  palette, or one that strips can have
    StripSource(const CGImage& image, ColorType colorType, const PNGPalette* palette)
        : image_(image),
          palette_(colorType == ColorType::palette ? palette : nullptr),
          writer_(image.width(), colorType),
          rowBytes_(palette_
                        ? 1 + (static_cast<std::size_t>(image.width() * palette_->bitDepth()) + 7) /
                                  8
                        : writer_.rowBytes()) {}

    [[nodiscard]] std::size_t rowBytes() const { return rowBytes_; }
    /// Bytes of the next strip; 0 at the end.
    [[nodiscard]] std::size_t nextSize() const {
        const auto left = static_cast<std::size_t>(image_.height() - next_);
        return std::min(left, PNGStripWriter::rowCount) * rowBytes_;
    }
    void take(std::uint8_t* to) {
        const std::span<const PNGStripWriter::Row> rows = nextRows();
        if (!palette_) {
            writer_.filter(rows, to);
            return;
        }
        for (const PNGStripWriter::Row row : rows) {
            *to = 0;
            palette_->pack(row, to + 1);
            to += rowBytes_;
        }
    }
    /// Whether some strip is no drawn one; then none is left.
    [[nodiscard]] bool hasPhotograph() {
        while (nextSize() > 0)
            if (!writer_.isDrawn(nextRows())) return true;
        return false;
    }

  private:
    std::span<const PNGStripWriter::Row> nextRows() {
        const std::size_t count = nextSize() / rowBytes_;
        for (std::size_t i = 0; i < count; ++i)
            rows_[i] = image_.row(next_++);
        return std::span(rows_).first(count);
    }

    const CGImage& image_;
    const PNGPalette* palette_;
    PNGStripWriter writer_;
    std::size_t rowBytes_;
    std::int64_t next_ = 0;
    std::array<PNGStripWriter::Row, PNGStripWriter::rowCount> rows_;
};

/// Few colours are a palette. Of grey, whose levels are always few, only what is drawn is: filtered
/// levels of a photograph are much smaller than its indices. A profile of RGB fits no grey file.
ColorType colorTypeFor(const CGImage& image, const PNGPalette* palette) {
    if (!palette) return image.isOpaque() ? ColorType::rgb : ColorType::rgba;
    const bool canBeGrey =
        palette->isGrey() && palette->bitDepth() == 8 && image.colorSpace().iccProfile().empty();
    if (canBeGrey && StripSource(image, ColorType::grey, palette).hasPhotograph())
        return ColorType::grey;
    return ColorType::palette;
}

using Outcome = std::expected<void, WriteError>;

Outcome deflateFast(StripSource& strips, PNGChunkWriter& file) {
    auto stream = DeflateStream::make();
    if (!stream) return std::unexpected(WriteError::outOfMemory);
    const auto sink = [&](std::span<const std::byte> piece) {
        file.imageData(piece);
        return true;
    };
    std::vector<std::uint8_t> strip(strips.nextSize());
    while (const std::size_t size = strips.nextSize()) {
        strips.take(strip.data());
        (void)stream->write(std::span(strip).first(size), sink);
    }
    (void)stream->finish(sink);
    return {};
}

Outcome deflateWhole(StripSource& strips, std::size_t size, int level, PNGChunkWriter& file) {
    const std::unique_ptr<std::uint8_t[]> filtered(new (std::nothrow) std::uint8_t[size]);
    if (!filtered) return std::unexpected(WriteError::outOfMemory);
    std::uint8_t* to = filtered.get();
    while (const std::size_t count = strips.nextSize()) {
        strips.take(to);
        to += count;
    }
    const auto stream = detail::compressed(std::as_bytes(std::span(filtered.get(), size)), level);
    if (!stream) return std::unexpected(WriteError::outOfMemory);
    file.imageData(stream->span());
    return {};
}

}  // namespace

std::expected<std::vector<std::byte>, WriteError> write(const CGImage& image,
                                                        Compression compression) {
    if (image.width() == 0) return std::unexpected(WriteError::emptyImage);
    const auto found = PNGPalette::of(image);
    const PNGPalette* const palette = found ? &*found : nullptr;
    const ColorType colorType = colorTypeFor(image, palette);
    const PNGPalette* const stored = colorType == ColorType::palette ? palette : nullptr;
    PNGChunkWriter file;
    file.begin(image.width(), image.height(), colorType, stored ? stored->bitDepth() : 8);
    file.colorSpace(image.colorSpace());
    if (stored) file.palette(stored->straightColors());
    StripSource strips(image, colorType, palette);
    const std::size_t size = strips.rowBytes() * static_cast<std::size_t>(image.height());
    const Outcome done = compression == Compression::fast ? deflateFast(strips, file)
                         : compression == Compression::standard
                             ? deflateWhole(strips, size, 6, file)
                             : deflateWhole(strips, size, 12, file);
    if (!done) return std::unexpected(done.error());
    file.end();
    return file.take();
}

}  // namespace pictal::PNG
