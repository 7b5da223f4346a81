#include "pictal/ocr/NumPyHeader.h"

#include <charconv>

namespace pictal::program {

namespace {

/// Reads the text from its start; what is not there is left for the next question.
class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {}

    [[nodiscard]] bool take(std::string_view word) {
        skipSpace();
        if (!rest_.starts_with(word)) return false;
        rest_.remove_prefix(word.size());
        return true;
    }
    [[nodiscard]] std::optional<std::string_view> string() {
        skipSpace();
        if (rest_.empty() || (rest_[0] != '\'' && rest_[0] != '"')) return std::nullopt;
        const std::size_t end = rest_.find(rest_[0], 1);
        if (end == std::string_view::npos) return std::nullopt;
        const std::string_view found = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        return found;
    }
    [[nodiscard]] std::optional<std::int64_t> count() {
        skipSpace();
        std::int64_t value = 0;
        const char* const begin = rest_.data();
        const char* const end = begin + rest_.size();
        const auto [stop, error] = std::from_chars(begin, end, value);
        if (error != std::errc() || value < 0) return std::nullopt;
        rest_ = std::string_view(stop, static_cast<std::size_t>(end - stop));
        return value;
    }
    [[nodiscard]] bool atEnd() {
        skipSpace();
        return rest_.empty();
    }

  private:
    void skipSpace() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size()));
    }

    std::string_view rest_;
};

std::optional<std::vector<std::int64_t>> parsedShape(Reader& reader) {
    std::vector<std::int64_t> shape;
    if (!reader.take("(")) return std::nullopt;
    while (!reader.take(")")) {
        const auto side = reader.count();
        if (!side) return std::nullopt;
        shape.push_back(*side);
        if (reader.take(",")) continue;
        if (!reader.take(")")) return std::nullopt;
        break;
    }
    return shape;
}

}  // namespace

std::optional<NumPyHeader> parsedNumPyHeader(std::string_view text) {
    Reader reader(text);
    std::optional<std::string_view> type;
    std::optional<bool> isFortranOrder;
    std::optional<std::vector<std::int64_t>> shape;
    if (!reader.take("{")) return std::nullopt;
    while (!reader.take("}")) {
        const auto key = reader.string();
        if (!key || !reader.take(":")) return std::nullopt;
        if (*key == "descr" && !type) {
            type = reader.string();
            if (!type) return std::nullopt;
        } else if (*key == "fortran_order" && !isFortranOrder) {
            isFortranOrder = reader.take("True");
            if (!*isFortranOrder && !reader.take("False")) return std::nullopt;
        } else if (*key == "shape" && !shape) {
            shape = parsedShape(reader);
            if (!shape) return std::nullopt;
        } else {
            return std::nullopt;
        }
        if (reader.take(",")) continue;
        if (!reader.take("}")) return std::nullopt;
        break;
    }
    if (!reader.atEnd() || !type || !isFortranOrder || !shape) return std::nullopt;
    return NumPyHeader{std::string(*type), *isFortranOrder, *std::move(shape)};
}

}  // namespace pictal::program
