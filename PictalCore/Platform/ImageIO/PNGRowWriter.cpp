#include "PictalCore/Platform/ImageIO/PNGRowWriter.h"

#include "PictalCore/Platform/Graphics/Pixels/PixelBuffer.h"
#include "PictalCore/Platform/ImageIO/detail/DeflateStream.h"
#include "PictalCore/Platform/ImageIO/detail/PNGChunkWriter.h"
#include "PictalCore/Platform/ImageIO/detail/PNGStripWriter.h"

#include <algorithm>

namespace pictal::PNG {

using detail::DeflateStream;
using detail::PNGChunkWriter;
using detail::PNGStripWriter;

struct RowWriter::State {
    Layout layout;
    Sink sink;
    PNGStripWriter strips;
    DeflateStream stream;
    PNGChunkWriter file;
    /// The rows of the strip that is not full yet, and room for it filtered.
    std::vector<std::uint32_t> pixels;
    std::size_t rowsHeld = 0;
    std::int64_t rowsWritten = 0;
    std::vector<std::uint8_t> filtered;

    State(const Layout& itsLayout, Sink&& itsSink, DeflateStream&& itsStream)
        : layout(itsLayout),
          sink(std::move(itsSink)),
          strips(layout.width, colorType()),
          stream(std::move(itsStream)),
          pixels(width() * PNGStripWriter::rowCount),
          filtered(strips.rowBytes() * PNGStripWriter::rowCount) {}

    [[nodiscard]] ColorType colorType() const {
        return layout.isOpaque ? ColorType::rgb : ColorType::rgba;
    }
    [[nodiscard]] std::size_t width() const { return static_cast<std::size_t>(layout.width); }
    [[nodiscard]] bool handOut() { return sink(file.take()); }
    [[nodiscard]] DeflateStream::Sink pieces() {
        return [this](std::span<const std::byte> piece) {
            file.imageData(piece);
            return handOut();
        };
    }
    [[nodiscard]] bool writeStrip();
};

bool RowWriter::State::writeStrip() {
    std::array<PNGStripWriter::Row, PNGStripWriter::rowCount> rows;
    for (std::size_t i = 0; i < rowsHeld; ++i)
        rows[i] = std::span(pixels).subspan(i * width(), width());
    strips.filter(std::span(rows).first(rowsHeld), filtered.data());
    const auto bytes = std::span(filtered).first(strips.rowBytes() * rowsHeld);
    rowsHeld = 0;
    return stream.write(bytes, pieces());
}

RowWriter::RowWriter(std::unique_ptr<State> state) : state_(std::move(state)) {}
RowWriter::RowWriter(RowWriter&&) noexcept = default;
RowWriter& RowWriter::operator=(RowWriter&&) noexcept = default;
RowWriter::~RowWriter() = default;

std::expected<RowWriter, WriteError> RowWriter::make(const Layout& layout, Sink sink) {
    if (layout.width < 1 || layout.height < 1) return std::unexpected(WriteError::emptyImage);
    if (layout.width > detail::maximumSide || layout.height > detail::maximumSide)
        return std::unexpected(WriteError::tooLarge);
    auto stream = DeflateStream::make();
    if (!stream) return std::unexpected(WriteError::outOfMemory);
    auto state = std::make_unique<State>(layout, std::move(sink), *std::move(stream));
    state->file.begin(layout.width, layout.height, state->colorType(), 8);
    state->file.colorSpace(layout.colorSpace);
    if (!state->handOut()) return std::unexpected(WriteError::sinkFailed);
    return RowWriter(std::move(state));
}

std::expected<void, WriteError> RowWriter::write(std::span<const std::uint32_t> row) {
    State& state = *state_;
    if (row.size() != state.width() || state.rowsWritten == state.layout.height)
        return std::unexpected(WriteError::wrongRow);
    std::ranges::copy(
        row, state.pixels.begin() + static_cast<std::ptrdiff_t>(state.rowsHeld * state.width()));
    ++state.rowsHeld;
    ++state.rowsWritten;
    const bool isFull = state.rowsHeld == PNGStripWriter::rowCount;
    if (isFull && !state.writeStrip()) return std::unexpected(WriteError::sinkFailed);
    return {};
}

std::expected<void, WriteError> RowWriter::finish() {
    State& state = *state_;
    if (state.rowsWritten != state.layout.height) return std::unexpected(WriteError::wrongRow);
    if (state.rowsHeld > 0 && !state.writeStrip()) return std::unexpected(WriteError::sinkFailed);
    if (!state.stream.finish(state.pieces())) return std::unexpected(WriteError::sinkFailed);
    state.file.end();
    if (!state.handOut()) return std::unexpected(WriteError::sinkFailed);
    return {};
}

}  // namespace pictal::PNG
