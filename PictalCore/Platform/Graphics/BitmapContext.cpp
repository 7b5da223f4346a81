#include "PictalCore/Platform/Graphics/BitmapContext.h"

#include "PictalCore/Platform/Graphics/Kernels/Arithmetic.h"
#include "PictalCore/Platform/Graphics/Pixels/ColorConversion.h"
#include "PictalCore/Platform/Graphics/Pixels/ImageOfPixels.h"
#include "PictalCore/Platform/Graphics/detail/Clip.h"
#include "PictalCore/Platform/Graphics/detail/EllipseOutline.h"
#include "PictalCore/Platform/Graphics/detail/ImageSilhouette.h"
#include "PictalCore/Platform/Graphics/detail/ImageSource.h"
#include "PictalCore/Platform/Graphics/detail/Painter.h"
#include "PictalCore/Platform/Graphics/detail/Shadow.h"
#include "PictalCore/Platform/Graphics/detail/Shape.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace pictal {

using namespace detail;

namespace {

struct State {
    AffineTransform transform;
    Clip clip;
    CGColor fillColor{0, 0, 0, 1};
    CGColor strokeColor{0, 0, 0, 1};
    CGFloat lineWidth = 1;
    BlendMode blendMode = BlendMode::normal;
    CGFloat alpha = 1;
    bool antialias = true;
    InterpolationQuality interpolation = InterpolationQuality::none;
    std::optional<ShadowSettings> shadow = std::nullopt;
};

/// A component of 0…1 in 255 levels.
std::uint8_t levels(CGFloat component) {
    return component > 0 ? static_cast<std::uint8_t>(std::lround(std::min(component, 1.0) * 255))
                         : std::uint8_t{0};
}

std::uint32_t straightPixel(const CGColor& color) {
    return kernels::pixelOf(levels(color.red), levels(color.green), levels(color.blue),
                            levels(color.alpha));
}

Path pathOf(const CGRect& rect) {
    Path path;
    path.addRect(rect);
    return path;
}

Path ellipseIn(const CGRect& rect) {
    Path path;
    path.addEllipse(rect);
    return path;
}

/// The pixels that the rectangle consists of, if its sides fall between pixels.
std::optional<PixelRect> wholePixels(const CGRect& rect, const AffineTransform& t) {
    if (t.b != 0 || t.c != 0) return std::nullopt;
    const auto [fromX, fromY] = t.applied({rect.minX(), rect.minY()});
    const auto [toX, toY] = t.applied({rect.maxX(), rect.maxY()});
    constexpr CGFloat limit = 0x1p40;  // beyond any raster, and exact
    for (const CGFloat side : {fromX, fromY, toX, toY})
        if (side != std::floor(side) || !(std::abs(side) <= limit)) return std::nullopt;
    const auto [left, right] = std::minmax(fromX, toX);
    const auto [top, bottom] = std::minmax(fromY, toY);
    return PixelRect{static_cast<std::int64_t>(left), static_cast<std::int64_t>(top),
                     static_cast<std::int64_t>(right), static_cast<std::int64_t>(bottom)};
}

}  // namespace

struct BitmapContext::Impl {
    PixelBuffer canvas;
    CGColorSpace colorSpace;
    std::vector<State> states;  // never empty; the last one is in force

    [[nodiscard]] State& state() { return states.back(); }

    [[nodiscard]] PaintOptions options() {
        return {state().blendMode, levels(state().alpha), state().antialias};
    }
    [[nodiscard]] FilledPath filled(const Path& path, FillRule rule = FillRule::nonZero) {
        return {path, rule, state().transform};
    }
    [[nodiscard]] StrokedPath stroked(const Path& path) {
        return {path, state().lineWidth, state().transform};
    }

    void paint(const Shape& shape, const CGColor& color);
    void clipTo(const Shape& shape);
};

/// Casts the shape's shadow if there is one, then paints the shape.
void BitmapContext::Impl::paint(const Shape& shape, const CGColor& color) {
    const PixelRect& visible = state().clip.bounds();
    if (visible.isEmpty()) return;
    if (const auto& shadow = state().shadow) {
        const CGColor tint = shadow->color.withAlpha(shadow->color.alpha * color.alpha);
        ColorPainter painter(canvas, state().clip, options(), straightPixel(tint));
        castShadow(*shadow, shape, visible, painter);
    }
    ColorPainter painter(canvas, state().clip, options(), straightPixel(color));
    shape.cover({}, visible, painter);
}

void BitmapContext::Impl::clipTo(const Shape& shape) {
    CoverageMask mask(state().clip.bounds());
    if (!mask.area().isEmpty()) shape.cover({}, mask.area(), mask);
    state().clip.intersect(std::move(mask));
}

BitmapContext::BitmapContext(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
BitmapContext::BitmapContext(BitmapContext&&) noexcept = default;
BitmapContext& BitmapContext::operator=(BitmapContext&&) noexcept = default;
BitmapContext::~BitmapContext() = default;

std::optional<BitmapContext> BitmapContext::make(std::int64_t width, std::int64_t height,
                                                 const CGColorSpace& colorSpace) {
    auto canvas = PixelBuffer::make(width, height, PixelBuffer::Contents::transparent);
    if (!canvas) return std::nullopt;
    // Pixels count from the top, coordinates from the bottom.
    const AffineTransform upward{1, 0, 0, -1, 0, static_cast<CGFloat>(height)};
    State initial{.transform = upward, .clip = Clip({0, 0, width, height})};
    return BitmapContext(
        std::make_unique<Impl>(Impl{*std::move(canvas), colorSpace, {std::move(initial)}}));
}

std::int64_t BitmapContext::width() const {
    return impl_->canvas.width();
}
std::int64_t BitmapContext::height() const {
    return impl_->canvas.height();
}

void BitmapContext::saveGState() {
    impl_->states.push_back(impl_->state());
}
void BitmapContext::restoreGState() {
    if (impl_->states.size() > 1) impl_->states.pop_back();
}

void BitmapContext::concatenate(const AffineTransform& transform) {
    impl_->state().transform = transform.concatenated(impl_->state().transform);
}

void BitmapContext::setFillColor(const CGColor& color) {
    impl_->state().fillColor = color;
}
void BitmapContext::setStrokeColor(const CGColor& color) {
    impl_->state().strokeColor = color;
}
void BitmapContext::setLineWidth(CGFloat width) {
    impl_->state().lineWidth = width;
}
void BitmapContext::setBlendMode(BlendMode mode) {
    impl_->state().blendMode = mode;
}
void BitmapContext::setAlpha(CGFloat alpha) {
    impl_->state().alpha = alpha;
}
void BitmapContext::setShouldAntialias(bool antialias) {
    impl_->state().antialias = antialias;
}
void BitmapContext::setInterpolationQuality(InterpolationQuality quality) {
    impl_->state().interpolation = quality;
}
void BitmapContext::setShadow(CGSize offset, CGFloat blur, const CGColor& color) {
    impl_->state().shadow = ShadowSettings{offset, blur, color};
}
void BitmapContext::removeShadow() {
    impl_->state().shadow.reset();
}

void BitmapContext::clip(const CGRect& rect) {
    if (const auto pixels = wholePixels(rect, impl_->state().transform))
        impl_->state().clip.intersect(*pixels);  // no mask, which takes a byte a pixel
    else
        clip(pathOf(rect));
}
void BitmapContext::clip(const Path& path, FillRule rule) {
    impl_->clipTo(impl_->filled(path, rule));
}
void BitmapContext::clipToStroke(const Path& path) {
    impl_->clipTo(impl_->stroked(path));
}

void BitmapContext::fill(const CGRect& rect) {
    fill(pathOf(rect));
}
void BitmapContext::fill(const Path& path, FillRule rule) {
    impl_->paint(impl_->filled(path, rule), impl_->state().fillColor);
}
void BitmapContext::fillEllipse(const CGRect& rect) {
    fill(ellipseIn(rect));
}
void BitmapContext::stroke(const CGRect& rect) {
    stroke(pathOf(rect));
}
void BitmapContext::stroke(const Path& path) {
    impl_->paint(impl_->stroked(path), impl_->state().strokeColor);
}
void BitmapContext::strokeEllipse(const CGRect& rect) {
    const AffineTransform& t = impl_->state().transform;
    const bool keepsAngles = (t.a == t.d && t.b == -t.c) || (t.a == -t.d && t.b == t.c);
    const CGFloat tolerance = 0.001 / std::hypot(t.a, t.b);
    const auto outline =
        keepsAngles ? ellipseOutline(rect, impl_->state().lineWidth, tolerance) : std::nullopt;
    if (outline)
        impl_->paint(impl_->filled(*outline), impl_->state().strokeColor);
    else
        stroke(ellipseIn(rect));
}

void BitmapContext::clear(const CGRect& rect) {
    saveGState();
    setBlendMode(BlendMode::clear);
    setAlpha(1);
    removeShadow();
    fill(rect);
    restoreGState();
}

void BitmapContext::draw(const CGImage& image, const CGRect& rect) {
    State& state = impl_->state();
    const CGRect place = rect.standardized();
    const auto conversion = ColorConversion::make(image.colorSpace(), impl_->colorSpace);
    if (image.width() == 0 || place.isEmpty() || !conversion) return;

    // The image's own pixels, y down, spread over the rectangle.
    const auto columns = static_cast<CGFloat>(image.width());
    const auto rows = static_cast<CGFloat>(image.height());
    const AffineTransform spread{
        place.width() / columns, 0, 0, -place.height() / rows, place.minX(), place.maxY()};
    const AffineTransform toDevice = spread.concatenated(state.transform);
    auto pixels = ImageSource::make(image, toDevice, *conversion);
    const PixelRect& visible = state.clip.bounds();
    if (!pixels || visible.isEmpty()) return;
    pixels->interpolate(state.interpolation, visible);

    const Path outline = pathOf(place);
    const FilledPath frame = impl_->filled(outline);
    if (state.shadow) {
        ColorPainter painter(impl_->canvas, state.clip, impl_->options(),
                             straightPixel(state.shadow->color));
        castShadow(*state.shadow, ImageSilhouette(image, toDevice, state.interpolation, frame),
                   visible, painter);
    }
    ImagePainter painter(impl_->canvas, state.clip, impl_->options(), *pixels);
    frame.cover({}, visible, painter);
}

CGImage BitmapContext::makeImage() && {
    return imageOf(std::move(impl_->canvas), impl_->colorSpace);
}

}  // namespace pictal
