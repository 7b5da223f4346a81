#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/UserDefaults.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>

/// User defaults in one SQLite file, shared safely between threads and processes.
///
/// A missing file is an empty store. The first write makes it, readable by its owner only, and with
/// it the folders that are missing; a link is followed, also one that points to nothing yet. A file
/// that was moved away or deleted is no longer the store, one that came to its place is. What
/// `setObject` reported as written survives the process, and a power failure as far as the disk
/// keeps its promises. Not for use across `fork`.
namespace pictal {

class PICTAL_API SQLiteUserDefaults final : public UserDefaults {
  public:
    /// @param busyTimeout  how long any operation waits for other processes
    /// @return an error when the file is there but cannot be read, is damaged or something else; it
    ///     is left as it is
    [[nodiscard]] static std::expected<std::shared_ptr<SQLiteUserDefaults>, UserDefaultsError> open(
        const std::filesystem::path& path,
        std::chrono::milliseconds busyTimeout = std::chrono::seconds(10));

    ~SQLiteUserDefaults() override;

    [[nodiscard]] std::expected<std::optional<Object>, UserDefaultsError> object(
        std::string_view key) const override;
    [[nodiscard]] std::expected<void, UserDefaultsError> setObject(std::string_view key,
                                                                   const Object& value) override;

    /// Runs `work`, and nobody else writes between its reads and its writes. All that it wrote is
    /// kept if it returns true, nothing if it returns false. Does not nest. Watch what the writes
    /// within return: one that failed does not by itself end the transaction.
    [[nodiscard]] std::expected<void, UserDefaultsError> transaction(
        const std::function<bool()>& work);

  private:
    struct Connection;
    explicit SQLiteUserDefaults(std::unique_ptr<Connection> connection);

    std::unique_ptr<Connection> connection_;
};

}  // namespace pictal
