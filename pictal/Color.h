#pragma once

#include "PictalCore/Styling/RGBAColor.h"
#include "pictal/Outcome.h"

#include <string_view>

namespace pictal::program {

/// As CSS writes colours: "#f80", "#ff880080", "rgb(255 136 0 / 50%)", "hsl(32, 100%, 50%)",
/// "rebeccapurple", "transparent".
[[nodiscard]] std::expected<RGBAColor, Failure> parseColor(std::string_view text);

}  // namespace pictal::program
