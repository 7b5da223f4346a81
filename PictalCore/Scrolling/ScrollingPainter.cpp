#include "PictalCore/Scrolling/ScrollingPainter.h"

#include "PictalCore/Platform/Graphics/Kernels/Blend.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"
#include "PictalCore/Platform/Graphics/Pixels/ImageOfPixels.h"
#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace pictal {

using detail::ColorConversion;
using detail::PixelBuffer;
using Row = std::span<const std::uint32_t>;
using Done = std::expected<void, ScrollingPainterError>;

namespace {

/// Rows of the picture that are one frame's for now.
struct Piece {
    std::int64_t top;
    std::int64_t bottom;
    CGImage image;
    std::int64_t imageTop;  ///< where row 0 of the image would be
    ColorConversion conversion;

    [[nodiscard]] Row source(std::int64_t y) const { return image.row(y - imageTop); }
};

}  // namespace

struct ScrollingPainter::State {
    const std::int64_t width;
    const Sink sink;
    std::vector<Piece> pieces;  // from the top, apart from one another
    std::vector<std::uint32_t> scratch;
    bool hasFrames = false;
    std::int64_t next = 0;  // the row that comes out next, once there are frames
    std::optional<std::pair<CGColorSpace, ColorConversion>> lastConversion;
    bool opaque = true;

    State(std::int64_t columns, Sink rowSink)
        : width(columns), sink(std::move(rowSink)), scratch(static_cast<std::size_t>(columns)) {}

    [[nodiscard]] std::optional<ColorConversion> conversionFrom(const CGColorSpace& space);
    [[nodiscard]] Row padded(const Piece& piece, std::int64_t y);
    [[nodiscard]] Done emitUntil(std::int64_t row);
    [[nodiscard]] Done emit(Row row);
    [[nodiscard]] Done blend(const Piece& frame);
    void replace(const Piece& piece);
};

std::optional<ColorConversion> ScrollingPainter::State::conversionFrom(const CGColorSpace& space) {
    if (!lastConversion || lastConversion->first != space) {
        const auto made = ColorConversion::make(space, CGColorSpace::sRGB());
        if (!made) return std::nullopt;
        lastConversion.emplace(space, *made);
    }
    return lastConversion->second;
}

/// The piece's row as wide as the picture and in its colours; lasts until the next call.
Row ScrollingPainter::State::padded(const Piece& piece, std::int64_t y) {
    const Row source = piece.source(y);
    if (source.size() == scratch.size() && piece.conversion.isIdentity()) return source;
    piece.conversion.convert(source, std::span(scratch).first(source.size()));
    std::ranges::fill(scratch.begin() + std::ssize(source), scratch.end(), 0U);
    return scratch;
}

Done ScrollingPainter::State::emit(Row row) {
    ++next;
    if (sink(row)) return {};
    return std::unexpected(ScrollingPainterError::sinkFailed);
}

Done ScrollingPainter::State::emitUntil(std::int64_t row) {
    const auto gapUntil = [&](std::int64_t end) -> Done {
        if (next >= end) return {};
        opaque = false;
        std::ranges::fill(scratch, 0U);
        while (next < end)
            if (const Done done = emit(scratch); !done) return done;
        return {};
    };
    for (const Piece& piece : pieces) {
        if (piece.top >= row) break;
        if (const Done done = gapUntil(piece.top); !done) return done;
        opaque = opaque && piece.image.isOpaque() && piece.image.width() == width;
        while (next < std::min(piece.bottom, row))
            if (const Done done = emit(padded(piece, next)); !done) return done;
    }
    std::erase_if(pieces, [&](const Piece& piece) { return piece.bottom <= row; });
    return gapUntil(row);
}

/// Puts the piece in, in place of what is there.
void ScrollingPainter::State::replace(const Piece& piece) {
    std::vector<Piece> kept;
    const auto keep = [&](Piece part, std::int64_t top, std::int64_t bottom) {
        part.top = top;
        part.bottom = bottom;
        if (top < bottom) kept.push_back(std::move(part));
    };
    for (const Piece& old : pieces)
        keep(old, old.top, std::min(old.bottom, piece.top));
    keep(piece, piece.top, piece.bottom);
    for (const Piece& old : pieces)
        keep(old, std::max(old.top, piece.bottom), old.bottom);
    pieces = std::move(kept);
}

/// Paints the frame on what is there, in pixels of its own where that is anything.
Done ScrollingPainter::State::blend(const Piece& frame) {
    const std::vector<Piece> below = pieces;
    replace(frame);
    for (const Piece& old : below) {
        const std::int64_t top = std::max(old.top, frame.top);
        const std::int64_t bottom = std::min(old.bottom, frame.bottom);
        if (top >= bottom) continue;
        auto canvas = PixelBuffer::make(width, bottom - top, PixelBuffer::Contents::undefined);
        if (!canvas) return std::unexpected(ScrollingPainterError::outOfMemory);
        for (std::int64_t y = top; y < bottom; ++y) {
            const std::span<std::uint32_t> row = canvas->row(y - top);
            std::ranges::copy(padded(old, y), row.begin());
            const Row source = frame.source(y);
            const auto converted = std::span(scratch).first(source.size());
            frame.conversion.convert(source, converted);
            kernels::blendKernels().blendPixels(row.first(source.size()), converted);
        }
        replace({top, bottom, detail::imageOf(*std::move(canvas), CGColorSpace::sRGB()), top, {}});
    }
    return {};
}

ScrollingPainter::ScrollingPainter(std::int64_t width, Sink sink)
    : state_(std::make_unique<State>(std::clamp<std::int64_t>(width, 0, detail::maximumSide),
                                     std::move(sink))) {}
ScrollingPainter::ScrollingPainter(ScrollingPainter&&) noexcept = default;
ScrollingPainter& ScrollingPainter::operator=(ScrollingPainter&&) noexcept = default;
ScrollingPainter::~ScrollingPainter() = default;

Done ScrollingPainter::add(const ScrollingStitchFrame& frame) {
    State& state = *state_;
    const std::int64_t top = frame.verticalPosition;
    std::int64_t bottom = 0;
    if (__builtin_add_overflow(top, frame.image.height(), &bottom) ||
        frame.image.width() > state.width || (state.hasFrames && top < state.next))
        return std::unexpected(ScrollingPainterError::wrongFrame);
    const auto conversion = state.conversionFrom(frame.image.colorSpace());
    if (!conversion) return std::unexpected(ScrollingPainterError::cannotConvertColors);

    if (!state.hasFrames) state.next = top;
    state.hasFrames = true;
    if (const Done done = state.emitUntil(top); !done) return done;
    const Piece piece{top, bottom, frame.image, top, *conversion};
    const bool covers = frame.image.isOpaque() && frame.image.width() == state.width;
    if (!covers) return state.blend(piece);
    state.replace(piece);
    return {};
}

Done ScrollingPainter::finish() {
    State& state = *state_;
    return state.pieces.empty() ? Done{} : state.emitUntil(state.pieces.back().bottom);
}

bool ScrollingPainter::isOpaque() const {
    return state_->opaque;
}

}  // namespace pictal
