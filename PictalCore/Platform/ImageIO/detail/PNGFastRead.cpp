#include "PictalCore/Platform/ImageIO/detail/PNGFastRead.h"

#include "PictalCore/Platform/Graphics/Kernels/Alpha.h"
#include "PictalCore/Platform/Graphics/Kernels/UnfilterRows.h"
#include "PictalCore/Platform/ImageIO/detail/ZlibStream.h"

#include <algorithm>
#include <cstring>
#include <new>

// The stream is unpacked into the end of the pixels' own memory, and its rows become pixels from
// there to the beginning, forward. With pixel rows of S bytes, stored rows of R bytes and h rows,
// the room is max(S, R)·h + 8·S bytes and a margin, and the stored rows take its last R·h bytes and
// the margin.
//
// No stored row is overwritten before it is read. Rows are done in groups of at most eight: when
// the group from row y on is written, up to (y + 8)·S, the stored rows from y on may still be read,
// from room − R·(h − y). So (y + 8)·S ≤ room − R·(h − y) is to hold from 0 to h. Both sides are
// linear in y, so that the two ends prove it: at 0, 8·S ≤ room − R·h, and at h, (h + 8)·S ≤ room.
// Rows of bytes are unfiltered where they are, and look at the stored row above them: it begins R
// bytes earlier, and less than (y + 7)·S is written by then.

namespace pictal::detail {

using PNG::ColorType;

namespace {

/// Whether the colours of a palette or a grey file are as libpng has them: each chunk once, in its
/// place (which the plain layout says) and of a length that can be.
bool hasPlainColors(const PNGFile& file) {
    const std::size_t keyBytes = file.transparency.size();
    switch (file.header.colorType) {
        case ColorType::rgba:
        case ColorType::rgb:
            return keyBytes == 0 && file.palette.empty();
        case ColorType::grey:
            return (keyBytes == 0 || keyBytes == 2) && file.palette.empty();
        case ColorType::palette: {
            const std::size_t colors = file.palette.size() / 3;
            return file.palette.size() % 3 == 0 && colors >= 1 &&
                   colors <= std::size_t{1} << file.header.bitDepth && keyBytes <= colors;
        }
        case ColorType::greyAlpha:
            return false;
    }
    return false;
}

bool isCommon(const PNGFile& file) {
    return file.hasPlainLayout && file.header.bitDepth <= 8 && !file.header.interlaced &&
           hasPlainColors(file);
}

/// A filter type and the pixels.
std::size_t storedRowBytes(const PNGHeader& header) {
    return header.rowBytes(header.width) + 1;
}

/// The stream in one piece: where it stands, or joined in `room` where it fits in there, or else in
/// memory of its own.
class WholeStream {
  public:
    WholeStream(const std::vector<PNGFile::Bytes>& pieces, std::span<std::byte> room) {
        if (pieces.size() == 1) {
            bytes_ = pieces[0];
            return;
        }
        std::size_t size = 0;
        for (const PNGFile::Bytes piece : pieces)
            size += piece.size();
        if (size > room.size()) {
            own_.reset(new (std::nothrow) std::byte[size]);
            if (!own_) return;
            room = {own_.get(), size};
        }
        bytes_ = room.first(size);
        for (const PNGFile::Bytes piece : pieces)
            room = room.subspan(static_cast<std::size_t>(
                std::ranges::copy(piece, room.begin()).out - room.begin()));
    }

    [[nodiscard]] PNGFile::Bytes bytes() const { return bytes_; }

  private:
    PNGFile::Bytes bytes_;
    std::unique_ptr<std::byte[]> own_;
};

/// Unpacks the stream when it ends exactly where it should on both sides.
bool inflateRows(PNGFile::Bytes stream, std::span<std::byte> room) {
    // A window of 32 kB: libpng refuses distances beyond a smaller one, libdeflate does not look.
    constexpr std::byte deflateWithFullWindow{0x78};
    if (stream.empty() || stream[0] != deflateWithFullWindow) return false;
    const Inflation result = inflate(stream, room);
    return result.status == Inflation::Status::done && result.taken == stream.size() &&
           result.made == room.size();
}

bool isOpaque(std::span<const std::uint32_t> row) {
    std::uint32_t alphas = 0xFF000000;
    for (const std::uint32_t pixel : row)
        alphas &= pixel;
    return alphas == 0xFF000000;
}

/// The pixels of a file, from stored rows in the end of their memory.
class Rows {
  public:
    Rows(const PNGHeader& header, const PNGRowReader& reader, std::uint8_t* stored,
         PixelBuffer& pixels)
        : header_(header),
          reader_(reader),
          pixels_(pixels),
          step_(storedRowBytes(header)),
          stored_(stored),
          noRow_(static_cast<std::size_t>(header.width)),
          straight_(noRow_.size()) {}

    std::optional<Opacity> read() {
        for (std::int64_t y = 0; y < header_.height;) {
            const std::size_t count = header_.colorType == ColorType::rgb    ? takeRGB(y)
                                      : header_.colorType == ColorType::rgba ? takeRGBA(y)
                                                                             : takeBytes(y);
            if (count == 0) return std::nullopt;
            y += static_cast<std::int64_t>(count);
        }
        return isOpaque_ ? Opacity::opaque : Opacity::translucent;
    }

  private:
    [[nodiscard]] std::uint8_t* storedRow(std::int64_t y) const {
        return stored_ + static_cast<std::size_t>(y) * step_;
    }
    [[nodiscard]] kernels::StoredRows rowsFrom(std::int64_t y) const {
        return {storedRow(y), step_, static_cast<std::size_t>(header_.height - y)};
    }
    [[nodiscard]] kernels::PixelRows pixelsFrom(std::int64_t y) {
        const auto row = pixels_.row(y);
        return {row.data(), static_cast<std::size_t>(pixels_.stride()), row.size()};
    }

    std::size_t takeRGB(std::int64_t y) {
        const std::uint32_t* const above = y == 0 ? noRow_.data() : pixels_.row(y - 1).data();
        return kernels_.rgb(rowsFrom(y), above, pixelsFrom(y));
    }

    /// The row above is straight: where it is translucent there is a copy of it.
    std::size_t takeRGBA(std::int64_t y) {
        const std::uint32_t* const above = y == 0                  ? noRow_.data()
                                           : aboveIsPremultiplied_ ? straight_.data()
                                                                   : pixels_.row(y - 1).data();
        const std::size_t count = kernels_.rgba(rowsFrom(y), above, pixelsFrom(y));
        for (std::size_t i = 0; i < count; ++i) {
            const std::span<std::uint32_t> row = pixels_.row(y + static_cast<std::int64_t>(i));
            aboveIsPremultiplied_ = !isOpaque(row);
            if (!aboveIsPremultiplied_) continue;
            isOpaque_ = false;
            std::ranges::copy(row, straight_.begin());
            alpha_.premultiply(straight_, row);
        }
        return count;
    }

    std::size_t takeBytes(std::int64_t y) {
        const auto* const above =
            y == 0 ? reinterpret_cast<const std::uint8_t*>(noRow_.data()) : storedRow(y - 1) + 1;
        const std::size_t count = kernels_.bytes(
            storedRow(y), step_, static_cast<std::size_t>(header_.height - y), above);
        for (std::int64_t i = y; i < y + static_cast<std::int64_t>(count); ++i)
            isOpaque_ &= reader_.convert(storedRow(i) + 1, pixels_.row(i));
        return count;
    }

    const kernels::UnfilterKernels& kernels_ = kernels::unfilterKernels();
    const kernels::AlphaKernels& alpha_ = kernels::alphaKernels();
    const PNGHeader& header_;
    const PNGRowReader& reader_;
    PixelBuffer& pixels_;
    std::size_t step_;
    std::uint8_t* stored_;
    std::vector<std::uint32_t> noRow_;
    std::vector<std::uint32_t> straight_;
    bool aboveIsPremultiplied_ = false;
    bool isOpaque_ = true;
};

}  // namespace

std::optional<PixelBuffer> makeBufferFor(const PNGFile& file) {
    const PNGHeader& header = file.header;
    std::size_t spare = 0;
    if (isCommon(file)) {
        // A pixel row is `tight` at least, and no more than the padding longer.
        const std::size_t tight = static_cast<std::size_t>(header.width) * 4;
        const std::size_t longer = storedRowBytes(header) - std::min(storedRowBytes(header), tight);
        spare = longer * static_cast<std::size_t>(header.height) +
                kernels::unfilteredAtOnce * (tight + PixelBuffer::greatestPadding) +
                kernels::storedRowMargin;
    }
    return PixelBuffer::make(header.width, header.height, PixelBuffer::Contents::undefined, spare);
}

std::optional<Opacity> readFast(const PNGFile& file, const PNGRowReader& rows,
                                PixelBuffer& pixels) {
    if (!isCommon(file)) return std::nullopt;
    const std::span<std::byte> memory = pixels.memory();
    const std::size_t size =
        storedRowBytes(file.header) * static_cast<std::size_t>(file.header.height);
    const std::size_t before = memory.size() - kernels::storedRowMargin - size;
    const std::span<std::byte> stored = memory.subspan(before, size);
    if (!inflateRows(WholeStream(file.imageData, memory.first(before)).bytes(), stored))
        return std::nullopt;
    return Rows(file.header, rows, reinterpret_cast<std::uint8_t*>(stored.data()), pixels).read();
}

}  // namespace pictal::detail
