#include "pictal/Progress.h"

#include <algorithm>
#include <cstdio>
#include <utility>

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
namespace {

constexpr std::size_t barWidth = 30;
/// More often than this nobody can see, and a terminal is slow.
constexpr std::chrono::milliseconds pause{50};

}  // namespace

Progress::Progress(std::string label, std::size_t total, bool quiet)
    : label_(std::move(label)),
      total_(total),
      isShown_(!quiet && total > 0 && ::isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    if (isDrawn_) std::fputs("\r\x1B[K", stderr);
}

void Progress::show(std::size_t done) {
    const auto now = std::chrono::steady_clock::now();
    if (!isShown_ || now < next_) return;
    next_ = now + pause;
    isDrawn_ = true;
    const std::size_t filled = std::min(done, total_) * barWidth / total_;
    fmt::print(stderr, "\r{} [{:#<{}}{:<{}}] {}/{}\x1B[K", label_, "", filled, "",
               barWidth - filled, done, total_);
    std::fflush(stderr);
}

}  // namespace pictal::program
