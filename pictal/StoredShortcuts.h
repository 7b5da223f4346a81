#pragma once

#include "PictalCore/Platform/Foundation/SQLiteUserDefaults.h"
#include "PictalCore/Shortcuts/ShortcutStore.h"
#include "pictal/Outcome.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace pictal::program {

/// The file of the user's shortcuts, for the commands: every failure is told, none is passed over.
class StoredShortcuts {
  public:
    /// @param chosen  the file that was asked for, if any
    [[nodiscard]] static std::expected<std::filesystem::path, Failure> path(
        const std::optional<std::string>& chosen);
    /// Warns when what is stored is damaged.
    [[nodiscard]] static std::expected<StoredShortcuts, Failure> open(
        const std::optional<std::string>& chosen);

    [[nodiscard]] std::expected<ShortcutAssignment, Failure> load() const;

    /// Loads, lets `change` change the shortcuts, and saves them unless it fails. Nobody else
    /// writes in between, so that two programs never undo each other's changes.
    [[nodiscard]] Outcome update(const std::function<Outcome(ShortcutAssignment&)>& change) const;

  private:
    explicit StoredShortcuts(std::shared_ptr<SQLiteUserDefaults> userDefaults);

    std::shared_ptr<SQLiteUserDefaults> userDefaults_;
    ShortcutStore store_;
};

}  // namespace pictal::program
