#include "PictalCore/Platform/Graphics/detail/FillRasterizer.h"
#include "PictalCore/Platform/Graphics/detail/PathFlattening.h"
#include "PictalCore/Platform/Graphics/detail/StrokeRasterizer.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

// Any path, made of any doubles, on a canvas of at most 128 × 128: filled both ways and stroked.

namespace {

using namespace pictal;
using namespace pictal::detail;

class Input {
  public:
    explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    [[nodiscard]] bool isEmpty() const { return bytes_.empty(); }
    template <class T>
    T next() {
        T value{};
        const std::size_t count = bytes_.size() < sizeof value ? bytes_.size() : sizeof value;
        std::memcpy(&value, bytes_.data(), count);
        bytes_ = bytes_.subspan(count);
        return value;
    }
    /// Half of them near the canvas, half any double.
    CGFloat nextCoordinate() {
        return next<std::uint8_t>() % 2 == 0 ? next<std::int16_t>() / 128.0 : next<CGFloat>();
    }
    CGPoint nextPoint() {
        const CGFloat x = nextCoordinate();
        return {x, nextCoordinate()};
    }

  private:
    std::span<const std::uint8_t> bytes_;
};

/// Crashes when a span leaves the clip or the order.
class StrictSink : public CoverageSink {
  public:
    explicit StrictSink(const PixelRect& clip) : clip_(clip) {}

    void solid(std::int64_t row, std::int64_t left, std::int64_t right) override {
        const bool follows = row > row_ || (row == row_ && left >= end_);
        if (!follows || left >= right || left < clip_.left || right > clip_.right ||
            row < clip_.top || row >= clip_.bottom)
            std::abort();
        row_ = row;
        end_ = right;
    }
    void varied(std::int64_t row, std::int64_t left,
                std::span<const std::uint8_t> coverage) override {
        solid(row, left, left + static_cast<std::int64_t>(coverage.size()));
    }

  private:
    PixelRect clip_;
    std::int64_t row_ = -1;
    std::int64_t end_ = 0;
};

Path nextPath(Input& input) {
    Path path;
    while (!input.isEmpty()) {
        const CGPoint a = input.nextPoint();
        const CGPoint b = input.nextPoint();
        switch (input.next<std::uint8_t>() % 8) {
            case 0:
                path.moveTo(a);
                break;
            case 1:
                path.lineTo(a);
                break;
            case 2:
                path.quadCurveTo(a, b);
                break;
            case 3:
                path.curveTo(a, b, input.nextPoint());
                break;
            case 4:
                path.quarterTo(a, b);
                break;
            case 5:
                path.close();
                break;
            case 6:
                path.addEllipse({a, {b.x, b.y}});
                break;
            case 7:
                path.addRoundedRect({a, {b.x, b.y}}, input.nextCoordinate());
                break;
        }
    }
    return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 2000) return 0;
    Input input({data, size});
    const PixelRect clip{0, 0, 1 + input.next<std::uint8_t>() % 128,
                         1 + input.next<std::uint8_t>() % 128};
    const CGFloat width = input.nextCoordinate();
    const Path path = nextPath(input);

    const FlatPath outline = flattenedForFill(path, {}, clip);
    for (const FillRule rule : {FillRule::nonZero, FillRule::evenOdd}) {
        StrictSink sink(clip);
        rasterizeFill(outline, rule, clip, sink);
    }
    StrictSink sink(clip);
    rasterizeStroke(flattenedForStroke(path, {}, width, clip), width, clip, sink);
    return 0;
}
