#pragma once

#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs a program to its end, as a shell would, without a shell.
///
///     const auto result = Process{.arguments = {"shortcuts", "list"}}.run();
///     EXPECT_EQ(result.status, 0) << result.error;
namespace pictal {

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
        std::string output;
        std::string error;
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
        const Descriptor executable{::open(program.c_str(), O_RDONLY | O_CLOEXEC)};
        const Descriptor in, out, err;
        write(in, input);
        std::vector<std::string> texts{program.string()};
        texts.insert(texts.end(), arguments.begin(), arguments.end());
        std::vector<std::string> variables = environmentTexts();
        const std::vector<char*> argv = pointers(texts), envp = pointers(variables);

        const pid_t child = ::fork();
        if (child == 0) {
            ::dup2(in.value, STDIN_FILENO);
            ::dup2(out.value, STDOUT_FILENO);
            ::dup2(err.value, STDERR_FILENO);
            if ((folder.empty() || ::chdir(folder.c_str()) == 0) && (asRoot || giveUpRoot()))
                ::fexecve(executable.value, argv.data(), envp.data());
            ::_exit(127);
        }
        int status = 0;
        if (child < 0 || ::waitpid(child, &status, 0) != child)
            throw std::runtime_error("cannot run " + program.string());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), contents(out),
                contents(err)};
    }

  private:
    struct Descriptor {
        int value = ::memfd_create("pictal-test", MFD_CLOEXEC);

        Descriptor() = default;
        explicit Descriptor(int descriptor) : value(descriptor) {}
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;
        ~Descriptor() { ::close(value); }
    };

    static void write(const Descriptor& file, const std::string& text) {
        if (::pwrite(file.value, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
            throw std::runtime_error("cannot write a program's standard input");
    }
    static std::string contents(const Descriptor& file) {
        std::string text(static_cast<std::size_t>(::lseek(file.value, 0, SEEK_END)), '\0');
        if (::pread(file.value, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
            throw std::runtime_error("cannot read a program's output");
        return text;
    }
    static std::vector<char*> pointers(std::vector<std::string>& texts) {
        std::vector<char*> result;
        for (std::string& text : texts)
            result.push_back(text.data());
        result.push_back(nullptr);
        return result;
    }
    [[nodiscard]] std::vector<std::string> environmentTexts() const {
        std::vector<std::string> texts;
        for (char** entry = environ; *entry; ++entry) {
            const std::string text = *entry;
            if (!environment.contains(text.substr(0, text.find('=')))) texts.push_back(text);
        }
        for (const auto& [name, value] : environment)
            texts.push_back(name + "=" + value);
        return texts;
    }
};

}  // namespace pictal
