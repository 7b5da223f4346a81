#include "PictalCore/Support/TemporaryPreviewFileStore.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <regex>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace pictal {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Time = std::chrono::sys_time<std::chrono::milliseconds>;

constexpr Time now(1'700'000'000'700ms);

void setAge(const fs::path& path, std::chrono::milliseconds age) {
    const auto date = (now - age).time_since_epoch();
    const timespec time{date / 1s, date % 1s / 1ms * 1'000'000};
    const timespec times[] = {time, time};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW), 0) << path;
}

class TemporaryPreviewFileStoreTest : public testing::Test {
  protected:
    const TemporaryFolder root;
    const TemporaryPreviewFileStore store{root.path(), 60s};
    const std::vector<std::byte> data{16, std::byte{7}};

    std::ptrdiff_t previewCount() { return entryCount(store.directory()); }
};

TEST_F(TemporaryPreviewFileStoreTest, NamesNewFilesSafely) {
    const std::regex uuid("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    const auto check = [&](const std::string& stem, Time time, const std::string& want) {
        const auto file = store.write(data, stem, time);
        ASSERT_TRUE(file) << want;
        EXPECT_EQ(file->parent_path(), root / ".VistrellPreviews");
        EXPECT_EQ(fs::file_size(*file), data.size());
        const std::string name = file->filename();
        EXPECT_EQ(std::regex_replace(name, uuid, "U"), ".Vistrell-" + want + "-U.png");
    };
    for (int i = 0; i < 2; ++i)
        check("Design Review", now, "Design-Review-1700000000");
    check("?!", now, "preview-1700000000");
    check(std::string(81, 'x'), now, std::string(80, 'x').append("-1700000000"));
    check("x", Time(-1500ms), "x--1");
    // A name has 255 bytes, 62 of them around the stem: 48 letters of four leave one byte, which
    // would take the e, but not its accent.
    std::string letters, accents;
    for (int i = 0; i < 48; ++i)
        letters += "𝒜";
    for (int i = 0; i < 100; ++i)
        accents += "\u0301";
    check(letters + "e\u0301xyz", now, letters + "-1700000000");
    check(letters + "xyz", now, letters + "x-1700000000");
    check(accents, now, "preview-1700000000");
    EXPECT_EQ(previewCount(), 8);
}

TEST_F(TemporaryPreviewFileStoreTest, PrunesWhatIsOlderAndNothingOutside) {
    ASSERT_TRUE(store.pruneExpired(now));
    EXPECT_FALSE(fs::exists(store.directory())) << "pruning makes nothing";
    fs::create_directories(store.directory() / "sub" / "deeper");
    fs::permissions(store.directory(), fs::perms(0777));
    fs::create_directory(root / "outside");
    std::ofstream(root / "outside" / "old") << "x";
    std::ofstream(store.directory() / "sub" / "deeper" / "young") << "x";
    for (const char* link : {"link", "sub/link", "young link"})
        fs::create_directory_symlink(root / "outside", store.directory() / link);
    for (const char* age : {"-5000", "60000", "60001"}) {
        std::ofstream(store.directory() / age) << age;
        setAge(store.directory() / age, std::chrono::milliseconds(std::atoi(age)));
    }
    for (const char* name : {"sub", "link"})
        setAge(store.directory() / name, 61s);
    setAge(store.directory() / "young link", 59s);
    setAge(root / "outside" / "old", 1h);
    ASSERT_TRUE(store.pruneExpired(now));
    for (const char* kept : {"-5000", "60000", "young link"})
        EXPECT_TRUE(fs::exists(store.directory() / kept)) << kept;
    EXPECT_EQ(previewCount(), 3);
    EXPECT_TRUE(fs::exists(root / "outside" / "old"));

    ASSERT_TRUE(store.write(data, "x", now + 1ms));
    EXPECT_FALSE(fs::exists(store.directory() / "60000")) << "writing prunes";
    EXPECT_EQ(fs::status(store.directory()).permissions(), fs::perms(0700));
}

TEST_F(TemporaryPreviewFileStoreTest, RefusesALinkAsItsFolder) {
    fs::create_directory_symlink(".", store.directory());
    const FileError refused{make_error_code(std::errc::not_a_directory), store.directory()};
    EXPECT_EQ(store.write(data, "x", now).error(), refused);
    EXPECT_EQ(store.pruneExpired(now).error(), refused);
}

TEST_F(TemporaryPreviewFileStoreTest, MissingPermissionsAreErrors) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can make a folder of somebody else's";
    const auto withoutRoot = [](const auto& body) {
        return statusInChild([&] { return giveUpRoot() && body(); }) == 0;
    };
    const auto fails = [](const auto& result, std::errc code, const fs::path& path) {
        return !result && result.error() == FileError{make_error_code(code), path};
    };
    constexpr auto denied = std::errc::permission_denied;
    const fs::path folder = store.directory();
    fs::permissions(root.path(), fs::perms(0755));
    EXPECT_TRUE(withoutRoot([&] { return fails(store.write(data, "x", now), denied, folder); }))
        << "the folder cannot be made";
    const fs::path old = store.write(data, "x", now).value();
    setAge(old, 1h);
    fs::permissions(folder, fs::perms(0777));
    EXPECT_TRUE(withoutRoot([&] {
        constexpr auto foreign = std::errc::operation_not_permitted;
        return fails(store.write(data, "x", now), foreign, folder) &&
               fails(store.pruneExpired(now), foreign, folder);
    })) << "the folder is somebody else's";
    ASSERT_EQ(::chown(folder.c_str(), 65534, 65534), 0);
    EXPECT_FALSE(store.pruneExpired(now)) << "root is somebody else, too";
    fs::permissions(folder, fs::perms(0400));
    EXPECT_TRUE(withoutRoot([&] { return fails(store.pruneExpired(now), denied, old); }))
        << "a date cannot be read";
    fs::permissions(folder, fs::perms(0500));
    EXPECT_TRUE(withoutRoot([&] { return store.pruneExpired(now) && fs::exists(old); }))
        << "an old one cannot be deleted";
}

TEST_F(TemporaryPreviewFileStoreTest, SparesWhatAnotherWriterHasNotFinished) {
    auto first = store.makeFile("first", now);
    ASSERT_TRUE(first && first->write(data));
    const fs::path temporary = first->temporaryPath();
    setAge(temporary, 1h);
    std::ofstream(store.directory() / ".pictal-abandoned.tmp") << "x";
    setAge(store.directory() / ".pictal-abandoned.tmp", 1h);
    const auto second = store.write(data, "second", now);
    ASSERT_TRUE(second);
    EXPECT_TRUE(fs::exists(temporary));
    EXPECT_EQ(previewCount(), 2) << "what a dead writer left has expired";
    ASSERT_TRUE(first->commit());
    setAge(first->target(), 1h);
    ASSERT_TRUE(store.pruneExpired(now));
    EXPECT_EQ(previewCount(), 1);
}

}  // namespace
}  // namespace pictal
