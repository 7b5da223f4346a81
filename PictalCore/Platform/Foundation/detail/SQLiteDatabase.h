#pragma once

#include "PictalCore/Platform/Foundation/UserDefaults.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// The little of SQLite that stored defaults need, with its errors in our terms.
namespace pictal::detail {

/// The file is damaged or of another kind.
[[nodiscard]] UserDefaultsError notUserDefaults(const std::filesystem::path& path);
/// A failure within the transaction has already undone it.
[[nodiscard]] UserDefaultsError abandonedTransaction(const std::filesystem::path& path);
/// What the system answered, as `errno` has it.
[[nodiscard]] UserDefaultsError systemFailure(const std::filesystem::path& path, int code);

class SQLiteStatement;

class SQLiteDatabase {
  public:
    /// Opens a file that is there, for reading only if it cannot be written.
    [[nodiscard]] static std::expected<SQLiteDatabase, UserDefaultsError> open(
        const std::filesystem::path& path, std::chrono::milliseconds busyTimeout);

    /// Runs statements that answer nothing.
    [[nodiscard]] std::expected<void, UserDefaultsError> execute(const char* statements) const;
    /// The same where nobody is left to tell why it failed.
    bool attempt(const char* statements) const noexcept;
    [[nodiscard]] std::expected<SQLiteStatement, UserDefaultsError> prepare(const char* sql) const;
    [[nodiscard]] bool isInTransaction() const;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    /// @throws std::bad_alloc when that is what went wrong
    [[nodiscard]] UserDefaultsError failure(int code) const;

  private:
    struct Closer {
        void operator()(sqlite3* handle) const;
    };
    explicit SQLiteDatabase(std::filesystem::path path) : path_(std::move(path)) {}

    std::filesystem::path path_;
    std::unique_ptr<sqlite3, Closer> handle_;
};

/// A statement in progress. It must not outlive its database, nor what was bound outlive it.
class SQLiteStatement {
  public:
    SQLiteStatement(const SQLiteDatabase& database, sqlite3_stmt* handle)
        : database_(&database), handle_(handle) {}

    /// Parameters count from 1. What cannot be bound makes the next step fail.
    void bind(int parameter, std::string_view text);
    void bind(int parameter, const UserDefaults::Object& object);

    /// @return whether there is a row
    [[nodiscard]] std::expected<bool, UserDefaultsError> step();

    /// The row's columns count from 0.
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] std::string text(int column) const;
    /// Nothing for a value that is neither text nor data.
    [[nodiscard]] std::optional<UserDefaults::Object> object(int column) const;

  private:
    struct Finalizer {
        void operator()(sqlite3_stmt* handle) const;
    };

    const SQLiteDatabase* database_;
    std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
    int bindingFailure_ = 0;
};

}  // namespace pictal::detail
