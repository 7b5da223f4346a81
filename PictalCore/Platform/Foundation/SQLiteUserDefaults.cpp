#include "PictalCore/Platform/Foundation/SQLiteUserDefaults.h"

#include "PictalCore/Platform/Foundation/detail/SQLiteDatabase.h"

#include <cerrno>
#include <mutex>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pictal {

namespace fs = std::filesystem;

using detail::SQLiteDatabase;
using Result = std::expected<void, UserDefaultsError>;

namespace {

constexpr std::int64_t applicationID = 1348695148;  // "Pctl"; tells our files from others
constexpr const char* createSchema =
    "PRAGMA application_id = 1348695148;"
    "CREATE TABLE user_defaults (key TEXT PRIMARY KEY NOT NULL, value NOT NULL) WITHOUT ROWID";

/// Makes the folder and those above it that are missing, for the owner only.
Result makeFolder(const fs::path& folder) {
    std::error_code ignored;
    if (fs::exists(folder, ignored)) return {};
    if (auto parent = makeFolder(folder.parent_path()); !parent) return parent;
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        return std::unexpected(detail::systemFailure(folder, errno));
    return {};
}

/// Left to itself, SQLite would make a file that others may read.
Result makeFile(const fs::path& path) {
    if (auto folder = makeFolder(path.parent_path()); !folder) return folder;
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file >= 0) ::close(file);
    if (file < 0 && errno != EEXIST) return std::unexpected(detail::systemFailure(path, errno));
    return {};
}

/// @return whether the table is there; a new file has none yet, another program's file is an error
std::expected<bool, UserDefaultsError> hasSchema(const SQLiteDatabase& database) {
    // One statement, so that both answers are of one moment.
    auto query = database.prepare(
        "SELECT (SELECT application_id FROM pragma_application_id),"
        " (SELECT count(*) FROM sqlite_schema)");
    if (!query) return std::unexpected(std::move(query.error()));
    if (const auto row = query->step(); !row) return row;
    const bool isOurs = query->integer(0) == applicationID;
    const bool isEmpty = query->integer(1) == 0;
    if (!isOurs && !isEmpty) return std::unexpected(detail::notUserDefaults(database.path()));
    return isOurs;
}

std::expected<SQLiteDatabase, UserDefaultsError> openSound(const fs::path& path,
                                                           std::chrono::milliseconds busyTimeout) {
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
    if (check->text(0) != "ok") return std::unexpected(detail::notUserDefaults(path));
    return database;
}

/// Takes back what an unfinished transaction wrote.
struct Rollback {
    const SQLiteDatabase& database;
    ~Rollback() {
        if (!database.isInTransaction()) return;
        [[maybe_unused]] const auto result =
            database.execute("ROLLBACK");  // nobody is left to tell
    }
};

Result inTransaction(const SQLiteDatabase& database, const std::function<bool()>& work) {
    if (auto begun = database.execute("BEGIN IMMEDIATE"); !begun) return begun;
    const Rollback rollback{database};
    if (!work()) return {};
    return database.execute("COMMIT");
}

Result insert(const SQLiteDatabase& database, std::string_view key,
              const UserDefaults::Object& value) {
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

}  // namespace

/// What is open of the file: nothing until it is there.
struct SQLiteUserDefaults::Connection {
    fs::path path;
    std::chrono::milliseconds busyTimeout;
    std::optional<SQLiteDatabase> database;
    /// Held throughout a transaction, which is the thread's own, though the connection is shared.
    std::recursive_mutex mutex;

    /// @return null if there is no file
    std::expected<const SQLiteDatabase*, UserDefaultsError> open() {
        if (database) return &*database;
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (status.type() == fs::file_type::not_found) return nullptr;
        if (status.type() == fs::file_type::none)
            return std::unexpected(detail::systemFailure(path, error.value()));
        if (!fs::is_regular_file(status)) return std::unexpected(detail::notUserDefaults(path));

        auto opened = openSound(path, busyTimeout);
        if (!opened) return std::unexpected(std::move(opened.error()));
        return &database.emplace(*std::move(opened));
    }

    std::expected<const SQLiteDatabase*, UserDefaultsError> openOrMake() {
        const auto opened = open();
        if (!opened || *opened) return opened;
        if (auto made = makeFile(path); !made) return std::unexpected(std::move(made.error()));
        return open();
    }
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
    const auto schema = hasSchema(**database);
    if (!schema) return std::unexpected(schema.error());
    if (!*schema) return std::nullopt;
    auto query = (*database)->prepare("SELECT value FROM user_defaults WHERE key = ?");
    if (!query) return std::unexpected(std::move(query.error()));
    query->bind(1, key);
    const auto row = query->step();
    if (!row) return std::unexpected(row.error());
    return *row ? query->object(0) : std::nullopt;
}

std::expected<void, UserDefaultsError> SQLiteUserDefaults::setObject(std::string_view key,
                                                                     const Object& value) {
    const std::lock_guard lock(connection_->mutex);
    const auto database = connection_->openOrMake();
    if (!database) return std::unexpected(database.error());
    if ((*database)->isInTransaction()) return insert(**database, key, value);
    Result inserted;
    const auto committed = inTransaction(**database, [&] {
        inserted = insert(**database, key, value);
        return inserted.has_value();
    });
    return inserted ? committed : inserted;
}

std::expected<void, UserDefaultsError> SQLiteUserDefaults::transaction(
    const std::function<bool()>& work) {
    const std::lock_guard lock(connection_->mutex);
    const auto database = connection_->openOrMake();
    if (!database) return std::unexpected(database.error());
    return inTransaction(**database, work);
}

}  // namespace pictal
