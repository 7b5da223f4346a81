#include "PictalCore/Platform/Foundation/detail/UserDefaultsFile.h"

#include "PictalCore/Platform/Foundation/Folders.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace pictal::detail {

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t applicationID = 1348695148;  // "Pctl"; tells our files from others
constexpr const char* createSchema =
    "PRAGMA application_id = 1348695148;"
    "CREATE TABLE user_defaults (key TEXT PRIMARY KEY NOT NULL, value NOT NULL) WITHOUT ROWID";

/// @return whether the table is there; a new file has none yet, a file with anything else in it is
///     an error
std::expected<bool, UserDefaultsError> hasSchema(const SQLiteDatabase& database) {
    // One statement, so that both answers are of one moment.
    auto query = database.prepare(
        "SELECT (SELECT application_id FROM pragma_application_id),"
        " (SELECT count(*) FROM sqlite_schema),"
        " (SELECT count(*) FROM pragma_table_info('user_defaults')"
        "  WHERE name IN ('key', 'value'))");
    if (!query) return std::unexpected(std::move(query.error()));
    if (const auto row = query->step(); !row) return row;
    const bool isOurs = query->integer(0) == applicationID && query->integer(2) == 2;
    const bool isEmpty = query->integer(0) != applicationID && query->integer(1) == 0;
    if (!isOurs && !isEmpty) return std::unexpected(notUserDefaults(database.path()));
    return isOurs;
}

}  // namespace

std::expected<bool, UserDefaultsError> makeUserDefaultsFile(const fs::path& path) {
    if (auto folder = createFolders(path.parent_path()); !folder)
        return std::unexpected(systemFailure(folder.error().path, folder.error().code.value()));
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file >= 0) ::close(file);
    if (file < 0 && errno != EEXIST) return std::unexpected(systemFailure(path, errno));
    return file >= 0;
}

std::expected<SQLiteDatabase, UserDefaultsError> openUserDefaultsFile(
    const fs::path& path, std::chrono::milliseconds busyTimeout) {
    auto database = SQLiteDatabase::open(path, busyTimeout);
    if (!database) return database;
    if (auto set = database->execute("PRAGMA synchronous = EXTRA; PRAGMA trusted_schema = OFF");
        !set)
        return std::unexpected(std::move(set.error()));
    if (auto schema = hasSchema(*database); !schema)
        return std::unexpected(std::move(schema.error()));
    auto check = database->prepare("PRAGMA quick_check(1)");
    if (!check) return std::unexpected(std::move(check.error()));
    if (const auto row = check->step(); !row) return std::unexpected(row.error());
    if (check->text(0) != "ok") return std::unexpected(notUserDefaults(path));
    return database;
}

std::expected<std::optional<UserDefaults::Object>, UserDefaultsError> selectObject(
    const SQLiteDatabase& database, std::string_view key) {
    const auto schema = hasSchema(database);
    if (!schema) return std::unexpected(schema.error());
    if (!*schema) return std::nullopt;
    auto query = database.prepare("SELECT value FROM user_defaults WHERE key = ?");
    if (!query) return std::unexpected(std::move(query.error()));
    query->bind(1, key);
    const auto row = query->step();
    if (!row) return std::unexpected(row.error());
    return *row ? query->object(0) : std::nullopt;
}

std::expected<void, UserDefaultsError> insertObject(const SQLiteDatabase& database,
                                                    std::string_view key,
                                                    const UserDefaults::Object& value) {
    if (!database.isInTransaction()) return std::unexpected(abandonedTransaction(database.path()));
    const auto schema = hasSchema(database);
    if (!schema) return std::unexpected(schema.error());
    if (!*schema)
        if (auto created = database.execute(createSchema); !created) return created;
    auto statement =
        database.prepare("INSERT OR REPLACE INTO user_defaults (key, value) VALUES (?, ?)");
    if (!statement) return std::unexpected(std::move(statement.error()));
    statement->bind(1, key);
    statement->bind(2, value);
    if (const auto done = statement->step(); !done) return std::unexpected(done.error());
    return {};
}

}  // namespace pictal::detail
