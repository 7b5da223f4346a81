#include "PictalCore/Platform/Foundation/Files.h"
#include "Tests/Support/TemporaryFolder.h"

#include <array>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pictal {
namespace {

namespace fs = std::filesystem;

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text));
}

std::string contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::size_t entryCount(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

TEST(Files, WritesAtomicallyAndReadsBack) {
    const TemporaryFolder folder;
    const fs::path path = folder / "a.txt";
    ASSERT_TRUE(writeFileAtomically(path, bytesOf("first")));
    ASSERT_TRUE(writeFileAtomically(path, bytesOf("second")));
    const auto read = readFile(path);
    ASSERT_TRUE(read);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(read->data()), read->size()), "second");
    EXPECT_EQ(entryCount(folder.path()), 1U);
    EXPECT_EQ(readFile(path, 5).error().code, std::errc::file_too_large);
    EXPECT_TRUE(readFile(path, 6));
}

TEST(Files, ReadsADescriptorFromWhereItStands) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    ASSERT_EQ(::write(ends[0], "abcdef", 6), 6);
    ::close(ends[0]);
    char skipped = 0;
    ASSERT_EQ(::read(ends[1], &skipped, 1), 1);
    const auto read = readDescriptor(ends[1], "standard input");
    ::close(ends[1]);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(read->data()), read->size()), "bcdef");
    EXPECT_EQ(readDescriptor(-1, "standard input").error().description(),
              "standard input: Bad file descriptor");
}

TEST(Files, AReplacedFileKeepsItsModeAndANewOneFollowsTheUmask) {
    const TemporaryFolder folder;
    const mode_t old = ::umask(027);
    ASSERT_TRUE(writeFileAtomically(folder / "new", bytesOf("x")));
    ::umask(old);
    EXPECT_EQ(static_cast<unsigned>(fs::status(folder / "new").permissions()), 0640U);
    fs::permissions(folder / "new", fs::perms(0604));
    ASSERT_TRUE(writeFileAtomically(folder / "new", bytesOf("y")));
    EXPECT_EQ(static_cast<unsigned>(fs::status(folder / "new").permissions()), 0604U);
}

TEST(Files, FailureLeavesEverythingAsItWas) {
    const TemporaryFolder folder;
    EXPECT_EQ(
        writeFileAtomically(folder / "no" / "such", bytesOf("x")).error(),
        (FileError{make_error_code(std::errc::no_such_file_or_directory), folder / "no" / "such"}));
    EXPECT_EQ(writeFileAtomically(folder.path(), bytesOf("x")).error().code,
              std::errc::is_a_directory);
    EXPECT_EQ(readFile(folder.path()).error().code, std::errc::is_a_directory);
    EXPECT_EQ(readFile(folder / "absent").error().code, std::errc::no_such_file_or_directory);
    {
        auto file = AtomicFile::create(folder / "given-up");
        ASSERT_TRUE(file && file->write(bytesOf("half")));
        EXPECT_EQ(contents(file->temporaryPath()), "half");
    }
    EXPECT_EQ(entryCount(folder.path()), 0U);
}

}  // namespace
}  // namespace pictal
