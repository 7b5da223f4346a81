#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace pictal::detail {

/// A zlib stream that is made piece by piece, as fast as can be: at most 256 kB come out at a time,
/// and it holds about 0.7 MB.
class DeflateStream {
  public:
    /// False stops the stream.
    using Sink = std::function<bool(std::span<const std::byte>)>;

    /// @return nothing when there is not enough memory
    [[nodiscard]] static std::optional<DeflateStream> make();

    DeflateStream(DeflateStream&&) noexcept;
    DeflateStream& operator=(DeflateStream&&) noexcept;
    ~DeflateStream();

    /// @return false when the sink refused
    [[nodiscard]] bool write(std::span<const std::uint8_t> bytes, const Sink& sink);
    /// Ends the stream and hands out what is left of it.
    [[nodiscard]] bool finish(const Sink& sink);

  private:
    struct State;
    explicit DeflateStream(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

}  // namespace pictal::detail
