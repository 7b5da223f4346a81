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
    StripSource(const CGImage& image, const PNGPalette* palette)
        : image_(image),
          palette_(palette),
          writer_(image.width(), image.isOpaque() ? ColorType::rgb : ColorType::rgba),
          rowBytes_(
              palette ? 1 + (static_cast<std::size_t>(image.width() * palette->bitDepth()) + 7) / 8
                      : writer_.rowBytes()) {}

    [[nodiscard]] std::size_t rowBytes() const { return rowBytes_; }
    /// Bytes of the next strip; 0 at the end.
    [[nodiscard]] std::size_t nextSize() const {
        const auto left = static_cast<std::size_t>(image_.height() - next_);
        return std::min(left, PNGStripWriter::rowCount) * rowBytes_;
    }
    void take(std::uint8_t* to) {
        std::array<PNGStripWriter::Row, PNGStripWriter::rowCount> rows;
        const std::size_t count = nextSize() / rowBytes_;
        for (std::size_t i = 0; i < count; ++i)
            rows[i] = image_.row(next_++);
        if (!palette_) {
            writer_.filter(std::span(rows).first(count), to);
            return;
        }
        for (std::size_t i = 0; i < count; ++i, to += rowBytes_) {
            *to = 0;
            palette_->pack(rows[i], to + 1);
        }
    }

  private:
    const CGImage& image_;
    const PNGPalette* palette_;
    PNGStripWriter writer_;
    std::size_t rowBytes_;
    std::int64_t next_ = 0;
};

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
    const auto palette = PNGPalette::of(image);
    PNGChunkWriter file;
    if (palette) {
        file.begin(image.width(), image.height(), ColorType::palette, palette->bitDepth());
        file.colorSpace(image.colorSpace());
        file.palette(palette->straightColors());
    } else {
        file.begin(image.width(), image.height(),
                   image.isOpaque() ? ColorType::rgb : ColorType::rgba, 8);
        file.colorSpace(image.colorSpace());
    }
    StripSource strips(image, palette ? &*palette : nullptr);
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
