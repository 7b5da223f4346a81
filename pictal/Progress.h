#pragma once

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
};

}  // namespace pictal::program
