#include "PictalCore/Platform/Foundation/Files.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/Process.h"
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

    ASSERT_EQ(::chmod((folder / "new").c_str(), 04750), 0);
    auto file = AtomicFile::make(folder / "new");
    ASSERT_TRUE(file);
    EXPECT_EQ(mode(file->temporaryPath()), 0750U) << "while it is written, and never set-user-ID";
    ASSERT_TRUE(file->commit());
    EXPECT_EQ(mode(folder / "new"), 0750U);
}

TEST(Files, AReplacedFileKeepsItsOwnerOrGivesNobodyMore) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can make a file of somebody else's";
    const TemporaryFolder folder;
    fs::permissions(folder.path(), fs::perms(0777));
    const auto make = [&](const char* name, unsigned owner, unsigned group, unsigned perms) {
        std::ofstream(folder / name) << "old";
        ASSERT_EQ(::chown((folder / name).c_str(), owner, group), 0);
        fs::permissions(folder / name, fs::perms(perms));
    };
    const auto look = [&](const char* name) {
        struct stat status{};
        EXPECT_EQ(::stat((folder / name).c_str(), &status), 0);
        return std::array{status.st_uid, status.st_gid, status.st_mode & 07777};
    };
    make("kept", 1234, 5678, 0640);
    make("shared", 1234, 5678, 0676);
    make("mine", 65534, 5678, 0664);
    make("read-only", 1234, 5678, 0444);
    ASSERT_TRUE(writeFileAtomically(folder / "kept", bytesOf("x")));
    EXPECT_EQ(look("kept"), (std::array{1234U, 5678U, 0640U}));
    expectNoFailureInChild([&] {
        ASSERT_TRUE(giveUpRoot());
        for (const char* name : {"shared", "mine"})
            EXPECT_TRUE(writeFileAtomically(folder / name, bytesOf("x"))) << name;
        const FileError refused{make_error_code(std::errc::permission_denied),
                                folder / "read-only"};
        EXPECT_EQ(writeFileAtomically(folder / "read-only", bytesOf("x")).error(), refused);
    });
    EXPECT_EQ(look("shared"), (std::array{65534U, 65534U, 0666U})) << "the group is another one";
    EXPECT_EQ(look("mine"), (std::array{65534U, 65534U, 0644U}));
    EXPECT_EQ(contents(folder / "read-only"), "old");
    EXPECT_TRUE(writeFileAtomically(folder / "read-only", bytesOf("x"))) << "root may write it";

    fs::permissions(folder.path(), fs::perms(0755));
    expectNoFailureInChild([&] {
        ASSERT_TRUE(giveUpRoot());
        for (const char* name : {"mine", "new"})
            EXPECT_EQ(writeFileAtomically(folder / name, bytesOf("x")).error().description(),
                      folder.path().string() + ": Permission denied");
    });
}

TEST(Files, FollowsLinksToWhatIsThereAndWhatIsNot) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "sub");
    fs::create_symlink("sub/second", folder / "first");
    fs::create_symlink("../third", folder / "sub" / "second");
    EXPECT_EQ(followingLinks(folder / "first").lexically_normal(), folder / "third");
    fs::create_symlink(folder / "end", folder / "third");
    EXPECT_EQ(followingLinks(folder / "first"), folder / "end");
    EXPECT_EQ(followingLinks(folder / "end"), folder / "end");
    fs::create_symlink("circle", folder / "circle");
    EXPECT_EQ(followingLinks(folder / "circle"), folder / "circle");
}

TEST(Files, FailureLeavesEverythingAsItWas) {
    const TemporaryFolder folder;
    const fs::path nowhere = folder / "no" / "such";
    EXPECT_EQ(writeFileAtomically(nowhere, bytesOf("x")).error(),
              (FileError{make_error_code(std::errc::no_such_file_or_directory), folder / "no"}));
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
