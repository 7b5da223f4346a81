#include "pictal/StoredShortcuts.h"

#include "pictal/Messages.h"

#include <cstdlib>

namespace pictal::program {

namespace fs = std::filesystem;

namespace {

std::unexpected<Failure> storeFailed(const UserDefaultsError& error) {
    return workFailed(error.description());
}

}  // namespace

std::expected<fs::path, Failure> StoredShortcuts::path(const std::optional<std::string>& chosen) {
    if (chosen && chosen->empty()) return badInput("--store needs the name of a file");
    if (chosen) return *chosen;
    // A relative folder in XDG_CONFIG_HOME does not count.
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config && *config == '/')
        return fs::path(config) / "pictal" / "shortcuts.db";
    if (const char* home = std::getenv("HOME"); home && *home)
        return fs::path(home) / ".config" / "pictal" / "shortcuts.db";
    return badInput("no home folder for the store; set HOME or use --store FILE");
}

StoredShortcuts::StoredShortcuts(std::shared_ptr<SQLiteUserDefaults> userDefaults)
    : userDefaults_(userDefaults),
      store_(std::move(userDefaults), std::string(ShortcutStore::defaultStorageKey),
             ShortcutStore::defaultShortcuts()) {}

std::expected<StoredShortcuts, Failure> StoredShortcuts::open(
    const std::optional<std::string>& chosen) {
    const auto path = StoredShortcuts::path(chosen);
    if (!path) return std::unexpected(path.error());
    auto userDefaults = SQLiteUserDefaults::open(*path);
    if (!userDefaults) return storeFailed(userDefaults.error());
    StoredShortcuts result(*std::move(userDefaults));
    const auto loaded = result.store_.tryLoadShortcuts();
    if (!loaded) return storeFailed(loaded.error());
    if (loaded->damage)
        complain("warning: " + path->string() +
                 ": the stored shortcuts are damaged; the defaults hold, and the next change "
                 "replaces what is stored");
    return result;
}

std::expected<ShortcutAssignment, Failure> StoredShortcuts::load() const {
    auto loaded = store_.tryLoadShortcuts();
    if (!loaded) return storeFailed(loaded.error());
    return std::move(loaded->shortcuts);
}

Outcome StoredShortcuts::update(const std::function<Outcome(ShortcutAssignment&)>& change) const {
    Outcome outcome = ExitStatus::done;
    const auto committed = userDefaults_->transaction([&] {
        auto shortcuts = load();
        outcome = shortcuts ? change(*shortcuts) : std::unexpected(shortcuts.error());
        if (!outcome) return false;
        const auto saved = store_.trySaveShortcuts(*shortcuts);
        if (!saved) outcome = storeFailed(saved.error());
        return saved.has_value();
    });
    if (outcome && !committed) return storeFailed(committed.error());
    return outcome;
}

}  // namespace pictal::program
