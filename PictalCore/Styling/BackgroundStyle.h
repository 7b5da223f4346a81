#pragma once

#include "PictalCore/Platform/Foundation/JSON.h"
#include "PictalCore/Platform/Foundation/RawValue.h"

namespace pictal {

/// What lies behind an exported picture.
enum class BackgroundStyle { transparent };

template <>
struct RawValues<BackgroundStyle> {
    static constexpr std::array table{RawCase{BackgroundStyle::transparent, "transparent"}};
};

PICTAL_JSON_CODED(BackgroundStyle);

}  // namespace pictal
