#include "PictalCore/Platform/ImageIO/detail/FileFormats.h"

#include "PictalCore/Platform/ImageIO/PNG.h"

#include <algorithm>
#include <array>

namespace pictal::detail {

using namespace std::literals;

namespace {

/// The bytes that a format has at an offset of its files.
struct Signature {
    std::string_view format;
    std::size_t offset;
    std::string_view bytes;
};

constexpr std::array signatures{
    Signature{"JPEG", 0, "\xFF\xD8\xFF"sv},
    Signature{"GIF", 0, "GIF8"sv},
    Signature{"WebP", 8, "WEBP"sv},
    Signature{"BMP", 0, "BM"sv},
    Signature{"TIFF", 0, "II*\0"sv},
    Signature{"TIFF", 0, "MM\0*"sv},
    Signature{"HEIC", 4, "ftyphei"sv},
    Signature{"HEIC", 4, "ftypmif1"sv},
    Signature{"AVIF", 4, "ftypavif"sv},
    Signature{"JPEG XL", 0, "\xFF\x0A"sv},
    Signature{"JPEG XL", 4, "JXL \r\n\x87\n"sv},
    Signature{"PDF", 0, "%PDF"sv},
    Signature{"SVG", 0, "<svg"sv},
    Signature{"ICO", 0, "\0\0\1\0"sv},
};
static_assert(std::ranges::all_of(signatures, [](const Signature& it) {
    return it.offset + it.bytes.size() <= PNG::recognitionSize;
}));

}  // namespace

bool startsAs(std::span<const std::byte> bytes, std::string_view signature) {
    const std::size_t length = std::min(bytes.size(), signature.size());
    return std::ranges::equal(bytes.first(length),
                              std::as_bytes(std::span(signature.substr(0, length))));
}

std::string whyNotPNG(std::span<const std::byte> bytes) {
    if (bytes.empty()) return "the file is empty";
    for (const Signature& signature : signatures) {
        const std::size_t end = signature.offset + signature.bytes.size();
        if (bytes.size() >= end && startsAs(bytes.subspan(signature.offset), signature.bytes))
            return "the content is " + std::string(signature.format) +
                   ", not PNG; convert it first";
    }
    return "the content is not PNG";
}

}  // namespace pictal::detail
