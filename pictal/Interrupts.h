#pragma once

#include <csignal>
#include <filesystem>

/// What a signal that ends the program leaves behind: no temporary file. The program then dies of
/// the signal, so that the shell that waits for it stops too instead of going on with its loop.
namespace pictal::program {

/// From now on: an interrupt, a hang-up, a closed pipe, a file or a time over its limit, and
/// requests to end. What the caller had ignored stays ignored, as in a job in the background.
void removeTemporaryFileOnInterrupt();

/// Keeps signals waiting as long as it lives, for a step that they must not divide.
class HeldInterrupts {
  public:
    HeldInterrupts();
    ~HeldInterrupts();
    HeldInterrupts(const HeldInterrupts&) = delete;
    HeldInterrupts& operator=(const HeldInterrupts&) = delete;

  private:
    sigset_t before_{};
};

/// Names the one temporary file that there is; an empty path says that there is none.
void setTemporaryFile(const std::filesystem::path& path);

}  // namespace pictal::program
