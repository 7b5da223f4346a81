#include "PictalCore/Platform/ImageIO/PNG.h"
#include "PictalCore/Platform/ImageIO/detail/DeflateStream.h"
#include "PictalCore/Platform/ImageIO/detail/PNGChunkWriter.h"
#include "PictalCore/Platform/ImageIO/detail/PNGPalette.h"
#include "PictalCore/Platform/ImageIO/detail/PNGStrips.h"

#include <memory>
#include <new>

#include <libdeflate.h>

namespace pictal::PNG {

using detail::DeflateStream;
using detail::PNGChunkWriter;
using detail::PNGPalette;
using detail::PNGStrips;

namespace {

/// The rows of a picture as the bytes that a file compresses, a strip at a time from the top.
class Strips {
  public:
    Strips(const CGImage& image, const PNGPalette* palette)
        : image_(image),
          palette_(palette),
          strips_(image.width(), image.isOpaque() ? ColorType::rgb : ColorType::rgba),
          rowBytes_(
              palette ? 1 + (static_cast<std::size_t>(image.width() * palette->bitDepth()) + 7) / 8
                      : strips_.rowBytes()) {}

    [[nodiscard]] std::size_t rowBytes() const { return rowBytes_; }
    /// Bytes of the next strip; 0 at the end.
    [[nodiscard]] std::size_t nextSize() const {
        const auto left = static_cast<std::size_t>(image_.height() - next_);
        return std::min(left, PNGStrips::rowCount) * rowBytes_;
    }
    void take(std::uint8_t* to) {
        std::array<PNGStrips::Row, PNGStrips::rowCount> rows;
        const std::size_t count = nextSize() / rowBytes_;
        for (std::size_t i = 0; i < count; ++i)
            rows[i] = image_.row(next_++);
        if (!palette_) {
            strips_.filter(std::span(rows).first(count), to);
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
    PNGStrips strips_;
    std::size_t rowBytes_;
    std::int64_t next_ = 0;
};

using Outcome = std::expected<void, WriteError>;

Outcome deflateFast(Strips& strips, PNGChunkWriter& file) {
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

Outcome deflateWhole(Strips& strips, std::size_t size, int level, PNGChunkWriter& file) {
    const std::unique_ptr<std::uint8_t[]> filtered(new (std::nothrow) std::uint8_t[size]);
    if (!filtered) return std::unexpected(WriteError::outOfMemory);
    std::uint8_t* to = filtered.get();
    while (const std::size_t count = strips.nextSize()) {
        strips.take(to);
        to += count;
    }
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(level), &libdeflate_free_compressor);
    if (!compressor) return std::unexpected(WriteError::outOfMemory);
    const std::size_t room = libdeflate_zlib_compress_bound(compressor.get(), size);
    const std::unique_ptr<std::byte[]> stream(new (std::nothrow) std::byte[room]);
    if (!stream) return std::unexpected(WriteError::outOfMemory);
    const std::size_t streamSize =
        libdeflate_zlib_compress(compressor.get(), filtered.get(), size, stream.get(), room);
    file.imageData({stream.get(), streamSize});
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
    Strips strips(image, palette ? &*palette : nullptr);
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
