#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pictal::detail {

/// Text as it is set: UTF-16 without control characters, ill-formed sequences replaced by U+FFFD,
/// cut to what a line takes, and divided into characters as people count them.
struct GraphemeText {
    std::u16string units;
    /// Where each character ends in `units`.
    std::vector<std::int32_t> ends;

    /// @param maximumScalars  a character that would exceed it is left out, with all behind it
    GraphemeText(std::string_view text, std::size_t maximumScalars);

    [[nodiscard]] std::size_t size() const { return ends.size(); }
    [[nodiscard]] std::int32_t start(std::size_t index) const {
        return index == 0 ? 0 : ends[index - 1];
    }
    [[nodiscard]] std::u16string_view operator[](std::size_t index) const {
        const auto from = static_cast<std::size_t>(start(index));
        return std::u16string_view(units).substr(from,
                                                 static_cast<std::size_t>(ends[index]) - from);
    }
};

/// The scalar at the position, which moves behind it.
[[nodiscard]] char32_t nextScalar(std::u16string_view text, std::size_t& position);

}  // namespace pictal::detail
