#pragma once

#include "PictalCore/Export.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A persistent store of values under string keys. A value keeps its type: text is never read as
/// data. Reading tells a value that is not there from one that could not be read, so that nobody
/// overwrites what is only out of reach for a moment.
namespace pictal {

struct PICTAL_API UserDefaultsError {
    enum class Kind {
        /// Another process kept the store to itself for too long; try again.
        busy,
        /// The file is damaged, or something else. It was left as it is; move it away to start
        /// afresh.
        corrupt,
        /// The file or its folder may not be read or written; change its permissions.
        notPermitted,
        /// The disk is full or failing; see the reason.
        inputOutput,
        /// A transaction within a transaction, which the caller has to undo.
        nestedTransaction,
    };

    Kind kind = Kind::inputOutput;
    /// The store's file; empty for a store without one.
    std::filesystem::path path;
    /// What happened and what to do.
    std::string reason;

    /// One line for people: "PATH: in use by another process; try again".
    [[nodiscard]] std::string description() const;

    friend bool operator==(const UserDefaultsError&, const UserDefaultsError&) = default;
};

class PICTAL_API UserDefaults {
  public:
    using Data = std::vector<std::byte>;
    using Object = std::variant<std::string, Data>;

    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults();

    /// The value under the key, or nothing.
    [[nodiscard]] virtual std::expected<std::optional<Object>, UserDefaultsError> object(
        std::string_view key) const = 0;

    /// Puts the value under the key, in place of any other. Once it has returned, the value is
    /// there to stay.
    [[nodiscard]] virtual std::expected<void, UserDefaultsError> setObject(std::string_view key,
                                                                           const Object& value) = 0;

    /// The data under the key; nothing also when there is a value of another type.
    [[nodiscard]] std::expected<std::optional<Data>, UserDefaultsError> data(
        std::string_view key) const;
};

}  // namespace pictal
