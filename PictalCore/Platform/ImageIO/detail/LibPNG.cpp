#include "PictalCore/Platform/ImageIO/detail/LibPNG.h"

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <memory>

#include <png.h>

namespace pictal::detail {

using PNG::ReadError;

namespace {

/// One reading. libpng leaves a failed call by a jump, so each call stands in a function of its own
/// below that holds nothing to clean up.
struct Session {
    explicit Session(std::span<const std::byte> bytes) : rest(bytes) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { png_destroy_read_struct(&png, &info, nullptr); }

    std::span<const std::byte> rest;
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::array<char, 96> message{};
};

[[noreturn]] void onError(png_structp png, png_const_charp message) {
    auto* const session = static_cast<Session*>(png_get_error_ptr(png));
    std::strncpy(session->message.data(), message, session->message.size() - 1);
    png_longjmp(png, 1);
}

/// Of the faults that libpng tolerates, one in the pixels' stream is damage: a wrong checksum of
/// the stream is told no other way. Surplus data behind the last row harms nothing.
void onWarning(png_structp png, png_const_charp message) {
    const std::string_view text(message);
    if (text.starts_with("IDAT:") && text != "IDAT: Extra compressed data" &&
        text != "IDAT: Too much image data")
        png_error(png, message);
}

void giveBytes(png_structp png, png_bytep to, std::size_t count) {
    auto* const session = static_cast<Session*>(png_get_io_ptr(png));
    if (session->rest.size() < count) png_error(png, "the file ends too early");
    std::memcpy(to, session->rest.data(), count);
    session->rest = session->rest.subspan(count);
}

constexpr std::uint8_t skippedChunks[] =
    "bKGD\0cHRM\0eXIf\0gAMA\0hIST\0iCCP\0iTXt\0oFFs\0pCAL\0pHYs\0sBIT\0sCAL\0sPLT\0sRGB\0sTER\0tEXt"
    "\0"
    "tIME\0zTXt";

bool begin(Session& session) {
    if (setjmp(png_jmpbuf(session.png))) return false;
    png_set_user_limits(session.png, maximumSide, maximumSide);
    // Chunks that say nothing about the stored pixels are skipped unread, however large.
    png_set_keep_unknown_chunks(session.png, PNG_HANDLE_CHUNK_NEVER, skippedChunks,
                                sizeof skippedChunks / 5);
    png_set_chunk_malloc_max(session.png, 0);
    png_set_read_fn(session.png, &session, giveBytes);
    png_read_info(session.png, session.info);
    png_start_read_image(session.png);
    return true;
}

bool readRow(Session& session, std::uint8_t* row) {
    if (setjmp(png_jmpbuf(session.png))) return false;
    png_read_row(session.png, row, nullptr);
    return true;
}

bool finish(Session& session) {
    if (setjmp(png_jmpbuf(session.png))) return false;
    png_read_end(session.png, session.info);
    return true;
}

std::unexpected<ReadError> failure(const Session& session) {
    return std::unexpected(ReadError(
        ReadError::Kind::corrupt,
        std::string("the PNG is damaged: ") + session.message.data() + "; get the file again"));
}

}  // namespace

std::expected<void, ReadError> readWithLibPNG(std::span<const std::byte> bytes,
                                              const PNGHeader& header, const PNGRowReader& rows,
                                              PixelBuffer& pixels) {
    Session session(bytes);
    session.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &session, onError, onWarning);
    if (session.png) session.info = png_create_info_struct(session.png);
    const std::unique_ptr<std::uint8_t[]> stored(new (std::nothrow)
                                                     std::uint8_t[header.rowBytes(header.width)]);
    if (!session.info || !stored)
        return std::unexpected(ReadError(ReadError::Kind::outOfMemory, "not enough memory"));

    if (!begin(session)) return failure(session);
    std::vector<std::uint32_t> sparse;
    for (const PNGPass& pass : passesOf(header)) {
        const std::int64_t columns = pass.columns(header.width);
        if (columns == 0) continue;
        for (std::int64_t j = 0; j < pass.rows(header.height); ++j) {
            if (!readRow(session, stored.get())) return failure(session);
            const std::span<std::uint32_t> row = pixels.row(pass.y0 + j * pass.dy);
            if (pass.dx == 1) {
                rows.convert(stored.get(), row);
                continue;
            }
            sparse.resize(static_cast<std::size_t>(columns));
            rows.convert(stored.get(), sparse);
            for (std::size_t i = 0; i < sparse.size(); ++i)
                row[static_cast<std::size_t>(pass.x0) + i * static_cast<std::size_t>(pass.dx)] =
                    sparse[i];
        }
    }
    if (!finish(session)) return failure(session);
    return {};
}

}  // namespace pictal::detail
