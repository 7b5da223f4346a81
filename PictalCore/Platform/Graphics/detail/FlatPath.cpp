#include "PictalCore/Platform/Graphics/detail/FlatPath.h"

namespace pictal::detail {

FlatPath::Contour FlatPath::contour(std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1].end;
    return {std::span(points_).subspan(begin, ends_[index].end - begin), ends_[index].closed};
}

void FlatPath::add(CGPoint point) {
    const std::size_t begin = ends_.empty() ? 0 : ends_.back().end;
    if (points_.size() == begin || points_.back() != point) points_.push_back(point);
}

void FlatPath::finish(bool closed) {
    const std::size_t begin = ends_.empty() ? 0 : ends_.back().end;
    if (points_.size() > begin) ends_.push_back({points_.size(), closed});
}

}  // namespace pictal::detail
