#include "pictal/Progress.h"

#include <algorithm>
#include <cstdio>

#include <fmt/format.h>
#include <unistd.h>

namespace pictal::program {

Progress::Progress(std::string label, std::size_t steps, Shown shown)
    : label_(std::move(label)),
      steps_(std::max<std::size_t>(steps, 1)),
      shown_(shown == Shown::onTerminal && ::isatty(STDERR_FILENO) != 0) {
    draw();
}

Progress::~Progress() {
    if (shown_) fmt::print(stderr, "\r\x1B[K");
}

void Progress::step() {
    ++done_;
    draw();
}

void Progress::draw() const {
    if (!shown_) return;
    constexpr std::size_t width = 30;
    const std::size_t done = std::min(done_, steps_);
    const std::string filled(width * done / steps_, '#');
    fmt::print(stderr, "\r{} [{:<{}}] {}/{}", label_, filled, width, done, steps_);
    std::fflush(stderr);
}

}  // namespace pictal::program
