#pragma once

#include "PictalCore/Platform/Graphics/detail/CoverageSink.h"

#include <algorithm>
#include <vector>

namespace pictal::detail {

/// Turns the levels of one row, left to right, into few spans: long stretches of 255 go out as
/// solid, short ones stay in the varied span around them.
class SpanWriter {
  public:
    /// @param levels  scratch, one a column
    SpanWriter(std::int64_t row, std::int64_t left, std::vector<std::uint8_t>& levels,
               CoverageSink& sink)
        : row_(row), left_(left), levels_(levels), sink_(sink) {}

    /// Columns begin…end − 1, counted from `left`, have this level.
    void append(std::int64_t begin, std::int64_t end, std::uint8_t level) {
        if (level == 0) return finish();
        if (end_ != begin) finish();
        const bool startsSolid = level == 255 && (kind_ == Kind::none || end - begin >= worthwhile);
        if (kind_ == Kind::solid && level != 255 && end_ - begin_ < worthwhile) {
            fill(begin_, end_, 255);
            kind_ = Kind::varied;
        }
        const bool continues =
            kind_ == Kind::solid ? level == 255 : kind_ == Kind::varied && !startsSolid;
        if (!continues) {
            finish();
            kind_ = startsSolid ? Kind::solid : Kind::varied;
            begin_ = begin;
        }
        if (kind_ == Kind::varied) fill(begin, end, level);
        end_ = end;
    }
    /// Columns begin…end − 1 have the levels that stand in the scratch memory.
    void appendLevels(std::int64_t begin, std::int64_t end) {
        if (end_ != begin) finish();
        if (kind_ == Kind::solid && end_ - begin_ < worthwhile) {
            fill(begin_, end_, 255);
            kind_ = Kind::varied;
        }
        if (kind_ != Kind::varied) {
            finish();
            kind_ = Kind::varied;
            begin_ = begin;
        }
        end_ = end;
    }
    void finish() {
        if (kind_ == Kind::solid) sink_.solid(row_, left_ + begin_, left_ + end_);
        if (kind_ == Kind::varied)
            sink_.varied(row_, left_ + begin_, std::span(at(begin_), at(end_)));
        kind_ = Kind::none;
    }

  private:
    enum class Kind : std::uint8_t { none, solid, varied };
    /// Below this length a span of its own costs more than blending its bytes.
    static constexpr std::int64_t worthwhile = 16;

    std::uint8_t* at(std::int64_t column) { return levels_.data() + column; }
    void fill(std::int64_t begin, std::int64_t end, std::uint8_t level) {
        std::fill(at(begin), at(end), level);
    }

    std::int64_t row_;
    std::int64_t left_;
    std::vector<std::uint8_t>& levels_;
    CoverageSink& sink_;
    Kind kind_ = Kind::none;
    std::int64_t begin_ = 0;
    std::int64_t end_ = 0;
};

}  // namespace pictal::detail
