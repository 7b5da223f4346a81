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
    return tryLoadShortcuts().value_or(defaults_);
}

std::expected<ShortcutAssignment, UserDefaultsError> ShortcutStore::tryLoadShortcuts() const {
    const auto read = userDefaults_->data(storageKey_);
    if (!read) return std::unexpected(read.error());
    const std::optional<UserDefaults::Data>& data = *read;
    if (!data) return carriedOver();
    const auto stored = decoded(*data);
    return stored ? overDefaults(*stored) : defaults_;
}

std::expected<ShortcutAssignment, UserDefaultsError> ShortcutStore::carriedOver() const {
    if (storageKey_ != defaultStorageKey) return defaults_;
    for (const detail::LegacyShortcuts& legacy : detail::legacyShortcuts()) {
        const auto read = userDefaults_->data(legacy.storageKey);
        if (!read) return std::unexpected(read.error());
        const std::optional<UserDefaults::Data>& data = *read;
        if (!data) continue;
        const auto old = decoded(*data);
        if (!old) return defaults_;
        const auto migrated = detail::migratedShortcuts(*old, legacy.defaults, defaults_);
        saveShortcuts(migrated);  // if that fails, the next load tries again
        return overDefaults(migrated);
    }
    return defaults_;
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
    const auto loaded = tryLoadShortcuts();
    ShortcutAssignment shortcuts = loaded.value_or(defaults_);
    shortcuts.insert_or_assign(actionID, shortcut);
    if (loaded) saveShortcuts(shortcuts);
    return shortcuts;
}

}  // namespace pictal
