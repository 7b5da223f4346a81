#pragma once

#include "PictalCore/Platform/ImageIO/PNG.h"

#include <functional>
#include <memory>

namespace pictal::PNG {

/// Writes a picture that is never whole in memory: rows go in from the top, pieces of the file come
/// out. It holds sixteen rows, and less than 1 MB besides.
class PICTAL_API RowWriter {
  public:
    struct Layout {
        std::int64_t width = 0;
        std::int64_t height = 0;
        /// Whether the alpha of the rows is left out, as a picture's that has none.
        bool isOpaque = false;
        CGColorSpace colorSpace = CGColorSpace::deviceRGB();
    };
    /// Takes the next bytes of the file; false when it cannot.
    using Sink = std::function<bool(std::span<const std::byte>)>;

    /// @param layout  1…8,000,000 pixels a side
    [[nodiscard]] static std::expected<RowWriter, WriteError> make(const Layout& layout, Sink sink);

    RowWriter(RowWriter&&) noexcept;
    RowWriter& operator=(RowWriter&&) noexcept;
    ~RowWriter();

    /// @param row  `width` pixels, premultiplied words as in `CGImage::row`; it is copied
    [[nodiscard]] std::expected<void, WriteError> write(std::span<const std::uint32_t> row);
    /// Writes the end, once all rows were written.
    [[nodiscard]] std::expected<void, WriteError> finish();

  private:
    struct State;
    explicit RowWriter(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

}  // namespace pictal::PNG
