#include "PictalCore/Platform/Foundation/InMemoryUserDefaults.h"
#include "PictalCore/Shortcuts/ShortcutStore.h"
#include "Tests/Support/ShortcutPrinting.h"

#include <set>
#include <span>

#include <gtest/gtest.h>

namespace pictal {
namespace {

constexpr const char* v4 = "com.orvald.vistrell.shortcuts.v4";
constexpr const char* v3 = "com.orvald.vistrell.shortcuts.v3";
constexpr const char* v2 = "com.orvald.vistrell.shortcuts.v2";
constexpr const char* v1 = "com.orvald.vistrell.shortcuts.v1";
constexpr const char* oldest = "com.orvald.pictal.shortcuts.v1";

/// A value that is `text` as data, or as a string.
UserDefaults::Object asData(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return UserDefaults::Data{bytes.begin(), bytes.end()};
}
UserDefaults::Object asString(std::string text) {
    return text;
}

/// Refuses chosen keys, and writing.
class FailingUserDefaults final : public UserDefaults {
  public:
    InMemoryUserDefaults values;
    std::set<std::string, std::less<>> unreadable;
    bool isReadOnly = false;
    int writes = 0;

    std::expected<std::optional<Object>, UserDefaultsError> object(
        std::string_view key) const override {
        if (unreadable.contains(key))
            return std::unexpected(UserDefaultsError{UserDefaultsError::Kind::busy, "busy"});
        return values.object(key);
    }
    std::expected<void, UserDefaultsError> setObject(std::string_view key,
                                                     const Object& value) override {
        ++writes;
        if (isReadOnly)
            return std::unexpected(UserDefaultsError{UserDefaultsError::Kind::notPermitted, "no"});
        return values.setObject(key, value);
    }
};

using Values = std::map<std::string, UserDefaults::Object>;

struct Fixture {
    std::shared_ptr<FailingUserDefaults> defaults = std::make_shared<FailingUserDefaults>();
    ShortcutStore store{defaults, v4, ShortcutStore::defaultShortcuts()};

    explicit Fixture(const Values& values = {}) {
        for (const auto& [key, value] : values)
            EXPECT_TRUE(defaults->values.setObject(key, value));
    }
    /// What is stored under the current key, decoded; nothing if there is no data.
    [[nodiscard]] std::optional<ShortcutAssignment> stored() const {
        const auto bytes = *defaults->values.data(v4);
        if (!bytes) return std::nullopt;
        return *decodeJSON<ShortcutAssignment>(
            {reinterpret_cast<const char*>(bytes->data()), bytes->size()});
    }
};

Shortcut shortcut(std::uint16_t keyCode, const char* label, std::int64_t modifiers) {
    return {keyCode, label, ShortcutModifiers(modifiers)};
}

const Shortcut controlCommandS = shortcut(1, "S", 9);
const Shortcut own = shortcut(13, "W", 3);
constexpr const char* ownText = R"({"keyCode":13,"keyLabel":"W","modifiers":3})";

ShortcutAssignment defaultsWith(const ShortcutAssignment& changes) {
    ShortcutAssignment result = changes;
    result.insert({{"region", controlCommandS},
                   {"window", shortcut(7, "X", 9)},
                   {"fullDisplay", shortcut(8, "C", 9)},
                   {"colorPicker", shortcut(11, "B", 9)}});
    return result;
}

TEST(ShortcutStore, ReadsWhatIsStoredOverTheDefaults) {
    const std::string entry = ownText;
    struct Case {
        const char* name;
        UserDefaults::Object stored;
        ShortcutAssignment want;
    };
    for (const Case& c :
         {Case{"an empty object", asData("{}"), defaultsWith({})},
          {"some actions", asData(R"({"region":)" + entry + R"(,"scrolling":)" + entry + "}"),
           defaultsWith({{"region", own}, {"scrolling", own}})},
          {"an unsupported action", asData(R"({"window":)" + entry + R"(,"zoom":)" + entry + "}"),
           defaultsWith({{"window", own}})},
          {"no JSON", asData("?"), defaultsWith({})},
          {"empty data", asData(""), defaultsWith({})},
          {"another type of JSON", asData("[]"), defaultsWith({})},
          {"one bad entry", asData(R"({"region":)" + entry + R"(,"window":{"keyCode":1}})"),
           defaultsWith({})},
          {"a null entry", asData(R"({"region":)" + entry + R"(,"window":null})"),
           defaultsWith({})},
          {"a bad entry of an unsupported action",
           asData(R"({"region":)" + entry + R"(,"zoom":7})"), defaultsWith({})},
          {"a string", asString(R"({"region":)" + entry + "}"), defaultsWith({})}}) {
        Fixture fixture(Values{{v4, c.stored}});
        EXPECT_EQ(fixture.store.loadShortcuts(), c.want) << c.name;
        EXPECT_EQ(fixture.defaults->values.object(v4), c.stored) << c.name;
        EXPECT_EQ(fixture.defaults->writes, 0) << c.name;
    }
}

TEST(ShortcutStore, NothingStoredGivesTheDefaultsAndWritesNothing) {
    const Fixture fixture;
    EXPECT_EQ(fixture.store.loadShortcuts(), defaultsWith({}));
    EXPECT_EQ(fixture.defaults->writes, 0);
}

TEST(ShortcutStore, KeepsDefaultsOfUnsupportedActions) {
    const Fixture fixture;
    const ShortcutStore store(fixture.defaults, v4, {{"zoom", own}});
    EXPECT_TRUE(store.saveShortcuts({{"region", own}, {"other", own}}));
    EXPECT_EQ(fixture.stored(), (ShortcutAssignment{{"region", own}}));
    EXPECT_EQ(store.loadShortcuts(), (ShortcutAssignment{{"region", own}, {"zoom", own}}));
}

TEST(ShortcutStore, CarriesOverWhatEarlierVersionsStored) {
    const std::string v3Defaults = R"({"region":{"keyCode":0,"keyLabel":"A","modifiers":12},
        "window":{"keyCode":13,"keyLabel":"W","modifiers":12},
        "fullDisplay":{"keyCode":3,"keyLabel":"F","modifiers":12},
        "colorPicker":{"keyCode":8,"keyLabel":"C","modifiers":12}})";
    const std::string v2Defaults = R"({"region":{"keyCode":0,"keyLabel":"A","modifiers":5},
        "window":{"keyCode":13,"keyLabel":"W","modifiers":5},
        "fullDisplay":{"keyCode":3,"keyLabel":"F","modifiers":5},
        "colorPicker":{"keyCode":8,"keyLabel":"C","modifiers":5}})";
    const std::string v1Defaults = R"({"region":{"keyCode":21,"keyLabel":"4","modifiers":14},
        "window":{"keyCode":23,"keyLabel":"5","modifiers":14},
        "fullDisplay":{"keyCode":20,"keyLabel":"3","modifiers":14},
        "scrolling":{"keyCode":1,"keyLabel":"S","modifiers":14},
        "colorPicker":{"keyCode":8,"keyLabel":"C","modifiers":14},
        "openMainWindow":{"keyCode":31,"keyLabel":"O","modifiers":14},
        "openRecentCapture":{"keyCode":15,"keyLabel":"R","modifiers":14}})";
    const std::string chosen = std::string(R"({"region":)") + ownText + R"(,"scrolling":)" +
                               ownText + R"(,"zoom":)" + ownText + "}";
    const ShortcutAssignment chosenStored{{"region", own}, {"scrolling", own}};
    const Shortcut otherLabel = shortcut(0, "a", 12);

    struct Case {
        const char* name;
        Values values;
        std::optional<ShortcutAssignment> wantStored;
        ShortcutAssignment want;
    };
    for (const Case& c : {
             Case{"v3 untouched", {{v3, asData(v3Defaults)}}, defaultsWith({}), defaultsWith({})},
             {"v2 untouched", {{v2, asData(v2Defaults)}}, defaultsWith({}), defaultsWith({})},
             {"v1 untouched", {{v1, asData(v1Defaults)}}, defaultsWith({}), defaultsWith({})},
             {"oldest untouched",
              {{oldest, asData(v1Defaults)}},
              defaultsWith({}),
              defaultsWith({})},
             {"v3 chosen", {{v3, asData(chosen)}}, chosenStored, defaultsWith(chosenStored)},
             {"v2 chosen", {{v2, asData(chosen)}}, chosenStored, defaultsWith(chosenStored)},
             {"v1 chosen", {{v1, asData(chosen)}}, chosenStored, defaultsWith(chosenStored)},
             {"oldest chosen",
              {{oldest, asData(chosen)}},
              chosenStored,
              defaultsWith(chosenStored)},
             {"old defaults of another version",
              {{v3, asData(R"({"region":{"keyCode":0,"keyLabel":"A","modifiers":5}})")}},
              ShortcutAssignment{{"region", shortcut(0, "A", 5)}},
              defaultsWith({{"region", shortcut(0, "A", 5)}})},
             {"an old default under another label",
              {{v3, asData(R"({"region":{"keyCode":0,"keyLabel":"a","modifiers":12}})")}},
              ShortcutAssignment{{"region", otherLabel}},
              defaultsWith({{"region", otherLabel}})},
             {"an empty object", {{v3, asData("{}")}}, ShortcutAssignment{}, defaultsWith({})},
             {"undecodable, older data there",
              {{v3, asData("?")}, {v2, asData(chosen)}},
              std::nullopt,
              defaultsWith({})},
             {"empty data, older data there",
              {{v2, asData("")}, {v1, asData(chosen)}},
              std::nullopt,
              defaultsWith({})},
             {"one bad entry",
              {{v1, asData(R"({"zoom":{},"region":)" + std::string(ownText) + "}")}},
              std::nullopt,
              defaultsWith({})},
             {"v2 and v1 there",
              {{v2, asData(v2Defaults)}, {v1, asData(chosen)}, {oldest, asData(chosen)}},
              defaultsWith({}),
              defaultsWith({})},
             {"v1 and the oldest there",
              {{v1, asData(chosen)}, {oldest, asData(v1Defaults)}},
              chosenStored,
              defaultsWith(chosenStored)},
             {"a string under a newer key",
              {{v3, asString(v3Defaults)}, {v2, asData(chosen)}},
              chosenStored,
              defaultsWith(chosenStored)},
             {"a string under the current key",
              {{v4, asString("{}")}, {v3, asData(chosen)}},
              chosenStored,
              defaultsWith(chosenStored)},
             {"current data wins",
              {{v4, asData("{}")}, {v3, asData(chosen)}},
              ShortcutAssignment{},
              defaultsWith({})},
         }) {
        const Fixture fixture(c.values);
        EXPECT_EQ(fixture.store.loadShortcuts(), c.want) << c.name;
        EXPECT_EQ(fixture.stored(), c.wantStored) << c.name;
        for (const auto& [key, value] : c.values) {
            if (key == v4) continue;
            EXPECT_EQ(fixture.defaults->values.object(key), value) << c.name;
        }
        EXPECT_EQ(fixture.store.loadShortcuts(), c.want) << c.name << ", loaded again";
    }
}

TEST(ShortcutStore, OnlyTheDefaultKeyCarriesOver) {
    const Fixture fixture(Values{{v3, asData(R"({"region":)" + std::string(ownText) + "}")}});
    const ShortcutStore other(fixture.defaults, "other", ShortcutStore::defaultShortcuts());
    EXPECT_EQ(other.loadShortcuts(), defaultsWith({}));
    EXPECT_EQ(fixture.defaults->writes, 0);
}

TEST(ShortcutStore, UpdatesOneAction) {
    const Fixture fixture;
    EXPECT_EQ(fixture.store.updateShortcut("scrolling", own), defaultsWith({{"scrolling", own}}));
    EXPECT_EQ(fixture.stored(), defaultsWith({{"scrolling", own}}));
    const Fixture unsupported;
    EXPECT_EQ(unsupported.store.updateShortcut("zoom", own), defaultsWith({{"zoom", own}}));
    EXPECT_EQ(unsupported.stored(), defaultsWith({}));
    const Fixture undecodable(Values{{v4, asData("?")}});
    EXPECT_EQ(undecodable.store.updateShortcut("region", own), defaultsWith({{"region", own}}));
    EXPECT_EQ(undecodable.stored(), defaultsWith({{"region", own}}));
    const Fixture older(Values{{v3, asData(R"({"window":)" + std::string(ownText) + "}")}});
    const ShortcutAssignment both = defaultsWith({{"window", own}, {"scrolling", own}});
    EXPECT_EQ(older.store.updateShortcut("scrolling", own), both);
    EXPECT_EQ(older.stored(), both);
}

TEST(ShortcutStore, WritesNothingAfterAFailedRead) {
    for (const char* key : {v4, v3, v2, v1, oldest}) {
        const Fixture fixture(Values{{oldest, asData("{}")}});
        fixture.defaults->unreadable = {key};
        EXPECT_EQ(fixture.store.loadShortcuts(), defaultsWith({})) << key;
        EXPECT_EQ(fixture.store.updateShortcut("region", own), defaultsWith({{"region", own}}));
        EXPECT_EQ(fixture.defaults->writes, 0) << key;
        EXPECT_EQ(fixture.store.tryLoadShortcuts().error().kind, UserDefaultsError::Kind::busy);
    }
}

TEST(ShortcutStore, SaysWhenItCouldNotWrite) {
    const Fixture fixture(Values{{v3, asData(R"({"region":)" + std::string(ownText) + "}")}});
    fixture.defaults->isReadOnly = true;
    EXPECT_FALSE(fixture.store.saveShortcuts({}));
    EXPECT_EQ(fixture.store.trySaveShortcuts({}).error().description, "no");
    EXPECT_EQ(fixture.store.loadShortcuts(), defaultsWith({{"region", own}}));
    EXPECT_EQ(fixture.stored(), std::nullopt);
}

}  // namespace
}  // namespace pictal
