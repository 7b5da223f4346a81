#include "PictalCore/Platform/Foundation/InMemoryUserDefaults.h"
#include "PictalCore/Platform/Foundation/SQLiteUserDefaults.h"
#include "PictalCore/Platform/Foundation/detail/SQLiteDatabase.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <csignal>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace pictal {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using namespace std::string_view_literals;
using enum UserDefaultsError::Kind;
using Object = UserDefaults::Object;

std::shared_ptr<SQLiteUserDefaults> opened(const fs::path& path,
                                           std::chrono::milliseconds busyTimeout = 10s) {
    auto defaults = SQLiteUserDefaults::open(path, busyTimeout);
    if (!defaults) throw std::runtime_error(defaults.error().description());
    return *defaults;
}

void expectTypesAreKept(UserDefaults& defaults) {
    EXPECT_EQ(defaults.object("key"), std::nullopt);
    ASSERT_TRUE(defaults.setObject("key", bytesOf("a\0b"sv)));
    EXPECT_EQ(defaults.data("key"), bytesOf("a\0b"sv));
    ASSERT_TRUE(defaults.setObject("key", bytesOf("")));
    EXPECT_EQ(defaults.data("key"), bytesOf("")) << "empty data is there";
    ASSERT_TRUE(defaults.setObject("key", "text"));
    EXPECT_EQ(defaults.data("key"), std::nullopt) << "text is no data";
    EXPECT_EQ(defaults.object("key"), Object("text"));
    ASSERT_TRUE(defaults.setObject("", ""));
    EXPECT_EQ(defaults.object(""), Object(""));
    ASSERT_TRUE(defaults.setObject("a\0é"sv, "odd"));
    EXPECT_EQ(defaults.object("a"), std::nullopt);
    EXPECT_EQ(defaults.object("a\0é"sv), Object("odd"));
}

TEST(UserDefaults, KeepTheTypeOfAValue) {
    InMemoryUserDefaults inMemory;
    expectTypesAreKept(inMemory);
    const TemporaryFolder folder;
    expectTypesAreKept(*opened(folder / "store"));
    EXPECT_EQ(opened(folder / "store")->object("key"), Object("text"));
}

TEST(SQLiteUserDefaults, TheFirstWriteMakesAPrivateFileInPrivateFolders) {
    const TemporaryFolder folder;
    const fs::path path = folder / "new" / "newer" / "store";
    const mode_t old = ::umask(0);
    const auto defaults = opened(path);
    EXPECT_EQ(defaults->data("key"), std::nullopt);
    EXPECT_FALSE(fs::exists(folder / "new")) << "reading makes nothing";
    EXPECT_TRUE(defaults->setObject("key", "text"));
    ::umask(old);
    EXPECT_EQ(mode(path), 0600U);
    EXPECT_EQ(mode(path.parent_path()), 0700U);
    EXPECT_EQ(mode(folder / "new"), 0700U);

    std::ofstream(folder / "empty").flush();  // left by a process that died right then
    EXPECT_TRUE(opened(folder / "empty")->setObject("key", "text"));
}

TEST(SQLiteUserDefaults, RefusesWhatIsNoSoundStoreAndLeavesItAlone) {
    const TemporaryFolder folder;
    std::ofstream(folder / "noise") << std::string(5000, '?');
    std::ofstream(folder / "foreign").flush();
    ASSERT_TRUE(detail::SQLiteDatabase::open(folder / "foreign", 1s)
                    ->execute("CREATE TABLE user_defaults (key, value)"));
    auto large = opened(folder / "damaged");
    ASSERT_TRUE(large->transaction([&] {
        for (int i = 0; i < 50; ++i)
            EXPECT_TRUE(large->setObject(std::to_string(i), UserDefaults::Data(1000)));
        return true;
    }));
    large.reset();
    std::fstream(folder / "damaged").seekp(3 * 4096).write(std::string(4096, '\xEE').data(), 4096);
    fs::copy(folder / "damaged", folder / "truncated");
    fs::resize_file(folder / "truncated", 2 * 4096);

    for (const char* name : {"noise", "foreign", "damaged", "truncated"}) {
        const std::string before = contents(folder / name);
        const auto defaults = SQLiteUserDefaults::open(folder / name);
        ASSERT_FALSE(defaults) << name;
        EXPECT_EQ(defaults.error().kind, corrupt) << name;
        EXPECT_EQ(defaults.error().description(),
                  (folder / name).string() +
                      ": damaged, or no store of user defaults; move it away to start afresh");
        EXPECT_EQ(contents(folder / name), before) << name;
    }
    EXPECT_EQ(SQLiteUserDefaults::open(folder.path()).error().kind, corrupt);
    EXPECT_EQ(SQLiteUserDefaults::open("").error().kind, inputOutput);
    EXPECT_EQ(opened(folder / "noise" / "store")->setObject("key", "text").error().kind,
              inputOutput);
}

TEST(SQLiteUserDefaults, RefusesDamagedHeadersAndForeignTables) {
    const TemporaryFolder folder;
    ASSERT_TRUE(opened(folder / "sound")->setObject("key", "text"));
    const auto damaged = [&](const std::string& name, std::ptrdiff_t at, char now) {
        fs::copy(folder / "sound", folder / name);
        std::fstream(folder / name).seekp(at).write(&now, 1);
    };
    const auto changed = [&](const char* name, const char* statement) {
        fs::copy(folder / "sound", folder / name);
        ASSERT_TRUE(detail::SQLiteDatabase::open(folder / name, 1s)->execute(statement)) << name;
    };
    damaged("page size", 16, '\x03');
    damaged("schema format", 47, '\x09');
    damaged("root page", 100, '\x77');
    changed("no table", "DROP TABLE user_defaults");
    changed("renamed", "ALTER TABLE user_defaults RENAME TO other");
    changed("columns", "ALTER TABLE user_defaults RENAME COLUMN value TO data");
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        if (entry.path() == folder / "sound") continue;
        const auto defaults = SQLiteUserDefaults::open(entry.path());
        ASSERT_FALSE(defaults) << entry.path();
        EXPECT_EQ(defaults.error().kind, corrupt) << defaults.error().description();
    }
    changed("view",
            "ALTER TABLE user_defaults RENAME TO t;"
            "CREATE VIEW user_defaults AS SELECT key, value FROM t");
    EXPECT_EQ(opened(folder / "view")->setObject("key", "x").error().kind, corrupt);
}

TEST(SQLiteUserDefaults, FollowsLinksAlsoToWhatIsNotThereYet) {
    const TemporaryFolder folder;
    fs::create_symlink("second", folder / "first");
    fs::create_symlink("new/store", folder / "second");
    const auto defaults = opened(folder / "first");
    EXPECT_EQ(defaults->object("key"), std::nullopt);
    ASSERT_TRUE(defaults->setObject("key", "text"));
    EXPECT_EQ(opened(folder / "new" / "store")->object("key"), Object("text"));
    EXPECT_EQ(mode(folder / "new" / "store"), 0600U);
    EXPECT_TRUE(fs::is_symlink(folder / "first"));

    fs::create_symlink("circle", folder / "circle");
    EXPECT_EQ(SQLiteUserDefaults::open(folder / "circle").error().reason,
              "Too many levels of symbolic links");
    std::ofstream(folder / "file") << "x";
    fs::create_symlink("file/store", folder / "nowhere");
    EXPECT_EQ(opened(folder / "nowhere")->setObject("key", "x").error().reason, "Not a directory");
}

TEST(SQLiteUserDefaults, TheFileAtItsPlaceIsTheStore) {
    const TemporaryFolder folder;
    const auto defaults = opened(folder / "store");
    ASSERT_TRUE(defaults->setObject("key", "first"));
    fs::rename(folder / "store", folder / "moved");
    EXPECT_EQ(defaults->object("key"), std::nullopt);
    ASSERT_TRUE(defaults->setObject("key", "second"));
    EXPECT_EQ(opened(folder / "moved")->object("key"), Object("first"));
    EXPECT_EQ(opened(folder / "store")->object("key"), Object("second"));
    fs::rename(folder / "moved", folder / "store");
    EXPECT_EQ(defaults->object("key"), Object("first"));
    EXPECT_TRUE(defaults->transaction([&] {
        fs::rename(folder / "store", folder / "moved");
        EXPECT_EQ(defaults->object("key"), Object("first")) << "a transaction stays with its file";
        EXPECT_EQ(defaults->setObject("key", "third").error().kind, busy);
        return false;
    }));
    EXPECT_EQ(defaults->object("key"), std::nullopt);
    EXPECT_EQ(opened(folder / "moved")->object("key"), Object("first"));
}

TEST(SQLiteUserDefaults, ARefusedFirstWriteLeavesNoFile) {
    const TemporaryFolder folder;
    const auto defaults = opened(folder / "store");
    EXPECT_TRUE(defaults->transaction([&] { return !defaults->setObject("key", "x"); }));
    EXPECT_EQ(entryCount(folder.path()), 0);
    EXPECT_THROW((void)defaults->transaction([]() -> bool { throw std::runtime_error("no"); }),
                 std::runtime_error);
    EXPECT_EQ(entryCount(folder.path()), 0);
    expectNoFailureInChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{65536, 65536};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        EXPECT_EQ(
            opened(folder / "store")->setObject("key", std::string(200'000, 'x')).error().kind,
            inputOutput);
    });
    EXPECT_EQ(entryCount(folder.path()), 0);
    ASSERT_TRUE(defaults->setObject("key", "text"));
    EXPECT_TRUE(defaults->transaction([] { return false; }));
    EXPECT_EQ(defaults->object("key"), Object("text")) << "only an empty file goes";
}

TEST(SQLiteUserDefaults, TellsBusyFromAbsent) {
    const TemporaryFolder folder;
    ASSERT_TRUE(opened(folder / "store")->setObject("key", bytesOf("value")));
    const auto defaults = opened(folder / "store", 1ms);
    const auto other = detail::SQLiteDatabase::open(folder / "store", 1ms);
    ASSERT_TRUE(other->execute("BEGIN EXCLUSIVE"));
    EXPECT_EQ(defaults->data("key").error().kind, busy);
    EXPECT_EQ(defaults->setObject("key", "text").error().kind, busy);
    EXPECT_EQ(defaults->transaction([] { return true; }).error().kind, busy);
    EXPECT_EQ(SQLiteUserDefaults::open(folder / "store", 1ms).error().kind, busy);
    ASSERT_TRUE(other->execute("COMMIT"));
    EXPECT_EQ(defaults->data("key"), bytesOf("value"));
}

TEST(SQLiteUserDefaults, ATransactionIsKeptWholeOrNotAtAll) {
    const TemporaryFolder folder;
    const auto defaults = opened(folder / "store");
    const auto other = opened(folder / "store", 1ms);
    for (const bool keep : {false, true}) {
        EXPECT_TRUE(defaults->transaction([&] {
            EXPECT_TRUE(defaults->setObject("a", "1") && defaults->setObject("b", "2"));
            EXPECT_EQ(defaults->object("a"), Object("1"));
            EXPECT_EQ(other->setObject("c", "3").error().kind, busy);
            EXPECT_EQ(defaults->transaction([] { return true; }).error().kind, nestedTransaction);
            return keep;
        }));
        EXPECT_EQ(other->object("a")->has_value(), keep);
        EXPECT_EQ(other->object("b")->has_value(), keep);
    }
    EXPECT_THROW((void)defaults->transaction([&]() -> bool {
        EXPECT_TRUE(defaults->setObject("a", "9"));
        throw std::runtime_error("given up");
    }),
                 std::runtime_error);
    EXPECT_EQ(defaults->object("a"), Object("1"));
}

TEST(SQLiteUserDefaults, TransactionsOfThreadsLoseNothing) {
    const TemporaryFolder folder(TemporaryFolder::inMemory());
    const auto shared = opened(folder / "store");
    const auto count = [](SQLiteUserDefaults& defaults) {
        for (int i = 0; i < 25; ++i) {
            const auto done = defaults.transaction([&] {
                const auto size = defaults.data("count")->value_or(bytesOf("")).size();
                return defaults.setObject("count", UserDefaults::Data(size + 1)).has_value();
            });
            EXPECT_TRUE(done) << done.error().description();
        }
    };
    {
        const std::jthread first([&] { count(*shared); });
        const std::jthread second([&] { count(*shared); });
        const std::jthread third([&] { count(*opened(folder / "store")); });
    }
    EXPECT_EQ(shared->data("count"), UserDefaults::Data(75));
}

TEST(SQLiteUserDefaults, WhatIsWrittenOutlivesAKilledProcess) {
    const TemporaryFolder folder;
    const int status = statusInChild([&] {
        const auto defaults = opened(folder / "store");
        return defaults->setObject("key", "written") && defaults->transaction([&] {
            // More than is held in memory, so that the file itself is half changed.
            (void)defaults->setObject("key", std::string(20'000'000, 'x'));
            return ::raise(SIGKILL) == 0;
        });
    });
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(opened(folder / "store")->object("key"), Object("written"));
}

TEST(SQLiteUserDefaults, SaysWhenItMayNotReadOrWrite) {
    const TemporaryFolder folder;
    for (const char* name : {"read-only", "unreadable"})
        ASSERT_TRUE(opened(folder / name)->setObject("key", "text"));
    fs::permissions(folder / "read-only", fs::perms(0444));
    fs::permissions(folder / "unreadable", fs::perms(0));
    fs::permissions(folder.path(), fs::perms(0555));
    expectNoFailureInChild([&] {
        ASSERT_TRUE(giveUpRoot());
        const auto readOnly = opened(folder / "read-only");
        EXPECT_EQ(readOnly->object("key"), Object("text"));
        EXPECT_EQ(readOnly->setObject("key", "x").error().kind, notPermitted);
        EXPECT_EQ(SQLiteUserDefaults::open(folder / "unreadable").error().kind, notPermitted);
        EXPECT_EQ(opened(folder / "missing")->setObject("key", "x").error().description(),
                  (folder / "missing").string() + ": Permission denied");
    });
    fs::permissions(folder.path(), fs::perms(0755));
}

TEST(SQLiteUserDefaults, AFailedWriteLeavesTheOldValue) {
    const TemporaryFolder folder;
    ASSERT_TRUE(opened(folder / "store")->setObject("key", "old"));
    expectNoFailureInChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{65536, 65536};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        const auto defaults = opened(folder / "store");
        EXPECT_EQ(defaults->setObject("key", std::string(200'000, 'x')).error().kind, inputOutput);
        EXPECT_EQ(defaults->object("key"), Object("old"));
        EXPECT_TRUE(defaults->setObject("key", "new"));
        EXPECT_EQ(defaults
                      ->transaction([&] {
                          (void)defaults->setObject("other", "x");
                          // So large that it reaches the file before the transaction ends.
                          EXPECT_FALSE(defaults->setObject("large", std::string(20'000'000, 'x')));
                          EXPECT_FALSE(defaults->setObject("more", "x")) << "not on its own";
                          return true;
                      })
                      .error()
                      .reason,
                  "an earlier failure undid the transaction; nothing of it was written");
        EXPECT_EQ(defaults->object("other"), std::nullopt);
    });
    EXPECT_EQ(opened(folder / "store")->object("key"), Object("new"));
}

}  // namespace
}  // namespace pictal
