#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pictal {

/// How much memory `work` takes at its peak beyond what was there before, in MiB: measured in a
/// child, whose peak is its own.
template <class Work>
[[nodiscard]] double peakMemory(Work work) {
    int ends[2];
    if (::pipe(ends) != 0) return -1;
    const pid_t child = ::fork();
    if (child == 0) {
        const auto peak = [] {
            struct rusage usage{};
            ::getrusage(RUSAGE_SELF, &usage);
            return static_cast<double>(usage.ru_maxrss) / 1024;
        };
        const double before = peak();
        work();
        const double taken = peak() - before;
        const bool told = ::write(ends[1], &taken, sizeof taken) == sizeof taken;
        ::_exit(told ? 0 : 1);
    }
    double taken = -1;
    const bool told = ::read(ends[0], &taken, sizeof taken) == sizeof taken;
    ::waitpid(child, nullptr, 0);
    ::close(ends[0]);
    ::close(ends[1]);
    return told ? taken : -1;
}

}  // namespace pictal
