#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/OCR/PaddleOCRDetectionConfig.h"
#include "PictalCore/OCR/PaddleOCRRecognitionConfig.h"

#include <expected>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace pictal {

class PICTAL_API PaddleOCRModelConfigParserError {
  public:
    /// For callers that need a field; the parser itself has a default for each.
    struct MissingField {
        std::string name;
        friend bool operator==(const MissingField&, const MissingField&) = default;
    };
    /// There is no list of characters, or nothing in it: the text is of another model, or its lines
    /// end in CR LF, which ends no line here.
    struct EmptyCharacterDictionary {
        friend bool operator==(EmptyCharacterDictionary, EmptyCharacterDictionary) = default;
    };

    [[nodiscard]] static PaddleOCRModelConfigParserError missingField(std::string name);
    [[nodiscard]] static PaddleOCRModelConfigParserError emptyCharacterDictionary();

    template <class Case>
    [[nodiscard]] const Case* as() const {
        return std::get_if<Case>(&case_);
    }

    [[nodiscard]] std::string description() const;

    friend bool operator==(const PaddleOCRModelConfigParserError&,
                           const PaddleOCRModelConfigParserError&) = default;

  private:
    using Cases = std::variant<MissingField, EmptyCharacterDictionary>;
    explicit PaddleOCRModelConfigParserError(Cases value) : case_(std::move(value)) {}

    Cases case_;
};

/// Reads the settings of a model out of the configuration text that comes with it.
///
/// This is no YAML parser. A key is the first line that begins with it and a colon, wherever it
/// stands; a list is the lines that begin with a dash below a line of nothing but its key. What is
/// missing or makes no sense has its default. Lines end in LF alone: CR LF is one character of a
/// line.
namespace PaddleOCRModelConfigParser {

/// Never fails: an empty text is a configuration of defaults.
[[nodiscard]] PICTAL_API std::expected<PaddleOCRDetectionConfig, PaddleOCRModelConfigParserError>
parseDetectionConfig(std::string_view text);

[[nodiscard]] PICTAL_API std::expected<PaddleOCRRecognitionConfig, PaddleOCRModelConfigParserError>
parseRecognitionConfig(std::string_view text);

}  // namespace PaddleOCRModelConfigParser

}  // namespace pictal
