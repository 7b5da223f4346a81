#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pictal::detail {

/// A configuration text, asked for values by their keys.
class ConfigText {
  public:
    /// @param text  has to outlive this
    explicit ConfigText(std::string_view text);

    [[nodiscard]] std::optional<std::string> string(std::string_view key) const;
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const;
    [[nodiscard]] std::optional<float> number(std::string_view key) const;

    /// Every item of a list; none when there is no such list.
    [[nodiscard]] std::vector<std::string> strings(std::string_view key) const;
    /// The items that are numbers of their kind; nothing when there is none.
    [[nodiscard]] std::optional<std::vector<std::int64_t>> integers(std::string_view key) const;
    [[nodiscard]] std::optional<std::vector<float>> numbers(std::string_view key) const;

  private:
    std::vector<std::string_view> lines_;
};

}  // namespace pictal::detail
