#pragma once

#include "PictalCore/Export.h"

#include <cstdint>
#include <expected>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace pictal {

struct PaddleOCRDecodedText {
    std::string text;
    /// The mean probability of its characters; 0 when there are none.
    float confidence = 0;

    friend bool operator==(const PaddleOCRDecodedText&, const PaddleOCRDecodedText&) = default;
};

class PICTAL_API PaddleOCRCTCDecoderError {
  public:
    /// Not three numbers above 0 whose product fits a number: the output is of another model.
    struct InvalidOutputShape {
        std::vector<std::int64_t> shape;
        friend bool operator==(const InvalidOutputShape&, const InvalidOutputShape&) = default;
    };
    /// The output does not fill its shape.
    struct OutputElementCountMismatch {
        std::int64_t expected;
        std::int64_t actual;
        friend bool operator==(const OutputElementCountMismatch&,
                               const OutputElementCountMismatch&) = default;
    };
    /// Without characters there is no text.
    struct EmptyDictionary {
        friend bool operator==(EmptyDictionary, EmptyDictionary) = default;
    };

    [[nodiscard]] static PaddleOCRCTCDecoderError invalidOutputShape(
        std::vector<std::int64_t> shape);
    [[nodiscard]] static PaddleOCRCTCDecoderError outputElementCountMismatch(std::int64_t expected,
                                                                             std::int64_t actual);
    [[nodiscard]] static PaddleOCRCTCDecoderError emptyDictionary();

    template <class Case>
    [[nodiscard]] const Case* as() const {
        return std::get_if<Case>(&case_);
    }

    [[nodiscard]] std::string description() const;

    friend bool operator==(const PaddleOCRCTCDecoderError&,
                           const PaddleOCRCTCDecoderError&) = default;

  private:
    using Cases = std::variant<InvalidOutputShape, OutputElementCountMismatch, EmptyDictionary>;
    explicit PaddleOCRCTCDecoderError(Cases value) : case_(std::move(value)) {}

    Cases case_;
};

/// Turns the recogniser's output into text: the best class of each step, repetitions taken once,
/// blanks left out. A character stands twice only when a blank was between.
class PICTAL_API PaddleOCRCTCDecoder {
  public:
    /// @param characterDictionary  the classes after the blank; a space follows them
    [[nodiscard]] static std::expected<PaddleOCRCTCDecoder, PaddleOCRCTCDecoderError> make(
        std::vector<std::string> characterDictionary);

    /// By class: "blank", the dictionary, a space.
    [[nodiscard]] const std::vector<std::string>& characters() const { return characters_; }
    [[nodiscard]] std::int64_t blankIndex() const { return 0; }

    /// @param outputData   probabilities, row-major
    /// @param outputShape  lines, steps, classes
    /// @return a text a line; classes beyond the characters say nothing
    [[nodiscard]] std::expected<std::vector<PaddleOCRDecodedText>, PaddleOCRCTCDecoderError>
    decodeBatch(std::span<const float> outputData, std::span<const std::int64_t> outputShape) const;

    /// The first line alone.
    [[nodiscard]] std::expected<PaddleOCRDecodedText, PaddleOCRCTCDecoderError> decode(
        std::span<const float> outputData, std::span<const std::int64_t> outputShape) const;

  private:
    explicit PaddleOCRCTCDecoder(std::vector<std::string> characters)
        : characters_(std::move(characters)) {}
    [[nodiscard]] PaddleOCRDecodedText decoded(std::span<const float> steps,
                                               std::size_t classes) const;

    std::vector<std::string> characters_;
};

}  // namespace pictal
