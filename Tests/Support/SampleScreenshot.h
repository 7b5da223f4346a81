#pragma once

#include "PictalCore/Platform/Foundation/Files.h"
#include "PictalCore/Platform/ImageIO/PNG.h"

#include <cstddef>
#include <vector>

namespace pictal {

/// The bundled screenshot's file.
[[nodiscard]] inline const std::vector<std::byte>& sampleScreenshotFile() {
    static const auto file = readFile(PICTAL_SOURCE_DIR "/samples/screenshot.png").value();
    return file;
}

/// The bundled screenshot: 2880 × 1800, opaque, a user interface with a photograph in it, which
/// lies at (514, 270), 916 × 604.
[[nodiscard]] inline const CGImage& sampleScreenshot() {
    static const CGImage image = PNG::read(sampleScreenshotFile()).value();
    return image;
}

}  // namespace pictal
