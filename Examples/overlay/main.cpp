#include "Examples/overlay/Overlay.h"
#include "Examples/overlay/Picture.h"
#include "Examples/overlay/Recording.h"
#include "PictalCore/Platform/Foundation/Files.h"
#include "PictalCore/Platform/ImageIO/PNG.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <iostream>
#include <limits>
#include <string>

/// Plays a recorded gesture through an overlay and prints what the overlay shows after each step,
/// one JSON object a line; the last state also as a picture, if a file for it is named.
///
///     overlay-example gesture.txt [picture.png]

using namespace pictal;

namespace {

constexpr std::array eventNames{"press", "move", "release"};
constexpr std::array handleNames{"move",     "minX",     "maxX",     "minY",    "maxY",
                                 "minXMinY", "maxXMinY", "minXMaxY", "maxXMaxY"};
constexpr std::array sideNames{"left", "right", "overlapping"};
constexpr std::array barNames{"below", "above", "screenTop", "screenBottom"};

template <std::size_t count, class Enumeration>
std::string quoted(const std::array<const char*, count>& names, Enumeration value) {
    return std::string("\"") + names[static_cast<std::size_t>(value)] + '"';
}

std::ostream& operator<<(std::ostream& out, const CGPoint& point) {
    return out << '[' << point.x << ',' << point.y << ']';
}

std::ostream& operator<<(std::ostream& out, const CGRect& rect) {
    return out << "[[" << rect.minX() << ',' << rect.minY() << "],[" << rect.width() << ','
               << rect.height() << "]]";
}

void print(const Overlay::Panels& panels) {
    std::cout << R"({"side":{"placement":)" << quoted(sideNames, panels.sidePlacement)
              << R"(,"frame":)" << panels.side << R"(},"bar":{"placement":)"
              << quoted(barNames, panels.barPlacement) << R"(,"frame":)" << panels.bar
              << R"(},"loupe":)" << panels.loupe << '}';
}

void print(const Recording::Step& step, const Overlay& overlay) {
    std::cout << R"({"event":)" << quoted(eventNames, step.event) << R"(,"pointer":)"
              << overlay.pointer();
    if (const auto display = overlay.displayIndex()) std::cout << R"(,"display":)" << *display;
    if (const auto* window = overlay.windowUnderPointer())
        std::cout << R"(,"window":)" << window->id;
    if (const auto handle = overlay.handle())
        std::cout << R"(,"handle":)" << quoted(handleNames, *handle);
    if (const auto& selection = overlay.selection()) std::cout << R"(,"selection":)" << *selection;
    std::cout << R"(,"guides":)" << overlay.guides().rawValue;
    if (const auto panels = overlay.panels()) {
        std::cout << R"(,"panels":)";
        print(*panels);
    }
    std::cout << "}\n";
}

void apply(const Recording::Step& step, Overlay& overlay) {
    switch (step.event) {
        case Recording::Event::press:
            return overlay.press(step.point);
        case Recording::Event::move:
            return overlay.move(step.point);
        case Recording::Event::release:
            return overlay.release(step.point);
    }
}

int fail(const std::string& message, int status = 2) {
    std::cerr << "overlay-example: " << message << '\n';
    return status;
}

int writePicture(const Overlay& overlay, const std::string& path) {
    const auto image = picture(overlay);
    if (!image) return fail("there is no display to draw");
    const auto bytes = PNG::write(*image);
    if (!bytes) return fail("there is not enough memory for the picture", 3);
    const auto written = writeFileAtomically(path, *bytes);
    return written ? 0 : fail(written.error().description(), 3);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2 && count != 3)
        return fail("expected the file of a recorded gesture, and perhaps one for the picture");
    std::ifstream file(arguments[1]);
    if (!file) return fail(std::string(arguments[1]) + ": cannot be read");
    const auto recording = Recording::read(file);
    if (!recording) return fail(std::string(arguments[1]) + ", " + recording.error());

    std::cout.precision(std::numeric_limits<CGFloat>::digits10);  // decimals as they were typed
    Overlay overlay;
    overlay.displays = recording->displays;
    overlay.windows = recording->windows;
    for (const Recording::Step& step : recording->steps) {
        apply(step, overlay);
        print(step, overlay);
    }
    return count == 3 ? writePicture(overlay, arguments[2]) : 0;
}
