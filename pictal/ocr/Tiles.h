#pragma once

#include "PictalCore/OCR/PaddleOCRDetectionBox.h"

#include <cstdint>
#include <vector>

/// A tall picture is read in tiles of about a screen each: as a whole it would be shrunk until
/// nobody could read it.
namespace pictal::program {

/// Rows top…bottom − 1 of a picture.
struct Tile {
    std::int64_t top;
    std::int64_t bottom;
};

/// Tiles that overlap by some lines of text, no taller than the picture is wide or than the side
/// limit, whichever is more; one for a picture that is no taller.
[[nodiscard]] std::vector<Tile> tilesOf(std::int64_t width, std::int64_t height,
                                        std::int64_t sideLimit);

/// The boxes of all tiles in the picture's own pixels, each text once: where two tiles saw it, the
/// one that it stands deeper in decides.
/// @param boxes  by tile, in pixels of the tile
[[nodiscard]] std::vector<PaddleOCRDetectionBox> mergedBoxes(
    const std::vector<Tile>& tiles, const std::vector<std::vector<PaddleOCRDetectionBox>>& boxes);

}  // namespace pictal::program
