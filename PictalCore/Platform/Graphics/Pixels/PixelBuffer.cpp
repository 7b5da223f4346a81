#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"

#include <cstdlib>
#include <cstring>
#include <utility>

#include <sys/mman.h>

namespace pictal::detail {

namespace {

/// Wide rows begin where the widest vectors do. Narrow ones gain nothing by it, and would be mostly
/// padding: a pixel in 64 bytes.
constexpr std::size_t rowAlignment = 64;
constexpr std::size_t alignFrom = 1024;
static_assert(PixelBuffer::greatestPadding == rowAlignment - sizeof(std::uint32_t));
constexpr std::size_t page = 4096;
constexpr std::size_t hugePage = std::size_t{2} << 20;
constexpr std::size_t mapFrom = std::size_t{4} << 20;

constexpr std::size_t roundedUp(std::size_t size, std::size_t unit) {
    return (size + unit - 1) / unit * unit;
}

/// A size to be mapped: whole pages, and whole huge pages when the last one is more than half full,
/// as one huge page costs less than the ordinary ones of half its size.
constexpr std::size_t mappedSize(std::size_t bytes) {
    const std::size_t huge = roundedUp(bytes, hugePage);
    return huge - bytes < hugePage / 2 ? huge : roundedUp(bytes, page);
}

/// Maps `bytes`, a multiple of the page size, on a huge page boundary; what is left behind the last
/// whole huge page is in ordinary ones.
void* mapAligned(std::size_t bytes) {
    void* mapped = ::mmap(nullptr, bytes + hugePage, PROT_READ | PROT_WRITE,
                          MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) return nullptr;
    auto* const start = static_cast<std::byte*>(mapped);
    const std::size_t head = roundedUp(reinterpret_cast<std::uintptr_t>(start), hugePage) -
                             reinterpret_cast<std::uintptr_t>(start);
    if (head > 0) ::munmap(start, head);
    if (head < hugePage) ::munmap(start + head + bytes, hugePage - head);
    ::madvise(start + head, bytes, MADV_HUGEPAGE);
    return start + head;
}

/// Of a width that is positive and within the limits.
std::size_t rowBytesFor(std::int64_t width) {
    const std::size_t tight = static_cast<std::size_t>(width) * 4;
    return tight < alignFrom ? tight : roundedUp(tight, rowAlignment);
}

}  // namespace

bool PixelBuffer::isWithinLimits(std::int64_t width, std::int64_t height) {
    if (width < 1 || height < 1 || width > maximumSide || height > maximumSide) return false;
    return rowBytesFor(width) * static_cast<std::size_t>(height) <=
           static_cast<std::size_t>(maximumPixelBytes);
}

std::optional<PixelBuffer> PixelBuffer::make(std::int64_t width, std::int64_t height,
                                             Contents contents, std::size_t spare) {
    if (!isWithinLimits(width, height)) return std::nullopt;
    const std::size_t rowBytes = rowBytesFor(width);
    const std::size_t pixelBytes = rowBytes * static_cast<std::size_t>(height);
    const std::size_t bytes = pixelBytes + spare;

    PixelBuffer buffer(width, height, static_cast<std::int64_t>(rowBytes / 4));
    buffer.bytes_ = bytes;
    if (bytes >= mapFrom) {
        const std::size_t mapped = mappedSize(bytes);
        buffer.pixels_ = static_cast<std::uint32_t*>(mapAligned(mapped));
        buffer.mappedBytes_ = mapped;
    } else {
        buffer.pixels_ = static_cast<std::uint32_t*>(
            std::aligned_alloc(rowAlignment, roundedUp(bytes, rowAlignment)));
    }
    if (!buffer.pixels_) return std::nullopt;
    // Mapped pages come zeroed; writing them here would cost as much as the picture itself.
    if (contents == Contents::transparent && buffer.mappedBytes_ == 0)
        std::memset(buffer.pixels_, 0, pixelBytes);
    return buffer;
}

PixelBuffer::PixelBuffer(PixelBuffer&& other) noexcept
    : width_(std::exchange(other.width_, 0)),
      height_(std::exchange(other.height_, 0)),
      stride_(std::exchange(other.stride_, 0)),
      pixels_(std::exchange(other.pixels_, nullptr)),
      bytes_(std::exchange(other.bytes_, 0)),
      mappedBytes_(std::exchange(other.mappedBytes_, 0)) {}

PixelBuffer& PixelBuffer::operator=(PixelBuffer&& other) noexcept {
    if (this != &other) {
        release();
        width_ = std::exchange(other.width_, 0);
        height_ = std::exchange(other.height_, 0);
        stride_ = std::exchange(other.stride_, 0);
        pixels_ = std::exchange(other.pixels_, nullptr);
        bytes_ = std::exchange(other.bytes_, 0);
        mappedBytes_ = std::exchange(other.mappedBytes_, 0);
    }
    return *this;
}

PixelBuffer::~PixelBuffer() {
    release();
}

void PixelBuffer::release() noexcept {
    if (mappedBytes_ > 0)
        ::munmap(pixels_, mappedBytes_);
    else
        std::free(pixels_);
    pixels_ = nullptr;
}

}  // namespace pictal::detail
