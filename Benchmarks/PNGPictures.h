#pragma once

#include "PictalCore/Platform/Graphics/CGImage.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace pictal {

using NamedPicture = std::pair<std::string, std::function<CGImage()>>;

/// What the benchmarks of PNG work on: 2880 × 1800 each, made from the bundled screenshot and by
/// drawing, the same on every machine.
[[nodiscard]] const std::vector<NamedPicture>& pngPictures();

}  // namespace pictal
