#pragma once

#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/RawValue.h"

namespace pictal {

/// Whether an exported picture is presented as a card, with rounded corners and a shadow.
enum class ScreenshotCardEffect { none, presentation };

template <>
struct RawValues<ScreenshotCardEffect> {
    static constexpr std::array table{
        RawCase{ScreenshotCardEffect::none, "none"},
        RawCase{ScreenshotCardEffect::presentation, "presentation"},
    };
};

PICTAL_JSON_CODED(ScreenshotCardEffect);

}  // namespace pictal
