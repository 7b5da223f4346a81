#include "pictal/Interrupts.h"

#include <array>
#include <climits>
#include <cstring>

#include <unistd.h>

namespace pictal::program {

namespace {

constexpr std::array endings{SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ};

/// Empty when there is none. A plain array, since a signal handler may touch nothing else; a longer
/// path than this cannot be opened in the first place.
std::array<char, PATH_MAX> temporaryFile{};

sigset_t endingSignals() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : endings)
        sigaddset(&set, signal);
    return set;
}

/// The default action is back by now, and waits until this returns.
extern "C" void onEndingSignal(int signal) {
    if (temporaryFile[0] != '\0') ::unlink(temporaryFile.data());
    (void)std::raise(signal);
}

}  // namespace

void removeTemporaryFileOnInterrupt() {
    struct sigaction action{};
    action.sa_handler = onEndingSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    action.sa_mask = endingSignals();
    for (const int signal : endings) {
        struct sigaction before{};
        ::sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);
    }
}

HeldInterrupts::HeldInterrupts() {
    const sigset_t set = endingSignals();
    ::sigprocmask(SIG_BLOCK, &set, &before_);
}

HeldInterrupts::~HeldInterrupts() {
    ::sigprocmask(SIG_SETMASK, &before_, nullptr);
}

void setTemporaryFile(const std::filesystem::path& path) {
    const HeldInterrupts held;
    const std::string& name = path.native();
    const bool fits = name.size() < temporaryFile.size();
    std::memcpy(temporaryFile.data(), name.c_str(), fits ? name.size() + 1 : 0);
    if (!fits) temporaryFile[0] = '\0';
}

}  // namespace pictal::program
