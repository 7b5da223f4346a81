#include "PictalCore/Platform/Foundation/Files.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/TemporaryFolder.h"

#include <array>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pictal {

namespace fs = std::filesystem;

TEST(Files, WritesAtomicallyAndReadsBack) {
    const TemporaryFolder folder;
    const fs::path path = folder / "a.txt";
    ASSERT_TRUE(writeFileAtomically(path, bytesOf("first")));
    ASSERT_TRUE(writeFileAtomically(path, bytesOf("second")));
    EXPECT_EQ(readFile(path), bytesOf("second"));
    EXPECT_EQ(entryCount(folder.path()), 1);
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
    EXPECT_EQ(readDescriptor(ends[1], "standard input"), bytesOf("bcdef"));
    ::close(ends[1]);
    EXPECT_EQ(readDescriptor(-1, "standard input").error().description(),
              "standard input: Bad file descriptor");
}

TEST(Files, AReplacedFileKeepsItsModeAndANewOneFollowsTheUmask) {
    const TemporaryFolder folder;
    const mode_t old = ::umask(027);
    ASSERT_TRUE(writeFileAtomically(folder / "new", bytesOf("x")));
    ::umask(old);
    EXPECT_EQ(mode(folder / "new"), 0640U);
    fs::permissions(folder / "new", fs::perms(0604));
    ASSERT_TRUE(writeFileAtomically(folder / "new", bytesOf("y")));
    EXPECT_EQ(mode(folder / "new"), 0604U);
}

TEST(Files, FailureLeavesEverythingAsItWas) {
    const TemporaryFolder folder;
    const fs::path nowhere = folder / "no" / "such";
    EXPECT_EQ(writeFileAtomically(nowhere, bytesOf("x")).error(),
              (FileError{make_error_code(std::errc::no_such_file_or_directory), nowhere}));
    EXPECT_EQ(writeFileAtomically(folder.path(), bytesOf("x")).error().code,
              std::errc::is_a_directory);
    EXPECT_EQ(readFile(folder.path()).error().code, std::errc::is_a_directory);
    EXPECT_EQ(readFile(folder / "absent").error().code, std::errc::no_such_file_or_directory);
    {
        auto file = AtomicFile::make(folder / "given-up");
        ASSERT_TRUE(file && file->write(bytesOf("half")));
        EXPECT_EQ(contents(file->temporaryPath()), "half");
    }
    EXPECT_EQ(entryCount(folder.path()), 0);
}

}  // namespace pictal
