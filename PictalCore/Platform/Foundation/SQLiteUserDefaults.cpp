#include "PictalCore/Platform/Foundation/SQLiteUserDefaults.h"

#include "PictalCore/Platform/Foundation/Files.h"
#include "PictalCore/Platform/Foundation/detail/UserDefaultsFile.h"

#include <cerrno>
#include <mutex>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace pictal {

namespace fs = std::filesystem;

using detail::SQLiteDatabase;
using Result = std::expected<void, UserDefaultsError>;

/// What is open of the file: nothing until it is there.
struct SQLiteUserDefaults::Connection {
    const fs::path path;
    const std::chrono::milliseconds busyTimeout;
    /// Held throughout a transaction, which is the thread's own, though the connection is shared.
    std::recursive_mutex mutex;
    std::unique_ptr<SQLiteDatabase> database;
    /// Which file that is; another one may come to its place.
    dev_t device = 0;
    ino_t inode = 0;
    bool isInTransaction = false;

    Connection(fs::path file, std::chrono::milliseconds timeout)
        : path(std::move(file)), busyTimeout(timeout) {}

    /// @return null if there is no file
    std::expected<const SQLiteDatabase*, UserDefaultsError> open() {
        if (isInTransaction) return database.get();
        struct stat status{};
        if (::stat(path.c_str(), &status) != 0) {
            const int error = errno;
            database.reset();
            if (error == ENOENT || error == ENOTDIR) return nullptr;
            return std::unexpected(detail::systemFailure(path, error));
        }
        if (database && status.st_dev == device && status.st_ino == inode) return database.get();
        database.reset();
        if (!S_ISREG(status.st_mode)) return std::unexpected(detail::notUserDefaults(path));

        auto opened = detail::openUserDefaultsFile(path, busyTimeout);
        if (!opened) return std::unexpected(std::move(opened.error()));
        device = status.st_dev;
        inode = status.st_ino;
        database = std::make_unique<SQLiteDatabase>(*std::move(opened));
        return database.get();
    }

    Result transaction(const std::function<bool()>& work) {
        const fs::path file = followingLinks(path);
        bool isNew = false;
        auto opened = open();
        // The file that was made may be gone again.
        for (int attempts = 0; opened && !*opened && attempts < 3; ++attempts) {
            const auto made = detail::makeUserDefaultsFile(file);
            if (!made) return std::unexpected(made.error());
            isNew = *made;
            opened = open();
        }
        if (!opened) return std::unexpected(opened.error());
        if (!*opened) return std::unexpected(detail::systemFailure(file, ENOENT));
        if (auto begun = (*opened)->execute("BEGIN IMMEDIATE"); !begun) return begun;
        const Ending ending{*this, isNew ? file : fs::path()};
        isInTransaction = true;
        if (!work()) return {};
        if (!database->isInTransaction())
            return std::unexpected(detail::abandonedTransaction(path));
        return database->execute("COMMIT");
    }

    /// Whatever ends a transaction, exceptions too: nothing stays half done, and no empty file.
    struct Ending {
        Connection& connection;
        const fs::path newFile;

        ~Ending() {
            connection.isInTransaction = false;
            const SQLiteDatabase& open = *connection.database;
            if (open.isInTransaction()) open.attempt("ROLLBACK");
            struct stat status{};
            if (newFile.empty() || ::stat(newFile.c_str(), &status) != 0 || status.st_size > 0)
                return;
            // With everybody else locked out, who may have begun to use it.
            if (!open.attempt("BEGIN EXCLUSIVE")) return;
            if (::stat(newFile.c_str(), &status) == 0 && status.st_size == 0 &&
                status.st_ino == connection.inode)
                ::unlink(newFile.c_str());
            open.attempt("ROLLBACK");
        }
    };
};

SQLiteUserDefaults::SQLiteUserDefaults(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)) {}

SQLiteUserDefaults::~SQLiteUserDefaults() = default;

std::expected<std::shared_ptr<SQLiteUserDefaults>, UserDefaultsError> SQLiteUserDefaults::open(
    const fs::path& path, std::chrono::milliseconds busyTimeout) {
    // Absolute, so that changing the folder changes nothing, and no name is special to SQLite.
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    if (error) return std::unexpected(detail::systemFailure(path, error.value()));
    auto connection = std::make_unique<Connection>(absolute, busyTimeout);
    if (auto opened = connection->open(); !opened)
        return std::unexpected(std::move(opened.error()));
    return std::shared_ptr<SQLiteUserDefaults>(new SQLiteUserDefaults(std::move(connection)));
}

std::expected<std::optional<UserDefaults::Object>, UserDefaultsError> SQLiteUserDefaults::object(
    std::string_view key) const {
    const std::lock_guard lock(connection_->mutex);
    const auto database = connection_->open();
    if (!database) return std::unexpected(database.error());
    if (!*database) return std::nullopt;
    return detail::selectObject(**database, key);
}

std::expected<void, UserDefaultsError> SQLiteUserDefaults::setObject(std::string_view key,
                                                                     const Object& value) {
    const std::lock_guard lock(connection_->mutex);
    if (connection_->isInTransaction)
        return detail::insertObject(*connection_->database, key, value);
    Result inserted;
    const auto committed = connection_->transaction([&] {
        inserted = detail::insertObject(*connection_->database, key, value);
        return inserted.has_value();
    });
    return inserted ? committed : inserted;
}

std::expected<void, UserDefaultsError> SQLiteUserDefaults::transaction(
    const std::function<bool()>& work) {
    const std::lock_guard lock(connection_->mutex);
    if (connection_->isInTransaction)
        return std::unexpected(UserDefaultsError{
            UserDefaultsError::Kind::nestedTransaction, connection_->path,
            "a transaction is running already, and they do not nest; do all of it in one"});
    return connection_->transaction(work);
}

}  // namespace pictal
