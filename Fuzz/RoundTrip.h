#pragma once

#include "PictalCore/Platform/Foundation/JSON.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace pictal {

/// Aborts unless what decodes from `text` encodes, decodes to an equal value, and encodes to the
/// same text again; the texts show what equality does not see, such as a rectangle's stored signs.
template <class T>
void roundTrip(std::string_view text) {
    const auto value = decodeJSON<T>(text);
    if (!value) return;
    const auto encoded = encodeJSON(*value);
    if (!encoded) std::abort();
    const auto again = decodeJSON<T>(*encoded);
    if (!again || !(*again == *value) || encodeJSON(*again) != encoded) std::abort();
}

}  // namespace pictal
