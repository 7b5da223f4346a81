#include "Examples/overlay/Picture.h"

#include "PictalCore/Geometry/SelectionCoordinateMapper.h"
#include "PictalCore/Geometry/SelectionOverlayEdgeModel.h"
#include "PictalCore/Platform/Graphics/BitmapContext.h"

#include <cstddef>
#include <cstdint>
#include <ranges>
#include <utility>

using namespace pictal;

namespace {

constexpr CGColor desktop{0.2, 0.4, 0.6};
constexpr CGColor windowBody{0.96, 0.96, 0.96};
constexpr CGColor titleBar{0.8, 0.8, 0.8};
constexpr CGColor dimming{0, 0, 0, 0.5};
constexpr CGColor accent{0, 0.6, 1};
constexpr CGColor guideLine{1, 0.2, 0.6};
constexpr CGColor panelBody{0.1, 0.1, 0.1, 0.8};
constexpr CGColor white{1, 1, 1};

Path roundedRect(const CGRect& rect, CGFloat radius) {
    Path path;
    path.addRoundedRect(rect, radius);
    return path;
}

void fill(BitmapContext& context, const Path& path, const CGColor& color) {
    context.setFillColor(color);
    context.fill(path, FillRule::evenOdd);
}

void drawWindow(BitmapContext& context, const CGRect& frame) {
    fill(context, roundedRect(frame, 10), windowBody);
    const CGRect bar{frame.minX(), frame.maxY() - 28, frame.width(), 28};
    context.saveGState();
    context.clip(bar);
    fill(context, roundedRect(frame, 10), titleBar);
    context.restoreGState();
    context.setStrokeColor(titleBar);
    context.setLineWidth(1);
    context.stroke(roundedRect(frame, 10));
}

void drawSelection(BitmapContext& context, const CGRect& screen, const CGRect& selection,
                   CGFloat cornerRadius) {
    const SelectionOverlayEdgeModel edge(selection, cornerRadius, 1);
    Path dimmed = roundedRect(edge.dimCutoutRect(), edge.cornerRadius());
    dimmed.addRect(screen);
    fill(context, dimmed, dimming);

    context.setStrokeColor(accent);
    context.setLineWidth(2);
    context.stroke(roundedRect(edge.accentStrokeRect(), edge.accentCornerRadius()));

    for (const CGFloat x : {selection.minX(), selection.midX(), selection.maxX()})
        for (const CGFloat y : {selection.minY(), selection.midY(), selection.maxY()}) {
            if (x == selection.midX() && y == selection.midY()) continue;
            context.setFillColor(accent);
            context.fillEllipse({x - 6, y - 6, 12, 12});
            context.setFillColor(white);
            context.fillEllipse({x - 4, y - 4, 8, 8});
        }
}

void drawGuides(BitmapContext& context, const CGRect& screen, AlignmentSnapGuides guides) {
    context.setFillColor(guideLine);
    if (guides.contains(AlignmentSnapGuides::verticalCenter))
        context.fill(CGRect{screen.midX() - 1, 0, 2, screen.height()});
    if (guides.contains(AlignmentSnapGuides::horizontalCenter))
        context.fill(CGRect{0, screen.midY() - 1, screen.width(), 2});
}

}  // namespace

std::optional<CGImage> picture(const Overlay& overlay) {
    const auto index = overlay.displayIndex();
    if (!index) return std::nullopt;
    const CGRect& display = overlay.displays[static_cast<std::size_t>(*index)];
    auto context =
        BitmapContext::make(static_cast<std::int64_t>(display.width()),
                            static_cast<std::int64_t>(display.height()), CGColorSpace::sRGB());
    if (!context) return std::nullopt;

    // The context's y grows upward too, so global rectangles only have to move.
    const auto onDisplay = [&](const CGRect& rect) {
        return rect.offsetBy(-display.minX(), -display.minY());
    };
    const CGRect screen = onDisplay(display);
    context->setFillColor(desktop);
    context->fill(screen);
    for (const WindowCandidate& window : overlay.windows | std::views::reverse)
        drawWindow(*context, onDisplay(window.appKitFrame));
    if (const auto& selection = overlay.selection())
        drawSelection(*context, screen, onDisplay(*selection),
                      overlay.selectsWindow() ? SelectionOverlayEdgeModel::windowCornerRadius
                                              : SelectionOverlayEdgeModel::regionCornerRadius);
    drawGuides(*context, screen, overlay.guides());
    if (const auto panels = overlay.panels())
        for (const CGRect& panel : {panels->side, panels->bar, panels->loupe})
            fill(*context, roundedRect(SelectionCoordinateMapper::globalRect(panel, screen), 10),
                 panelBody);
    const CGRect tip{overlay.pointer(), {}};
    context->setFillColor(guideLine);
    context->fillEllipse(onDisplay(tip).insetBy(-4, -4));
    return std::move(*context).makeImage();
}
