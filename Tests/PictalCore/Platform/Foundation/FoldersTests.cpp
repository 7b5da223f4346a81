#include "PictalCore/Platform/Foundation/Folders.h"
#include "Tests/Support/TemporaryFolder.h"

#include <set>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace pictal {

namespace fs = std::filesystem;

TEST(Folders, ArePrivateAndNeitherFilesNorLinks) {
    const TemporaryFolder folder;
    ASSERT_TRUE(createPrivateFolder(folder / "a" / "b"));
    EXPECT_EQ(mode(folder / "a"), 0700U);
    for (const char* name : {"a", "a/b"})
        fs::permissions(folder / name, fs::perms(0755));
    ASSERT_TRUE(createPrivateFolder(folder / "a" / "b"));
    EXPECT_EQ(mode(folder / "a" / "b"), 0700U);
    EXPECT_EQ(mode(folder / "a"), 0755U) << "only the folder itself is the caller's";

    std::ofstream(folder / "file") << "x";
    fs::create_directory_symlink("a", folder / "link");
    fs::create_symlink("nowhere", folder / "dangling");
    for (const char* name : {"file", "link", "dangling"}) {
        const FileError refused{make_error_code(std::errc::not_a_directory), folder / name};
        EXPECT_EQ(createPrivateFolder(folder / name).error(), refused) << name;
        EXPECT_EQ(contentsOfPrivateFolder(folder / name).error(), refused) << name;
    }
    EXPECT_EQ(mode(folder / "a"), 0755U);
    EXPECT_EQ(createPrivateFolder(folder / "file" / "x").error().code, std::errc::not_a_directory);
    for (const fs::path& path : {folder / "absent", folder / "file" / "x"})
        EXPECT_EQ(contentsOfPrivateFolder(path).error().code, std::errc::no_such_file_or_directory)
            << path;
    ASSERT_TRUE(createPrivateFolder(folder / "link" / ".hidden")) << "a link above is followed";
    const auto entries = contentsOfPrivateFolder(folder / "a").value();
    EXPECT_EQ(std::set(entries.begin(), entries.end()),
              (std::set{folder / "a" / "b", folder / "a" / ".hidden"}));
}

TEST(Folders, DatesAreExactAndThoseOfLinksTheirOwn) {
    using namespace std::chrono;
    const TemporaryFolder folder;
    fs::create_symlink("nowhere", folder / "link");
    for (const timespec time : {timespec{1'700'000'000, 123'456'789}, timespec{-2, 500'000'000}}) {
        const timespec times[] = {time, time};
        ASSERT_EQ(::utimensat(AT_FDCWD, (folder / "link").c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
        EXPECT_EQ(modificationDate(folder / "link").value(),
                  sys_time<nanoseconds>(seconds(time.tv_sec) + nanoseconds(time.tv_nsec)));
    }
    EXPECT_EQ(modificationDate(folder / "absent").value(), std::nullopt);
}

}  // namespace pictal
