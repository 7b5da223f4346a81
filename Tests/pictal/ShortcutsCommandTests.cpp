#include "PictalCore/Platform/Foundation/SQLiteUserDefaults.h"
#include "PictalCore/Shortcuts/ShortcutStore.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fstream>
#include <thread>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace pictal {
namespace {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;

/// `pictal shortcuts` with a folder of configurations of its own.
class ShortcutsCommand : public testing::Test {
  protected:
    [[nodiscard]] Process::Result run(Arguments arguments, bool asRoot = true) const {
        arguments.insert(arguments.begin(), "shortcuts");
        return Process{.arguments = std::move(arguments),
                       .environment = {{"XDG_CONFIG_HOME", folder.path().string()}},
                       .asRoot = asRoot}
            .run();
    }
    /// The shortcut that `list` shows for the action.
    [[nodiscard]] std::string shown(const std::string& action) const {
        const auto result = run({"list"});
        EXPECT_EQ(result.status, 0) << result.error;
        const std::size_t end = result.output.find('\n', result.output.find(action + " "));
        const std::size_t last = result.output.rfind(' ', end);
        return result.output.substr(last + 1, end - last - 1);
    }

    TemporaryFolder folder;
    fs::path store = folder / "pictal" / "shortcuts.db";
};

TEST_F(ShortcutsCommand, ListsEveryActionAndMakesNothing) {
    const auto result = run({"list"});
    EXPECT_EQ(result.output,
              "region             ⌃⌘S\nwindow             ⌃⌘X\nfullDisplay        ⌃⌘C\n"
              "colorPicker        ⌃⌘B\nscrolling          -\nopenMainWindow     -\n"
              "openRecentCapture  -\n");
    EXPECT_EQ(result.error, "");
    const auto document = nlohmann::json::parse(run({"list", "--json"}).output);
    EXPECT_EQ(document.size(), 4U);
    EXPECT_EQ(document["region"],
              nlohmann::json::parse(R"({"keyCode":1,"keyLabel":"S","modifiers":9})"));
    EXPECT_EQ(run({"path"}).output, store.string() + "\n");
    EXPECT_FALSE(fs::exists(store.parent_path()));
}

TEST_F(ShortcutsCommand, FindsItsPlaceWithoutConfiguration) {
    const auto path = [](const char* config, const char* home) {
        return Process{.arguments = {"shortcuts", "path"},
                       .environment = {{"XDG_CONFIG_HOME", config}, {"HOME", home}}}
            .run();
    };
    EXPECT_EQ(path("", "/h").output, "/h/.config/pictal/shortcuts.db\n");
    EXPECT_EQ(path("relative", "/h").output, "/h/.config/pictal/shortcuts.db\n");
    EXPECT_EQ(path("", "").status, 2);
}

TEST_F(ShortcutsCommand, ChecksACombination) {
    struct Case {
        Arguments arguments;
        int status;
        const char* output;
    };
    for (const Case& c :
         {Case{{"ctrl+opt+r"}, 0, "⌃⌥R is usable\n"},
          Case{{"Ctrl+Cmd+S"}, 1, "⌃⌘S is not usable\nblocking: Already used by region.\n"},
          Case{{"⌃⌘S", "--action", "region"}, 0, "⌃⌘S is usable\n"},
          Case{{"shift+command+4"},
               1,
               "⇧⌘4 is not usable\n"
               "blocking: macOS uses Shift+Command+4 for selection screenshots.\n"},
          Case{{"ctrl+a"},
               0,
               "⌃A is usable\nwarning: Control-only shortcuts often conflict with macOS focus and "
               "accessibility shortcuts.\n"},
          Case{{"a"},
               1,
               "A is not usable\n"
               "blocking: Global shortcuts must include at least one modifier.\n"}}) {
        Arguments arguments = c.arguments;
        arguments.insert(arguments.begin(), "check");
        const auto result = run(arguments);
        EXPECT_EQ(result.status, c.status) << c.arguments[0];
        EXPECT_EQ(result.output, c.output);
        EXPECT_EQ(result.error, "");
    }
    const auto json = run({"check", "cmd+q", "--json"});
    EXPECT_EQ(json.status, 1);
    const auto document = nlohmann::json::parse(json.output);
    EXPECT_EQ(document["isUsable"], false);
    EXPECT_EQ(document["conflicts"][0]["kind"], "reserved");
    EXPECT_EQ(document["shortcut"]["keyCode"], 12);
}

TEST_F(ShortcutsCommand, RefusesWrongUse) {
    const std::string actions =
        "; the actions are region window fullDisplay colorPicker scrolling openMainWindow "
        "openRecentCapture\n";
    struct Case {
        Arguments arguments;
        std::string error;
    };
    for (const Case& c :
         {Case{{}, "A subcommand is required. See pictal shortcuts --help.\n"},
          Case{{"set", "region"}, "COMBINATION is required. See pictal shortcuts set --help.\n"},
          Case{{"check", "hyper+s"},
               "\"hyper+s\": unknown modifier \"hyper\"; the modifiers are control ctrl ⌃ option "
               "opt alt ⌥ shift ⇧ command cmd ⌘\n"},
          Case{{"set", "region", "ctrl+"},
               "\"ctrl+\": no key; write modifiers and one key, such as ctrl+cmd+s\n"},
          Case{{"unset", "zoom"}, "unknown action \"zoom\"" + actions},
          Case{{"check", "cmd+r", "--action", ""}, "unknown action \"\"" + actions},
          Case{{"list", "--store", ""}, "--store needs the name of a file\n"}}) {
        const auto result = run(c.arguments);
        EXPECT_EQ(result.status, 2) << c.error;
        EXPECT_EQ(result.error, "pictal: " + c.error);
        EXPECT_EQ(result.output, "");
    }
    EXPECT_FALSE(fs::exists(store.parent_path()));
}

TEST_F(ShortcutsCommand, SetsAndUnsets) {
    EXPECT_EQ(run({"set", "region", "ctrl+opt+r"}).status, 0);
    EXPECT_EQ(shown("region"), "⌃⌥R");

    const auto refused = run({"set", "window", "cmd+4"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.error,
              "pictal: ⌘4: Finder uses Command+4 for Gallery view. Choose another, or use "
              "--force.\n");
    EXPECT_EQ(shown("window"), "⌃⌘X");
    const auto forced = run({"set", "window", "cmd+4", "--force"});
    EXPECT_EQ(forced.status, 0);
    EXPECT_EQ(forced.error, "pictal: warning: ⌘4: Finder uses Command+4 for Gallery view.\n");
    EXPECT_EQ(shown("window"), "⌘4");

    EXPECT_EQ(run({"set", "scrolling", "ctrl+cmd+x"}).status, 0);
    EXPECT_EQ(run({"unset", "window"}).error, "pictal: warning: ⌃⌘X: Already used by scrolling.\n");
    EXPECT_EQ(shown("window"), "⌃⌘X");
    EXPECT_EQ(run({"unset", "scrolling"}).status, 0);
    EXPECT_EQ(shown("scrolling"), "-");
    EXPECT_EQ(shown("region"), "⌃⌥R");
}

TEST_F(ShortcutsCommand, LeavesWhatItDoesNotUnderstandUntilTheNextChange) {
    ASSERT_TRUE(
        (*SQLiteUserDefaults::open(store))
            ->setObject(ShortcutStore::defaultStorageKey, UserDefaults::Data{std::byte{'?'}}));
    for (int i = 0; i < 2; ++i) {
        const auto result = run({"check", "ctrl+cmd+s"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.error, "pictal: warning: " + store.string() +
                                    ": the stored shortcuts are damaged; the defaults hold, and "
                                    "the next change replaces what is stored\n");
    }
    EXPECT_EQ(run({"set", "region", "ctrl+opt+r"}).status, 0);
    EXPECT_EQ(run({"list"}).error, "");
}

TEST_F(ShortcutsCommand, SaysWhenTheStoreFails) {
    const fs::path noStore = folder / "notes.txt";
    std::ofstream(noStore) << "no database, but long enough to be taken for one if nobody looks";
    for (const Arguments& arguments :
         {Arguments{"list"}, Arguments{"check", "ctrl+opt+r"},
          Arguments{"set", "region", "ctrl+opt+r"}, Arguments{"unset", "region"}}) {
        Arguments all = arguments;
        all.insert(all.end(), {"--store", noStore.string()});
        const auto result = run(all);
        EXPECT_EQ(result.status, 3) << arguments[0];
        EXPECT_EQ(result.error,
                  "pictal: " + noStore.string() +
                      ": damaged, or no store of user defaults; move it away to start afresh\n");
    }
}

TEST_F(ShortcutsCommand, ReadsAReadOnlyStoreAndSaysThatItCannotWrite) {
    ASSERT_EQ(run({"set", "region", "ctrl+opt+r"}).status, 0);
    fs::permissions(store, fs::perms(0444));
    fs::permissions(store.parent_path(), fs::perms(0555));
    fs::permissions(folder.path(), fs::perms(0555));
    EXPECT_NE(run({"list"}, false).output.find("⌃⌥R"), std::string::npos);
    for (const Arguments& arguments :
         {Arguments{"set", "region", "ctrl+opt+q"}, Arguments{"unset", "region"}}) {
        const auto result = run(arguments, false);
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(result.error,
                  "pictal: " + store.string() + ": may not be written; check its permissions\n");
    }
    const std::string missing = (folder / "new").string();
    const auto result = run({"set", "region", "ctrl+opt+q", "--store", missing}, false);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.error, "pictal: " + missing + ": Permission denied\n");
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(store.parent_path(), fs::perms(0755));
}

// 400 processes, each of which waits for the disk.
TEST_F(ShortcutsCommand, LargeTwoProcessesLoseNothing) {
    const auto hammer = [&](const std::string& action, const std::string& modifiers) {
        for (int i = 0; i < 200; ++i) {
            const std::string key = std::to_string(1 + i % 9);
            const auto result = run({"set", action, modifiers + "+" + key});
            EXPECT_EQ(result.status, 0) << result.error;
            // What was acknowledged is there, whatever the other process does meanwhile.
            EXPECT_TRUE(shown(action).ends_with(key)) << action << ", round " << i;
        }
    };
    {
        const std::jthread first([&] { hammer("region", "ctrl+opt"); });
        const std::jthread second([&] { hammer("scrolling", "opt+shift"); });
    }
    EXPECT_EQ(shown("region"), "⌃⌥2");  // 1 + 199 % 9
    EXPECT_EQ(shown("scrolling"), "⌥⇧2");
    EXPECT_EQ(shown("window"), "⌃⌘X");
}

}  // namespace
}  // namespace pictal
