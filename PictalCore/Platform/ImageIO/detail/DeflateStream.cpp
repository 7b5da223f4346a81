#include "PictalCore/Platform/ImageIO/detail/DeflateStream.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>

#include <isa-l/igzip_lib.h>

namespace pictal::detail {

struct DeflateStream::State {
    isal_zstream stream;
    std::array<std::uint8_t, ISAL_DEF_LVL1_DEFAULT> levelBuffer;
    std::array<std::uint8_t, std::size_t{256} << 10> piece;

    /// Hands the filled part of the piece out.
    bool flush(const Sink& sink) {
        const std::size_t filled = piece.size() - stream.avail_out;
        stream.next_out = piece.data();
        stream.avail_out = static_cast<std::uint32_t>(piece.size());
        return filled == 0 || sink(std::as_bytes(std::span(piece).first(filled)));
    }
};

DeflateStream::DeflateStream(std::unique_ptr<State> state) : state_(std::move(state)) {}
DeflateStream::DeflateStream(DeflateStream&&) noexcept = default;
DeflateStream& DeflateStream::operator=(DeflateStream&&) noexcept = default;
DeflateStream::~DeflateStream() = default;

std::optional<DeflateStream> DeflateStream::make() {
    std::unique_ptr<State> state(new (std::nothrow) State);
    if (!state) return std::nullopt;
    isal_deflate_init(&state->stream);
    state->stream.level = 1;
    state->stream.level_buf = state->levelBuffer.data();
    state->stream.level_buf_size = static_cast<std::uint32_t>(state->levelBuffer.size());
    state->stream.gzip_flag = IGZIP_ZLIB;
    state->stream.next_out = state->piece.data();
    state->stream.avail_out = static_cast<std::uint32_t>(state->piece.size());
    return DeflateStream(std::move(state));
}

bool DeflateStream::write(std::span<const std::uint8_t> bytes, const Sink& sink) {
    isal_zstream& stream = state_->stream;
    constexpr std::size_t greatest = std::numeric_limits<std::uint32_t>::max();
    while (!bytes.empty()) {
        const std::size_t count = std::min(bytes.size(), greatest);
        stream.next_in = const_cast<std::uint8_t*>(bytes.data());
        stream.avail_in = static_cast<std::uint32_t>(count);
        bytes = bytes.subspan(count);
        while (stream.avail_in > 0) {
            isal_deflate(&stream);
            if (stream.avail_out == 0 && !state_->flush(sink)) return false;
        }
    }
    return true;
}

bool DeflateStream::finish(const Sink& sink) {
    isal_zstream& stream = state_->stream;
    stream.end_of_stream = 1;
    do {
        isal_deflate(&stream);
        if (stream.avail_out == 0 && !state_->flush(sink)) return false;
    } while (stream.internal_state.state != ZSTATE_END);
    return state_->flush(sink);
}

}  // namespace pictal::detail
