#include "pictal/ocr/NumPyFile.h"

#include "pictal/ocr/NumPyHeader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace pictal::program {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view magic = "\x93NUMPY"sv;
constexpr std::size_t preamble = 10;  // magic, version, two bytes of the header's length
/// Real headers are below 200 bytes.
constexpr std::size_t longestHeader = 65'536;

std::string_view textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The header's length, from `bytes` bytes behind the version.
std::size_t lengthAt(std::span<const std::byte> file, std::size_t bytes) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < bytes; ++i)
        length |= std::to_integer<std::size_t>(file[magic.size() + 2 + i]) << 8 * i;
    return length;
}

}  // namespace

std::expected<FloatArray, std::string> parsedNumPyFile(std::span<const std::byte> file) {
    const auto wrong = [](std::string what) { return std::unexpected(std::move(what)); };
    if (!textOf(file).starts_with(magic)) return wrong("is no .npy file; save it by numpy.save");
    if (file.size() < preamble) return wrong("ends within its header");
    const auto version = std::to_integer<int>(file[magic.size()]);
    if (version < 1 || version > 3)
        return wrong("is of a version of .npy files that is not known; save it as version 1");
    const std::size_t lengthBytes = version == 1 ? 2 : 4;
    const std::size_t start = magic.size() + 2 + lengthBytes;
    if (file.size() < start) return wrong("ends within its header");
    const std::size_t length = lengthAt(file, lengthBytes);
    if (length > longestHeader) return wrong("has a header longer than 64 KiB");
    if (file.size() - start < length) return wrong("ends within its header");

    const auto header = parsedNumPyHeader(textOf(file).substr(start, length));
    if (!header) return wrong("has a header that cannot be understood");
    if (header->type != "<f4")
        return wrong("holds values of type " + header->type.substr(0, 20) +
                     " instead of <f4; convert it by .astype('<f4')");
    if (header->isFortranOrder)
        return wrong("is in Fortran order; convert it by numpy.ascontiguousarray");

    std::int64_t count = 1;
    for (const std::int64_t side : header->shape)
        if (__builtin_mul_overflow(count, side, &count))
            return wrong("has a shape that is larger than any file");
    const auto data = file.subspan(start + length);
    const auto values = static_cast<std::uint64_t>(count);
    if (values > data.size() / sizeof(float)) return wrong("ends before its last value");
    if (values * sizeof(float) != data.size()) return wrong("goes on behind its last value");
    FloatArray array{header->shape, std::vector<float>(values)};
    if (values > 0) std::memcpy(array.data.data(), data.data(), data.size());
    return array;
}

std::vector<std::byte> numPyFile(std::span<const std::int64_t> shape, std::span<const float> data) {
    std::string header = "{'descr': '<f4', 'fortran_order': False, 'shape': (";
    for (const std::int64_t side : shape)
        header += std::to_string(side) + ", ";
    header += "), }";
    // The values start at a multiple of 64, and the header ends with a line feed.
    header.resize((preamble + header.size() + 64) / 64 * 64 - preamble, ' ');
    header.back() = '\n';
    const auto length = static_cast<std::uint16_t>(header.size());
    std::string start(magic);
    start += {'\1', '\0', static_cast<char>(length & 255), static_cast<char>(length >> 8)};
    start += header;
    std::vector<std::byte> file(start.size() + data.size_bytes());
    std::memcpy(file.data(), start.data(), start.size());
    std::ranges::copy(std::as_bytes(data),
                      file.begin() + static_cast<std::ptrdiff_t>(start.size()));
    return file;
}

}  // namespace pictal::program
