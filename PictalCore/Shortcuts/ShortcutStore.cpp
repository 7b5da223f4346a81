#include "PictalCore/Shortcuts/ShortcutStore.h"

#include "PictalCore/Shortcuts/detail/LegacyShortcuts.h"

#include <span>
#include <utility>

namespace pictal {

namespace {

std::expected<ShortcutAssignment, DecodingError> decoded(const UserDefaults::Data& data) {
    return decodeJSON<ShortcutAssignment>(
        {reinterpret_cast<const char*>(data.data()), data.size()});
}

UserDefaults::Data bytesOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

/// Copies the entries of the supported actions, in place of those that are there.
void copySupported(const ShortcutAssignment& from, ShortcutAssignment& to) {
    for (const std::string_view actionID : ShortcutStore::supportedActionIDs)
        if (const auto entry = from.find(actionID); entry != from.end())
            to.insert_or_assign(entry->first, entry->second);
}

}  // namespace

const ShortcutAssignment& ShortcutStore::defaultShortcuts() {
    static const ShortcutAssignment shortcuts{
        {std::string(ShortcutActionID::region), Shortcut::defaultRegionCapture()},
        {std::string(ShortcutActionID::window), Shortcut::defaultWindowCapture()},
        {std::string(ShortcutActionID::fullDisplay), Shortcut::defaultFullDisplayCapture()},
        {std::string(ShortcutActionID::colorPicker), Shortcut::defaultColorPicker()}};
    return shortcuts;
}

ShortcutStore::ShortcutStore(std::shared_ptr<UserDefaults> userDefaults, std::string storageKey,
                             ShortcutAssignment defaults)
    : userDefaults_(std::move(userDefaults)),
      storageKey_(std::move(storageKey)),
      defaults_(std::move(defaults)) {}

ShortcutAssignment ShortcutStore::loadShortcuts() const {
    auto loaded = tryLoadShortcuts();
    if (!loaded) return defaults_;
    return std::move(loaded->shortcuts);
}

std::expected<LoadedShortcuts, UserDefaultsError> ShortcutStore::tryLoadShortcuts() const {
    const auto read = userDefaults_->data(storageKey_);
    if (!read) return std::unexpected(read.error());
    const std::optional<UserDefaults::Data>& data = *read;
    if (!data) return carriedOver();
    const auto stored = decoded(*data);
    if (!stored) return LoadedShortcuts{defaults_, stored.error()};
    return LoadedShortcuts{overDefaults(*stored)};
}

std::expected<LoadedShortcuts, UserDefaultsError> ShortcutStore::carriedOver() const {
    if (storageKey_ != defaultStorageKey) return LoadedShortcuts{defaults_};
    for (const detail::LegacyShortcuts& legacy : detail::legacyShortcuts()) {
        const auto read = userDefaults_->data(legacy.storageKey);
        if (!read) return std::unexpected(read.error());
        const std::optional<UserDefaults::Data>& data = *read;
        if (!data) continue;
        const auto old = decoded(*data);
        if (!old) return LoadedShortcuts{defaults_, old.error()};
        const auto migrated = detail::migratedShortcuts(*old, legacy.defaults, defaults_);
        saveShortcuts(migrated);  // if that fails, the next load tries again
        return LoadedShortcuts{overDefaults(migrated)};
    }
    return LoadedShortcuts{defaults_};
}

ShortcutAssignment ShortcutStore::overDefaults(const ShortcutAssignment& stored) const {
    ShortcutAssignment result = defaults_;
    copySupported(stored, result);
    return result;
}

bool ShortcutStore::saveShortcuts(const ShortcutAssignment& shortcuts) const {
    return trySaveShortcuts(shortcuts).has_value();
}

std::expected<void, UserDefaultsError> ShortcutStore::trySaveShortcuts(
    const ShortcutAssignment& shortcuts) const {
    ShortcutAssignment supported;
    copySupported(shortcuts, supported);
    const auto text = encodeJSON(supported);
    if (!text)
        return std::unexpected(UserDefaultsError{
            UserDefaultsError::Kind::inputOutput, {}, text.error().description()});
    return userDefaults_->setObject(storageKey_, bytesOf(*text));
}

ShortcutAssignment ShortcutStore::updateShortcut(const std::string& actionID,
                                                 const Shortcut& shortcut) const {
    auto loaded = tryLoadShortcuts();
    ShortcutAssignment shortcuts = loaded ? loaded->shortcuts : defaults_;
    shortcuts.insert_or_assign(actionID, shortcut);
    if (loaded) saveShortcuts(shortcuts);
    return shortcuts;
}

std::expected<ShortcutAssignment, UserDefaultsError> ShortcutStore::tryUpdateShortcut(
    const std::string& actionID, const Shortcut& shortcut) const {
    auto loaded = tryLoadShortcuts();
    if (!loaded) return std::unexpected(std::move(loaded.error()));
    loaded->shortcuts.insert_or_assign(actionID, shortcut);
    if (auto saved = trySaveShortcuts(loaded->shortcuts); !saved)
        return std::unexpected(std::move(saved.error()));
    return std::move(loaded->shortcuts);
}

}  // namespace pictal
