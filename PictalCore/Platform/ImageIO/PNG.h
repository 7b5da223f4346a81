#pragma once

#include "PictalCore/Export.h"
#include "PictalCore/Platform/Foundation/RawValue.h"
#include "PictalCore/Platform/Graphics/CGImage.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// PNG in and out. Sizes are pixels, the top row is first.
///
/// Every kind of PNG is read and becomes 8-bit RGBA with premultiplied alpha, each component
/// rounded once. What is written decodes, and premultiplies, to the same bytes again.
/// docs/images.md says what happens to colour.
namespace pictal::PNG {

struct ReadLimits {
    /// A larger picture is refused before any memory is taken. 2^28 pixels are 1 GiB.
    std::int64_t maximumPixels = std::int64_t{1} << 28;
};

/// Why bytes could not be read as a picture.
class PICTAL_API ReadError {
  public:
    enum class Kind {
        /// The bytes are no PNG. The description names the format where it is a known one; convert
        /// the picture first.
        notPNG,
        /// The file ends too early, or its data cannot fill the size that it claims. Fetch or save
        /// it again.
        truncated,
        /// A checksum is wrong, or the data breaks the rules of the format. Fetch or save it again.
        corrupt,
        /// More pixels than the limit, or a side over 8,000,000. Raise the limit or scale it down.
        tooLarge,
        /// There is not enough memory for the pixels.
        outOfMemory,
    };

    ReadError(Kind kind, std::string description)
        : kind_(kind), description_(std::move(description)) {}

    [[nodiscard]] Kind kind() const { return kind_; }
    /// One line for people, without the file's name: "the content is JPEG, not PNG; convert it
    /// first".
    [[nodiscard]] const std::string& description() const { return description_; }

    friend bool operator==(const ReadError&, const ReadError&) = default;

  private:
    Kind kind_;
    std::string description_;
};

/// So many first bytes tell what a file is: of them `readInfo` says `notPNG`, and which format it
/// is where it is a known one, or something else.
inline constexpr std::size_t recognitionSize = 16;

/// Whether the bytes begin as every PNG does, with its first eight bytes.
[[nodiscard]] PICTAL_API bool isPNG(std::span<const std::byte> bytes);

/// The file is read to its end: damage behind the last row is an error too.
[[nodiscard]] PICTAL_API std::expected<CGImage, ReadError> read(std::span<const std::byte> bytes,
                                                                const ReadLimits& limits = {});

/// How a file stores its pixels.
enum class ColorType { grey, rgb, palette, greyAlpha, rgba };

/// What a file says before its pixels.
struct Info {
    std::int64_t width = 0;
    std::int64_t height = 0;
    /// Bits of a component, or of a palette index.
    int bitDepth = 0;
    ColorType colorType = ColorType::rgb;
    bool interlaced = false;
    /// Whether the file can hold translucent pixels: an alpha channel or a transparent colour.
    bool hasAlpha = false;
    /// For people: "untagged", "sRGB", "ICC profile Display P3", "gamma 0.55", "cICP 12-13".
    std::string colorSpace;
    /// What the file says about colour that could not be used, so that its colours may be wrong:
    /// "a damaged ICC profile", "cICP with PQ". Empty as a rule.
    std::string unusedColor;
};

/// Reads no pixels, so that a file can be looked at which is too large or damaged further on.
/// @param bytes  a file or its beginning; one that stops before the pixels do is `truncated`, and
///               enough once it holds the first eight bytes of the first IDAT chunk
[[nodiscard]] PICTAL_API std::expected<Info, ReadError> readInfo(std::span<const std::byte> bytes);

enum class Compression {
    /// For a preview or a pipe.
    fast,
    standard,
    /// For a file that is kept for long: slow.
    small,
};

/// Why a picture could not be written.
enum class WriteError {
    /// A side is 0; there is nothing to write.
    emptyImage,
    /// A side is over 8,000,000; no reader of ours takes it back. Write it in parts.
    tooLarge,
    /// There is not enough memory for the work.
    outOfMemory,
    /// A row has another width than the picture, or there are more or fewer of them than it has.
    wrongRow,
    /// The receiver of the file's bytes refused them; it knows why.
    sinkFailed,
};

[[nodiscard]] PICTAL_API std::expected<std::vector<std::byte>, WriteError> write(
    const CGImage& image, Compression compression = Compression::standard);

}  // namespace pictal::PNG

namespace pictal {

template <>
struct RawValues<PNG::ColorType> {
    static constexpr std::array table{
        RawCase{PNG::ColorType::grey, "grey"}, RawCase{PNG::ColorType::rgb, "rgb"},
        RawCase{PNG::ColorType::palette, "palette"},
        RawCase{PNG::ColorType::greyAlpha, "greyAlpha"}, RawCase{PNG::ColorType::rgba, "rgba"}};
};

template <>
struct RawValues<PNG::Compression> {
    static constexpr std::array table{RawCase{PNG::Compression::fast, "fast"},
                                      RawCase{PNG::Compression::standard, "default"},
                                      RawCase{PNG::Compression::small, "small"}};
};

}  // namespace pictal
