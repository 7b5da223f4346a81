#pragma once

#include "PictalCore/Platform/Graphics/Kernels/FilterRows.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

/// The filters of PNG rows, byte by byte.
namespace pictal::kernels::reference {

using Bytes = std::vector<std::uint8_t>;
using Words = std::vector<std::uint32_t>;

/// The prediction of a filter, word for word as the standard has it.
inline int prediction(RowFilter filter, int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a), pb = std::abs(p - b), pc = std::abs(p - c);
    switch (filter) {
        case RowFilter::none:
            return 0;
        case RowFilter::sub:
            return a;
        case RowFilter::up:
            return b;
        case RowFilter::average:
            return (a + b) / 2;
        case RowFilter::paeth:
            return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
    }
    return -1;
}

inline Bytes filtered(RowFilter filter, const Bytes& row, const Bytes& above, std::size_t pixel) {
    Bytes result;
    for (std::size_t i = rowMargin; i < row.size(); ++i)
        result.push_back(static_cast<std::uint8_t>(
            row[i] - prediction(filter, row[i - pixel], above[i], above[i - pixel])));
    return result;
}

inline std::mt19937 randomNumbers{20'240'503};

inline Words randomWords(std::size_t size) {
    Words words(size);
    std::ranges::generate(words, [] { return static_cast<std::uint32_t>(randomNumbers()); });
    return words;
}

/// Undoes the filters of rows: of each a filter type, then its bytes.
inline Bytes unfiltered(Bytes rows, std::size_t step, std::size_t pixel) {
    for (std::size_t at = 0; at < rows.size(); ++at) {
        if (at % step == 0) continue;
        const bool hasLeft = at % step > pixel, hasUp = at >= step;
        const int a = hasLeft ? rows[at - pixel] : 0, b = hasUp ? rows[at - step] : 0;
        const int c = hasLeft && hasUp ? rows[at - step - pixel] : 0;
        const auto filter = static_cast<RowFilter>(rows[at - at % step]);
        rows[at] = static_cast<std::uint8_t>(rows[at] + prediction(filter, a, b, c));
    }
    return rows;
}

/// With a margin of zeros before the bytes.
inline Bytes randomRow(std::size_t size) {
    Bytes row(rowMargin);
    for (const std::uint32_t word : randomWords(size))
        row.push_back(static_cast<std::uint8_t>(word));
    return row;
}

}  // namespace pictal::kernels::reference
