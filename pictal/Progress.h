#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace pictal::program {

/// One bar on standard error for work that takes long; nothing where that is no terminal.
class Progress {
  public:
    enum class Shown { onTerminal, never };

    Progress(std::string label, std::size_t steps, Shown shown);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    /// Takes the bar away.
    ~Progress();

    void step();

  private:
    void draw() const;

    std::string label_;
    std::size_t steps_;
    std::size_t done_ = 0;
    bool shown_;
/// A bar on standard error while long work is done: on a terminal only, and gone when it ends.
class Progress {
  public:
    /// @param total  steps; nothing is shown for none
    Progress(std::string label, std::size_t total, bool quiet);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// So many steps are done by now.
    void show(std::size_t done);

  private:
    std::string label_;
    std::size_t total_;
    bool isShown_;
    bool isDrawn_ = false;
    std::chrono::steady_clock::time_point next_{};
};

}  // namespace pictal::program
