#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/UserDefaults.h"
#include "PictalCore/Shortcuts/Shortcut.h"
#include "PictalCore/Shortcuts/ShortcutActionID.h"

#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Keeps the user's shortcuts, as JSON under one key of the user defaults.
///
/// Actions that the user never changed have their default, data that does not decode counts as no
/// data, and what earlier versions stored under older keys is carried over once. Nothing is written
/// after a failed read, so that no choice is lost that is only out of reach for a moment.
///
/// No operation locks: two updates at the same time can lose one of them. Where that can happen,
/// run them in a transaction of the user defaults.
namespace pictal {

/// The shortcuts in force.
struct PICTAL_API LoadedShortcuts {
    ShortcutAssignment shortcuts;
    /// What is wrong with the stored data, where it does not decode: then the defaults are in
    /// force, and the next change replaces it.
    std::optional<DecodingError> damage = std::nullopt;

    friend bool operator==(const LoadedShortcuts&, const LoadedShortcuts&) = default;
};

class PICTAL_API ShortcutStore {
  public:
    static constexpr std::string_view defaultStorageKey = "com.orvald.vistrell.shortcuts.v4";
    static constexpr std::string_view legacyStorageKey = "com.orvald.pictal.shortcuts.v1";
    /// Only these are ever stored.
    static constexpr auto supportedActionIDs = ShortcutActionID::all;
    /// Of the four captures; the other actions have none.
    [[nodiscard]] static const ShortcutAssignment& defaultShortcuts();

    /// @param userDefaults  never null
    /// @param storageKey  older data is carried over only if this is `defaultStorageKey`
    ShortcutStore(std::shared_ptr<UserDefaults> userDefaults, std::string storageKey,
                  ShortcutAssignment defaults);

    [[nodiscard]] const std::shared_ptr<UserDefaults>& userDefaults() const {
        return userDefaults_;
    }
    [[nodiscard]] const std::string& storageKey() const { return storageKey_; }
    [[nodiscard]] const ShortcutAssignment& defaults() const { return defaults_; }

    /// The stored shortcuts over the defaults; the defaults when there are none, when they do not
    /// decode and when reading failed. Writes only what it carries over from an older version.
    [[nodiscard]] ShortcutAssignment loadShortcuts() const;
    /// The same, except that a failed read is an error, and damage is told.
    [[nodiscard]] std::expected<LoadedShortcuts, UserDefaultsError> tryLoadShortcuts() const;

    /// Stores the shortcuts of the supported actions, and no others.
    /// @return whether they were written, which may be passed over
    // NOLINTNEXTLINE(modernize-use-nodiscard)
    bool saveShortcuts(const ShortcutAssignment& shortcuts) const;
    /// The same, with the reason.
    [[nodiscard]] std::expected<void, UserDefaultsError> trySaveShortcuts(
        const ShortcutAssignment& shortcuts) const;

    /// Loads, assigns and saves.
    /// @return the shortcuts with the new one among them, whether or not it could be stored
    // NOLINTNEXTLINE(modernize-use-nodiscard)
    ShortcutAssignment updateShortcut(const std::string& actionID, const Shortcut& shortcut) const;
    /// The same, except that it is an error when the shortcut could not be stored. For a
    /// transaction, which must not report success then.
    [[nodiscard]] std::expected<ShortcutAssignment, UserDefaultsError> tryUpdateShortcut(
        const std::string& actionID, const Shortcut& shortcut) const;

  private:
    [[nodiscard]] std::expected<LoadedShortcuts, UserDefaultsError> carriedOver() const;
    [[nodiscard]] ShortcutAssignment overDefaults(const ShortcutAssignment& stored) const;

    std::shared_ptr<UserDefaults> userDefaults_;
    std::string storageKey_;
    ShortcutAssignment defaults_;
};

}  // namespace pictal
