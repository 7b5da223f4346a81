#include "PictalCore/Platform/Foundation/detail/SQLiteDatabase.h"

#include <cerrno>
#include <new>
#include <system_error>

#include <sqlite3.h>

namespace pictal::detail {

namespace fs = std::filesystem;

using Kind = UserDefaultsError::Kind;

UserDefaultsError notUserDefaults(const fs::path& path) {
    return {Kind::corrupt, path,
            "damaged, or no store of user defaults; move it away to start afresh"};
}

UserDefaultsError abandonedTransaction(const fs::path& path) {
    return {Kind::inputOutput, path,
            "an earlier failure undid the transaction; nothing of it was written"};
}

UserDefaultsError systemFailure(const fs::path& path, int code) {
    const bool permission = code == EACCES || code == EPERM || code == EROFS;
    return {permission ? Kind::notPermitted : Kind::inputOutput, path,
            std::generic_category().message(code)};
}

void SQLiteDatabase::Closer::operator()(sqlite3* handle) const {
    sqlite3_close(handle);
}

void SQLiteStatement::Finalizer::operator()(sqlite3_stmt* handle) const {
    sqlite3_finalize(handle);
}

std::expected<SQLiteDatabase, UserDefaultsError> SQLiteDatabase::open(
    const fs::path& path, std::chrono::milliseconds busyTimeout) {
    SQLiteDatabase database(path);
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(
        path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE,
        nullptr);
    database.handle_.reset(handle);  // there is one after most failures, too
    if (code != SQLITE_OK) return std::unexpected(database.failure(code));
    sqlite3_busy_timeout(handle, static_cast<int>(busyTimeout.count()));
    return database;
}

std::expected<void, UserDefaultsError> SQLiteDatabase::execute(const char* statements) const {
    const int code = sqlite3_exec(handle_.get(), statements, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) return std::unexpected(failure(code));
    return {};
}

bool SQLiteDatabase::attempt(const char* statements) const noexcept {
    return sqlite3_exec(handle_.get(), statements, nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::expected<SQLiteStatement, UserDefaultsError> SQLiteDatabase::prepare(const char* sql) const {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(handle_.get(), sql, -1, &statement, nullptr);
    if (code != SQLITE_OK) return std::unexpected(failure(code));
    return SQLiteStatement(*this, statement);
}

bool SQLiteDatabase::isInTransaction() const {
    return sqlite3_get_autocommit(handle_.get()) == 0;
}

UserDefaultsError SQLiteDatabase::failure(int code) const {
    const int systemCode = sqlite3_system_errno(handle_.get());
    switch (code & 0xFF) {  // the rest says more precisely where it happened
        case SQLITE_NOMEM:
            throw std::bad_alloc();
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return {Kind::busy, path_, "in use by another process; try again"};
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        case SQLITE_ERROR:  // our statements are sound, so the tables are not
        case SQLITE_CONSTRAINT:
            return notUserDefaults(path_);
        case SQLITE_READONLY:
            if (code == SQLITE_READONLY_DBMOVED)
                return {Kind::busy, path_, "moved or deleted while it was in use; try again"};
            [[fallthrough]];
        case SQLITE_PERM:
            return {Kind::notPermitted, path_, "may not be written; check its permissions"};
        case SQLITE_CANTOPEN:
        case SQLITE_IOERR:
            if (systemCode != 0) return systemFailure(path_, systemCode);
            break;
        default:
            break;
    }
    return {Kind::inputOutput, path_, sqlite3_errstr(code)};
}

void SQLiteStatement::bind(int parameter, std::string_view text) {
    const char* bytes = text.empty() ? "" : text.data();  // a null pointer would bind NULL
    const int code = sqlite3_bind_text64(handle_.get(), parameter, bytes, text.size(),
                                         SQLITE_STATIC, SQLITE_UTF8);
    if (code != SQLITE_OK) bindingFailure_ = code;
}

void SQLiteStatement::bind(int parameter, const UserDefaults::Object& object) {
    if (const auto* text = std::get_if<std::string>(&object))
        return bind(parameter, std::string_view(*text));
    const auto& data = std::get<UserDefaults::Data>(object);
    const void* bytes = data.empty() ? "" : static_cast<const void*>(data.data());
    const int code =
        sqlite3_bind_blob64(handle_.get(), parameter, bytes, data.size(), SQLITE_STATIC);
    if (code != SQLITE_OK) bindingFailure_ = code;
}

std::expected<bool, UserDefaultsError> SQLiteStatement::step() {
    const int code = bindingFailure_ ? bindingFailure_ : sqlite3_step(handle_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) return std::unexpected(database_->failure(code));
    return code == SQLITE_ROW;
}

std::int64_t SQLiteStatement::integer(int column) const {
    return sqlite3_column_int64(handle_.get(), column);
}

std::string SQLiteStatement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(handle_.get(), column));
    if (!bytes) return {};
    return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
}

std::optional<UserDefaults::Object> SQLiteStatement::object(int column) const {
    const int type = sqlite3_column_type(handle_.get(), column);
    if (type == SQLITE_TEXT) return text(column);
    if (type != SQLITE_BLOB) return std::nullopt;
    const auto* bytes = static_cast<const std::byte*>(sqlite3_column_blob(handle_.get(), column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column));
    return UserDefaults::Data(bytes, bytes + size);
}

}  // namespace pictal::detail
