#include "PictalCore/Platform/Foundation/InMemoryUserDefaults.h"
#include "PictalCore/Shortcuts/ShortcutStore.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/ShortcutPrinting.h"

#include <sstream>

#include <gtest/gtest.h>

namespace pictal {
namespace {

using Error = UserDefaultsError::Kind;

constexpr const char* v4 = "com.orvald.vistrell.shortcuts.v4";
constexpr const char* v3 = "com.orvald.vistrell.shortcuts.v3";
constexpr const char* v2 = "com.orvald.vistrell.shortcuts.v2";
constexpr const char* v1 = "com.orvald.vistrell.shortcuts.v1";
constexpr const char* oldest = "com.orvald.pictal.shortcuts.v1";

UserDefaults::Object asData(std::string_view text) {
    return bytesOf(text);
}
UserDefaults::Object asData(const ShortcutAssignment& shortcuts) {
    return bytesOf(encodeJSON(shortcuts).value());
}

/// Refuses chosen keys, and writing.
class FailingUserDefaults final : public UserDefaults {
  public:
    InMemoryUserDefaults values;
    std::string unreadable;
    bool isReadOnly = false;
    int writes = 0;

    std::expected<std::optional<Object>, UserDefaultsError> object(
        std::string_view key) const override {
        if (key == unreadable) return std::unexpected(UserDefaultsError{Error::busy, {}, "busy"});
        return values.object(key);
    }
    std::expected<void, UserDefaultsError> setObject(std::string_view key,
                                                     const Object& value) override {
        ++writes;
        if (isReadOnly) return std::unexpected(UserDefaultsError{Error::notPermitted, {}, "no"});
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
        return *decodeJSON<ShortcutAssignment>(textOf(*bytes));
    }
};

const Shortcut own{13, "W", ShortcutModifiers(3)};
const std::string ownText = R"({"keyCode":13,"keyLabel":"W","modifiers":3})";

/// "region 1 S" under the modifiers, and so on.
ShortcutAssignment assigned(const char* text, std::int64_t modifiers) {
    ShortcutAssignment result;
    std::istringstream words(text);
    Shortcut each{0, "", ShortcutModifiers(modifiers)};
    for (std::string action; words >> action >> each.keyCode >> each.keyLabel;)
        result.insert({action, each});
    return result;
}

ShortcutAssignment defaultsWith(const ShortcutAssignment& changes) {
    ShortcutAssignment result = changes;
    result.merge(assigned("region 1 S window 7 X fullDisplay 8 C colorPicker 11 B", 9));
    return result;
}

TEST(ShortcutStore, ReadsWhatIsStoredOverTheDefaults) {
    const auto check = [](const std::string& text, const ShortcutAssignment& changes = {},
                          bool isString = false) {
        const auto stored = isString ? UserDefaults::Object(text) : asData(text);
        const Fixture fixture(Values{{v4, stored}});
        EXPECT_EQ(fixture.store.loadShortcuts(), defaultsWith(changes)) << text;
        EXPECT_EQ(fixture.defaults->writes, 0) << text;
    };
    const std::string region = R"({"region":)" + ownText;
    check(
        encodeJSON(ShortcutAssignment{{"region", own}, {"scrolling", own}, {"zoom", own}}).value(),
        {{"region", own}, {"scrolling", own}});
    for (const char* nothing : {"{}", "?", "", "[]"})
        check(nothing);
    for (const char* badEntry :
         {R"(,"window":{"keyCode":1}})", R"(,"window":null})", R"(,"zoom":7})"})
        check(region + badEntry);
    check(region + "}", {}, true);
}

TEST(ShortcutStore, KeepsUnsupportedActionsOnlyAsDefaultsAndOtherKeysApart) {
    const Fixture fixture(Values{{v3, asData({{"window", own}})}});
    const ShortcutStore store(fixture.defaults, "other", {{"zoom", own}});
    EXPECT_EQ(store.loadShortcuts(), (ShortcutAssignment{{"zoom", own}})) << "nothing carried over";
    EXPECT_TRUE(store.saveShortcuts({{"region", own}, {"other", own}}));
    EXPECT_EQ(fixture.defaults->values.data("other"), bytesOf(R"({"region":)" + ownText + "}"));
    EXPECT_EQ(store.loadShortcuts(), (ShortcutAssignment{{"region", own}, {"zoom", own}}));
    EXPECT_EQ(fixture.stored(), std::nullopt);
}

TEST(ShortcutStore, CarriesOverWhatEarlierVersionsStored) {
    const auto check = [](const char* name, const Values& values,
                          const std::optional<ShortcutAssignment>& wantStored,
                          const ShortcutAssignment& changes = {}) {
        const Fixture fixture(values);
        for (int load = 1; load <= 2; ++load) {
            EXPECT_EQ(fixture.store.loadShortcuts(), defaultsWith(changes))
                << name << ", load " << load;
            EXPECT_EQ(fixture.stored(), wantStored) << name << ", load " << load;
        }
        EXPECT_LE(fixture.defaults->writes, 1) << name;
    };
    const auto letters = [](std::int64_t modifiers) {
        return asData(
            assigned("region 0 A window 13 W fullDisplay 3 F colorPicker 8 C", modifiers));
    };
    const auto v1Defaults =
        asData(assigned("region 21 4 window 23 5 fullDisplay 20 3 scrolling 1 S colorPicker 8 C "
                        "openMainWindow 31 O openRecentCapture 15 R",
                        14));
    const auto chosenText = asData({{"region", own}, {"scrolling", own}, {"zoom", own}});
    const ShortcutAssignment chosen{{"region", own}, {"scrolling", own}};
    const auto ofV2 = assigned("region 0 A", 5);
    const auto otherLabel = assigned("region 0 a", 12);

    check("v3 untouched", {{v3, letters(12)}}, defaultsWith({}));
    check("v2 untouched", {{v2, letters(5)}}, defaultsWith({}));
    check("v1 untouched", {{v1, v1Defaults}}, defaultsWith({}));
    check("oldest untouched", {{oldest, v1Defaults}}, defaultsWith({}));
    for (const char* key : {v3, v2, v1, oldest})
        check(key, {{key, chosenText}}, chosen, chosen);
    check("old defaults of another version", {{v3, asData(ofV2)}}, ofV2, ofV2);
    check("an old default's other label", {{v3, asData(otherLabel)}}, otherLabel, otherLabel);
    check("an empty object", {{v3, asData("{}")}}, ShortcutAssignment{});
    check("undecodable, older there", {{v3, asData("?")}, {v2, chosenText}}, std::nullopt);
    check("empty data, older there", {{v2, asData("")}, {v1, chosenText}}, std::nullopt);
    check("v2 and older there", {{v2, letters(5)}, {v1, chosenText}, {oldest, chosenText}},
          defaultsWith({}));
    check("a string under a newer key", {{v3, "{}"}, {v2, chosenText}}, chosen, chosen);
    check("a string under the current key", {{v4, "{}"}, {v3, chosenText}}, chosen, chosen);
    check("current data wins", {{v4, asData("{}")}, {v3, chosenText}}, ShortcutAssignment{});
}

TEST(ShortcutStore, UpdatesOneAction) {
    const auto check = [](const Values& values, const char* action,
                          const ShortcutAssignment& changes, const ShortcutAssignment& stored) {
        const Fixture fixture(values);
        EXPECT_EQ(fixture.store.updateShortcut(action, own), defaultsWith(changes));
        EXPECT_EQ(fixture.stored(), defaultsWith(stored));
    };
    check({}, "scrolling", {{"scrolling", own}}, {{"scrolling", own}});
    check({}, "zoom", {{"zoom", own}}, {});
    check({{v4, asData("?")}}, "region", {{"region", own}}, {{"region", own}});
    const ShortcutAssignment both{{"window", own}, {"scrolling", own}};
    check({{v3, asData({{"window", own}})}}, "scrolling", both, both);
}

TEST(ShortcutStore, WritesNothingAfterAFailedRead) {
    for (const char* key : {v4, v3, v2, v1, oldest}) {
        const Fixture fixture(Values{{oldest, asData("{}")}});
        fixture.defaults->unreadable = key;
        EXPECT_EQ(fixture.store.loadShortcuts(), defaultsWith({})) << key;
        EXPECT_EQ(fixture.store.updateShortcut("region", own), defaultsWith({{"region", own}}));
        EXPECT_EQ(fixture.store.tryUpdateShortcut("region", own).error().kind, Error::busy) << key;
        EXPECT_EQ(fixture.defaults->writes, 0) << key;
        EXPECT_EQ(fixture.store.tryLoadShortcuts().error().kind, Error::busy);
    }
}

TEST(ShortcutStore, SaysWhenItCouldNotWrite) {
    const Fixture fixture(Values{{v3, asData({{"region", own}})}});
    fixture.defaults->isReadOnly = true;
    EXPECT_FALSE(fixture.store.saveShortcuts({}));
    EXPECT_EQ(fixture.store.trySaveShortcuts({}).error().description(), "no");
    EXPECT_EQ(fixture.store.loadShortcuts(), defaultsWith({{"region", own}}));
    EXPECT_EQ(fixture.store.tryUpdateShortcut("window", own).error().description(), "no");
    EXPECT_EQ(fixture.stored(), std::nullopt);
    fixture.defaults->isReadOnly = false;
    const ShortcutAssignment both{{"region", own}, {"window", own}};
    EXPECT_EQ(fixture.store.tryUpdateShortcut("window", own), defaultsWith(both));
    EXPECT_EQ(fixture.stored(), defaultsWith(both));
}

TEST(ShortcutStore, TellsDamageFromAbsence) {
    const Fixture empty;
    EXPECT_EQ(empty.store.tryLoadShortcuts(), LoadedShortcuts{defaultsWith({})});
    EXPECT_EQ(empty.defaults->writes, 0);
    for (const char* key : {v4, v3}) {
        const Fixture fixture(Values{{key, asData(R"({"region":{"keyCode":1}})")}});
        const auto loaded = fixture.store.tryLoadShortcuts().value();
        EXPECT_EQ(loaded.shortcuts, defaultsWith({})) << key;
        ASSERT_TRUE(loaded.damage) << key;
        EXPECT_EQ(loaded.damage->description(), "region: The key \"keyLabel\" is missing.");
    }
    const std::string tail = R"({"region":)" + ownText + "}" + '\0' + "garbage";
    EXPECT_TRUE(Fixture(Values{{v4, asData(tail)}}).store.tryLoadShortcuts()->damage);
}

}  // namespace
}  // namespace pictal
