#include "PictalCore/Platform/Foundation/SQLiteUserDefaults.h"
#include "PictalCore/Shortcuts/ShortcutStore.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <thread>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace pictal {
namespace {

namespace fs = std::filesystem;

/// `pictal shortcuts` with a folder of configurations of its own.
class ShortcutsCommand : public testing::Test {
  protected:
    [[nodiscard]] Process::Result run(const std::string& line, bool asRoot = true) const {
        return Process{.arguments = words("shortcuts " + line),
                       .environment = {{"XDG_CONFIG_HOME", folder.path().string()},
                                       {"LD_LIBRARY_PATH", reachable.string()}},
                       .asRoot = asRoot}
            .run();
    }
    /// The library where everybody gets at it: the tree may lie where only its owner does.
    void makeReachable() {
        reachable = folder / "library";
        fs::create_directory(reachable);
        const fs::path library = PICTAL_LIBRARY;
        fs::copy_file(library, reachable / library.filename());
    }
    void expect(int status, const std::string& line, const std::string& error,
                bool asRoot = true) const {
        const auto result = run(line, asRoot);
        EXPECT_EQ(result.status, status) << line;
        EXPECT_EQ(result.error, error.empty() ? "" : "pictal: " + error + "\n") << line;
        EXPECT_TRUE(status <= 1 || result.output.empty()) << line;
    }
    /// The shortcut that is stored for the action, or its default.
    [[nodiscard]] std::string stored(const std::string& action) const {
        const ShortcutStore shortcuts(SQLiteUserDefaults::open(store).value(), key,
                                      ShortcutStore::defaultShortcuts());
        const auto all = shortcuts.tryLoadShortcuts().value().shortcuts;
        return all.contains(action) ? all.at(action).displayString() : "-";
    }

    const std::string key{ShortcutStore::defaultStorageKey};
    TemporaryFolder folder{TemporaryFolder::inMemory()};
    fs::path store = folder / "pictal" / "shortcuts.db";
    fs::path reachable;
};

TEST_F(ShortcutsCommand, ListsEveryActionAndMakesNothing) {
    const auto result = run("list");
    EXPECT_EQ(result.output,
              "region             ⌃⌘S\nwindow             ⌃⌘X\nfullDisplay        ⌃⌘C\n"
              "colorPicker        ⌃⌘B\nscrolling          -\nopenMainWindow     -\n"
              "openRecentCapture  -\n");
    EXPECT_EQ(result.error, "");
    const auto document = nlohmann::json::parse(run("list --json").output);
    EXPECT_EQ(document.size(), 4U);
    EXPECT_EQ(document["region"],
              nlohmann::json::parse(R"({"keyCode":1,"keyLabel":"S","modifiers":9})"));
    EXPECT_EQ(run("path").output, store.string() + "\n");
    EXPECT_FALSE(fs::exists(store.parent_path()));
}

TEST_F(ShortcutsCommand, FindsItsPlaceWithoutConfiguration) {
    const auto path = [](const char* config, const char* home) {
        return Process{.arguments = words("shortcuts path"),
                       .environment = {{"XDG_CONFIG_HOME", config}, {"HOME", home}}}
            .run();
    };
    EXPECT_EQ(path("", "/h").output, "/h/.config/pictal/shortcuts.db\n");
    EXPECT_EQ(path("relative", "/h").output, "/h/.config/pictal/shortcuts.db\n");
    EXPECT_EQ(path("", "").status, 2);
}

TEST_F(ShortcutsCommand, ChecksACombination) {
    const auto check = [&](const std::string& line, int status, const char* output) {
        const auto result = run("check " + line);
        EXPECT_EQ(result.status, status) << line;
        EXPECT_EQ(result.output, output);
        EXPECT_EQ(result.error, "");
    };
    check("ctrl+opt+r", 0, "⌃⌥R is usable\n");
    check("Ctrl+Cmd+S", 1, "⌃⌘S is not usable\nblocking: Already used by region.\n");
    check("⌃⌘S --action region", 0, "⌃⌘S is usable\n");
    check("ctrl+a", 0,
          "⌃A is usable\nwarning: Control-only shortcuts often conflict with macOS focus and "
          "accessibility shortcuts.\n");
    const auto json = run("check cmd+q --json");
    EXPECT_EQ(json.status, 1);
    const auto document = nlohmann::json::parse(json.output);
    EXPECT_EQ(document["isUsable"], false);
    EXPECT_EQ(document["conflicts"][0]["kind"], "reserved");
    EXPECT_EQ(document["shortcut"]["keyCode"], 12);
}

TEST_F(ShortcutsCommand, RefusesWrongUse) {
    const std::string actions =
        "; the actions are region window fullDisplay colorPicker scrolling openMainWindow "
        "openRecentCapture";
    expect(2, "", "A subcommand is required. See pictal shortcuts --help.");
    expect(2, "set region", "COMBINATION is required. See pictal shortcuts set --help.");
    expect(2, "set region ctrl+",
           "\"ctrl+\": no key; write modifiers and one key, such as ctrl+cmd+s");
    expect(2, "unset zoom", "unknown action \"zoom\"" + actions);
    expect(2, "check cmd+r --action ''", "unknown action \"\"" + actions);
    expect(2, "list --store ''", "--store needs the name of a file");
    EXPECT_FALSE(fs::exists(store.parent_path()));
}

TEST_F(ShortcutsCommand, SetsAndUnsets) {
    const std::string used = "⌘4: Finder uses Command+4 for Gallery view.";
    expect(0, "set region ctrl+opt+r", "");
    expect(1, "set window cmd+4", used + " Choose another, or use --force.");
    EXPECT_EQ(stored("window"), "⌃⌘X");
    expect(0, "set window cmd+4 --force", "warning: " + used);
    EXPECT_EQ(stored("window"), "⌘4");

    expect(0, "set scrolling ctrl+cmd+x", "");
    expect(0, "unset window", "warning: ⌃⌘X: Already used by scrolling.");
    EXPECT_EQ(stored("window"), "⌃⌘X");
    expect(0, "unset scrolling", "");
    EXPECT_EQ(stored("scrolling"), "-");
    EXPECT_EQ(stored("region"), "⌃⌥R");
}

TEST_F(ShortcutsCommand, LeavesWhatItDoesNotUnderstandUntilTheNextChange) {
    ASSERT_TRUE((*SQLiteUserDefaults::open(store))->setObject(key, UserDefaults::Data(1)));
    for (int i = 0; i < 2; ++i)
        expect(1, "check ctrl+cmd+s",
               "warning: " + store.string() +
                   ": the stored shortcuts are damaged; the defaults hold, and the next change "
                   "replaces what is stored");
    EXPECT_EQ(run("set region ctrl+opt+r").status, 0);
    expect(0, "list", "");
}

TEST_F(ShortcutsCommand, SaysWhenTheStoreFails) {
    const std::string noStore = folder / "notes.txt";
    std::ofstream(noStore) << "no database, but long enough to be taken for one if nobody looks";
    for (const char* line : {"list", "check ctrl+opt+r", "set region ctrl+opt+r", "unset region"})
        expect(3, std::string(line) + " --store " + noStore,
               noStore + ": damaged, or no store of user defaults; move it away to start afresh");
}

TEST_F(ShortcutsCommand, ReadsAReadOnlyStoreAndSaysThatItCannotWrite) {
    makeReachable();
    ASSERT_EQ(run("set region ctrl+opt+r").status, 0);
    fs::permissions(store, fs::perms(0444));
    for (const fs::path& path : {store.parent_path(), folder.path()})
        fs::permissions(path, fs::perms(0555));
    EXPECT_NE(run("list", false).output.find("⌃⌥R"), std::string::npos);
    for (const char* line : {"set region ctrl+opt+q", "unset region"})
        expect(3, line, store.string() + ": may not be written; check its permissions", false);
    const std::string missing = folder / "new";
    expect(3, "set region ctrl+opt+q --store " + missing, missing + ": Permission denied", false);
    for (const fs::path& path : {store.parent_path(), folder.path()})
        fs::permissions(path, fs::perms(0755));
}

// 400 processes.
TEST_F(ShortcutsCommand, LargeTwoProcessesLoseNothing) {
    const auto hammer = [&](const std::string& action, const std::string& modifiers) {
        for (int i = 0; i < 200; ++i) {
            const std::string digit = std::to_string(1 + i % 9);
            const auto result = run("set " + action + " " + modifiers + "+" + digit);
            EXPECT_EQ(result.status, 0) << result.error;
            // What was acknowledged is there, whatever the other process does meanwhile.
            EXPECT_TRUE(stored(action).ends_with(digit)) << action << ", round " << i;
        }
    };
    {
        const std::jthread first([&] { hammer("region", "ctrl+opt"); });
        const std::jthread second([&] { hammer("scrolling", "opt+shift"); });
    }
    EXPECT_EQ(stored("region"), "⌃⌥2");  // 1 + 199 % 9
    EXPECT_EQ(stored("scrolling"), "⌥⇧2");
    EXPECT_EQ(stored("window"), "⌃⌘X");
}

}  // namespace
}  // namespace pictal
