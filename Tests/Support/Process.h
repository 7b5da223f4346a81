#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs a program to its end, as a shell would, without a shell.
///
///     const auto result = Process{.arguments = words("shortcuts list")}.run();
///     EXPECT_EQ(result.status, 0) << result.error;
namespace pictal {

/// A line as arguments; '' is an empty one.
inline std::vector<std::string> words(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> result;
    for (std::string word; stream >> word;)
        result.push_back(word == "''" ? "" : word);
    return result;
}

/// Runs the check in a child, which may give up root, hit limits or die.
inline int statusInChild(const std::function<bool()>& check) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(check() ? 0 : 1);
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}

/// The same for checks that make themselves known.
inline void expectNoFailureInChild(const std::function<void()>& checks) {
    EXPECT_EQ(statusInChild([&] { return checks(), !testing::Test::HasFailure(); }), 0);
}

/// Root may read and write everything; a test of permissions gives that up first, in a child. Does
/// nothing for everybody else.
inline bool giveUpRoot() {
    constexpr unsigned nobody = 65534;
    if (::geteuid() != 0) return true;
    return ::setgroups(0, nullptr) == 0 && ::setgid(nobody) == 0 && ::setuid(nobody) == 0;
}

struct Process {
    struct Result {
        int status;  ///< what it exited with; 128 and the signal's number if one ended it
        std::string output, error;
    };

    std::filesystem::path program = PICTAL_PROGRAM;
    std::vector<std::string> arguments{};
    std::string input{};
    /// Added to the environment of the test, or put in place of what is there.
    std::map<std::string, std::string> environment{};
    /// Where it runs; empty is where the test runs.
    std::filesystem::path folder{};
    bool asRoot = true;

    /// May be called by several threads at once.
    [[nodiscard]] Result run() const {
        // Opened here, so that it may lie where only root gets in. Files in memory stand for the
        // pipes: nobody has to read while the program writes.
        const File executable(std::fopen(program.c_str(), "re"), &std::fclose);
        const File in = inMemory(), out = inMemory(), err = inMemory();
        if (::pwrite(::fileno(in.get()), input.data(), input.size(), 0) != std::ssize(input))
            throw std::runtime_error("cannot write a program's standard input");
        std::vector<std::string> texts = arguments;
        texts.insert(texts.begin(), program.string());
        std::vector<char*> argv;
        for (std::string& text : texts)
            argv.push_back(text.data());
        argv.push_back(nullptr);

        const int status = statusInChild([&] {
            ::dup2(::fileno(in.get()), STDIN_FILENO);
            ::dup2(::fileno(out.get()), STDOUT_FILENO);
            ::dup2(::fileno(err.get()), STDERR_FILENO);
            for (const auto& [name, value] : environment)
                ::setenv(name.c_str(), value.c_str(), 1);
            if ((folder.empty() || ::chdir(folder.c_str()) == 0) && (asRoot || giveUpRoot()))
                ::fexecve(::fileno(executable.get()), argv.data(), environ);
            ::_exit(127);
            return false;
        });
        return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), contents(out),
                contents(err)};
    }

  private:
    using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

    static File inMemory() {
        return {::fdopen(::memfd_create("pictal-test", MFD_CLOEXEC), "r+"), &std::fclose};
    }
    static std::string contents(const File& file) {
        const int descriptor = ::fileno(file.get());
        std::string text(static_cast<std::size_t>(::lseek(descriptor, 0, SEEK_END)), '\0');
        if (::pread(descriptor, text.data(), text.size(), 0) != std::ssize(text))
            throw std::runtime_error("cannot read a program's output");
        return text;
    }
};

}  // namespace pictal
