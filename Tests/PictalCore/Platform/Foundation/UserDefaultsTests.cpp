#include "PictalCore/Platform/Foundation/InMemoryUserDefaults.h"
#include "PictalCore/Platform/Foundation/SQLiteUserDefaults.h"
#include "PictalCore/Platform/Foundation/detail/SQLiteDatabase.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <csignal>
#include <fstream>
#include <span>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace pictal {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using enum UserDefaultsError::Kind;

UserDefaults::Data asData(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

std::shared_ptr<SQLiteUserDefaults> opened(const fs::path& path,
                                           std::chrono::milliseconds busyTimeout = 10s) {
    auto defaults = SQLiteUserDefaults::open(path, busyTimeout);
    if (!defaults) throw std::runtime_error(defaults.error().description);
    return *defaults;
}

std::string contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

unsigned mode(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions());
}

/// Runs the check in a child, which may give up root, hit limits or die.
int statusInChild(const std::function<bool()>& check) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(check() ? 0 : 1);
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}

void expectTypesAreKept(UserDefaults& defaults) {
    const std::string_view oddKey("a\0é", 4);
    EXPECT_EQ(defaults.object("key"), std::nullopt);
    ASSERT_TRUE(defaults.setObject("key", asData(std::string_view("a\0b", 3))));
    EXPECT_EQ(defaults.data("key"), asData(std::string_view("a\0b", 3)));
    ASSERT_TRUE(defaults.setObject("key", asData("")));
    EXPECT_EQ(defaults.data("key"), asData("")) << "empty data is there";
    ASSERT_TRUE(defaults.setObject("key", "text"));
    EXPECT_EQ(defaults.data("key"), std::nullopt) << "text is no data";
    EXPECT_EQ(defaults.object("key"), UserDefaults::Object("text"));
    ASSERT_TRUE(defaults.setObject("", ""));
    EXPECT_EQ(defaults.object(""), UserDefaults::Object(""));
    ASSERT_TRUE(defaults.setObject(oddKey, "odd"));
    EXPECT_EQ(defaults.object("a"), std::nullopt);
    EXPECT_EQ(defaults.object(oddKey), UserDefaults::Object("odd"));
}

TEST(UserDefaults, KeepTheTypeOfAValue) {
    InMemoryUserDefaults inMemory;
    expectTypesAreKept(inMemory);
    const TemporaryFolder folder;
    expectTypesAreKept(*opened(folder / "store"));
    EXPECT_EQ(opened(folder / "store")->object("key"), UserDefaults::Object("text"));
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

    std::ofstream(folder / "empty")
        .flush();  // as one that died right after making the file left it
    EXPECT_TRUE(opened(folder / "empty")->setObject("key", "text"));
}

TEST(SQLiteUserDefaults, RefusesWhatIsNoSoundStoreAndLeavesItAlone) {
    const TemporaryFolder folder;
    std::ofstream(folder / "noise") << std::string(5000, '?');
    std::ofstream(folder / "foreign").flush();
    ASSERT_TRUE(detail::SQLiteDatabase::open(folder / "foreign", 1s)
                    ->execute("CREATE TABLE user_defaults (key, value)"));
    for (int i = 0; i < 50; ++i)
        ASSERT_TRUE(opened(folder / "damaged")
                        ->setObject(std::to_string(i), asData(std::string(1000, 'x'))));
    std::fstream(folder / "damaged").seekp(3 * 4096).write(std::string(4096, '\xEE').data(), 4096);
    fs::copy(folder / "damaged", folder / "truncated");
    fs::resize_file(folder / "truncated", 2 * 4096);

    for (const char* name : {"noise", "foreign", "damaged", "truncated"}) {
        const std::string before = contents(folder / name);
        const auto defaults = SQLiteUserDefaults::open(folder / name);
        ASSERT_FALSE(defaults) << name;
        EXPECT_EQ(defaults.error().kind, corrupt) << name;
        EXPECT_EQ(defaults.error().description,
                  (folder / name).string() +
                      ": damaged, or no store of user defaults; move it away to start afresh");
        EXPECT_EQ(contents(folder / name), before) << name;
    }
    EXPECT_EQ(SQLiteUserDefaults::open(folder.path()).error().kind, corrupt);
    EXPECT_EQ(SQLiteUserDefaults::open("").error().kind, inputOutput);
    EXPECT_EQ(opened(folder / "noise" / "store")->setObject("key", "text").error().kind,
              inputOutput);
}

TEST(SQLiteUserDefaults, TellsBusyFromAbsent) {
    const TemporaryFolder folder;
    ASSERT_TRUE(opened(folder / "store")->setObject("key", asData("value")));
    const auto defaults = opened(folder / "store", 1ms);
    const auto other = detail::SQLiteDatabase::open(folder / "store", 1ms);
    ASSERT_TRUE(other->execute("BEGIN EXCLUSIVE"));
    EXPECT_EQ(defaults->data("key").error().kind, busy);
    EXPECT_EQ(defaults->setObject("key", "text").error().kind, busy);
    EXPECT_EQ(defaults->transaction([] { return true; }).error().kind, busy);
    EXPECT_EQ(SQLiteUserDefaults::open(folder / "store", 1ms).error().kind, busy);
    ASSERT_TRUE(other->execute("COMMIT"));
    EXPECT_EQ(defaults->data("key"), asData("value"));
}

TEST(SQLiteUserDefaults, ATransactionIsKeptWholeOrNotAtAll) {
    const TemporaryFolder folder;
    const auto defaults = opened(folder / "store");
    const auto other = opened(folder / "store", 1ms);
    for (const bool keep : {false, true}) {
        EXPECT_TRUE(defaults->transaction([&] {
            EXPECT_TRUE(defaults->setObject("a", "1") && defaults->setObject("b", "2"));
            EXPECT_EQ(defaults->object("a"), UserDefaults::Object("1"));
            EXPECT_EQ(other->setObject("c", "3").error().kind, busy);
            EXPECT_EQ(defaults->transaction([] { return true; }).error().kind, inputOutput);
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
    EXPECT_EQ(defaults->object("a"), UserDefaults::Object("1"));
}

TEST(SQLiteUserDefaults, TransactionsOfThreadsLoseNothing) {
    const TemporaryFolder folder;
    const auto shared = opened(folder / "store");
    const auto count = [](SQLiteUserDefaults& defaults) {
        for (int i = 0; i < 25; ++i) {
            const auto done = defaults.transaction([&] {
                const auto size = defaults.data("count")->value_or(asData("")).size();
                return defaults.setObject("count", UserDefaults::Data(size + 1)).has_value();
            });
            EXPECT_TRUE(done) << done.error().description;
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
        if (!defaults->setObject("key", "written")) return false;
        return defaults
            ->transaction([&] {
                // More than is held in memory, so that the file itself is half changed.
                (void)defaults->setObject("key", std::string(20'000'000, 'x'));
                ::raise(SIGKILL);
                return true;
            })
            .has_value();
    });
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(opened(folder / "store")->object("key"), UserDefaults::Object("written"));
}

TEST(SQLiteUserDefaults, SaysWhenItMayNotReadOrWrite) {
    const TemporaryFolder folder;
    for (const char* name : {"read-only", "unreadable"})
        ASSERT_TRUE(opened(folder / name)->setObject("key", "text"));
    fs::permissions(folder / "read-only", fs::perms(0444));
    fs::permissions(folder / "unreadable", fs::perms(0));
    fs::permissions(folder.path(), fs::perms(0555));
    EXPECT_EQ(statusInChild([&] {
                  if (!giveUpRoot()) return false;
                  const auto readOnly = opened(folder / "read-only");
                  EXPECT_EQ(readOnly->object("key"), UserDefaults::Object("text"));
                  EXPECT_EQ(readOnly->setObject("key", "x").error().kind, notPermitted);
                  EXPECT_EQ(SQLiteUserDefaults::open(folder / "unreadable").error().kind,
                            notPermitted);
                  EXPECT_EQ(opened(folder / "missing")->setObject("key", "x").error().description,
                            (folder / "missing").string() + ": Permission denied");
                  return !testing::Test::HasFailure();
              }),
              0);
    fs::permissions(folder.path(), fs::perms(0755));
}

TEST(SQLiteUserDefaults, AFailedWriteLeavesTheOldValue) {
    const TemporaryFolder folder;
    ASSERT_TRUE(opened(folder / "store")->setObject("key", "old"));
    EXPECT_EQ(statusInChild([&] {
                  std::signal(SIGXFSZ, SIG_IGN);
                  const rlimit limit{65536, 65536};
                  ::setrlimit(RLIMIT_FSIZE, &limit);
                  const auto defaults = opened(folder / "store");
                  EXPECT_EQ(defaults->setObject("key", std::string(200'000, 'x')).error().kind,
                            inputOutput);
                  EXPECT_EQ(defaults->object("key"), UserDefaults::Object("old"));
                  EXPECT_TRUE(defaults->setObject("key", "new"));
                  return !testing::Test::HasFailure();
              }),
              0);
    EXPECT_EQ(opened(folder / "store")->object("key"), UserDefaults::Object("new"));
}

}  // namespace
}  // namespace pictal
