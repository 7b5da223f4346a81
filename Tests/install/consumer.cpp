// Does the main job with an installed PictalCore: decodes a picture, annotates it, exports it as a
// card, encodes that, and looks at what came out. Exits with 1 and says why when it is wrong.

#include <array>
#include <cstdint>
#include <cstdio>

#include <PictalCore/PictalCore.h>

using namespace pictal;

namespace {

int failures = 0;

void expect(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "consumer: %s\n", what);
    ++failures;
}

std::uint32_t pixel(const CGImage& image, std::int64_t x, std::int64_t y) {
    return image.row(y)[static_cast<std::size_t>(x)];
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return std::fputs("usage: consumer IN.png OUT.png\n", stderr), 2;
    const auto bytes = readFile(argv[1]);
    const auto picture = bytes ? PNG::read(*bytes) : PNG::read({});
    if (!picture) return std::fputs("consumer: cannot read the picture\n", stderr), 1;

    // There and back through JSON: specialised templates cross the library's border too.
    AnnotationStyle written;
    written.stroke = written.fill = RGBAColor(1, 0, 0, 1);
    const auto style = decodeJSON<AnnotationStyle>(encodeJSON(written).value_or(""));
    if (!style) return std::fputs("consumer: a style does not come back from JSON\n", stderr), 1;
    const std::array marks{ScreenshotAnnotation::rectangle({100, 200, 50, 30}, *style)};
    const auto annotated = AnnotationRenderer().render(*picture, marks);
    if (!annotated) return std::fputs("consumer: cannot annotate\n", stderr), 1;

    const TransparentImageRenderer renderer;
    const auto card = renderer.render(*annotated, ScreenshotStyle::presentationCard);
    const auto png = card ? renderer.pngData(*card) : std::vector<std::byte>();
    if (!png || !writeFileAtomically(argv[2], *png))
        return std::fputs("consumer: cannot export\n", stderr), 1;
    const auto result = PNG::read(readFile(argv[2]).value());
    if (!result) return std::fputs("consumer: cannot read its own result\n", stderr), 1;

    const std::int64_t left = (result->width() - picture->width()) / 2;
    const std::int64_t top = (result->height() - picture->height()) / 2;
    expect(left > 0 && top > 0, "the card has no margin");
    expect(pixel(*result, 0, 0) >> 24 < 8, "the card's corner is not transparent");
    // (125, 215) counts from the lower left corner, rows from the top.
    expect(pixel(*result, left + 125, top + picture->height() - 1 - 215) == 0xFF0000FF,
           "the rectangle is not red");
    std::int64_t changed = 0;
    const std::int64_t above = picture->height() - 235;
    for (std::int64_t y = 100; y < above; ++y)
        for (std::int64_t x = 0; x < picture->width(); ++x)
            changed += pixel(*result, left + x, top + y) != pixel(*picture, x, y);
    expect(changed == 0, "pixels away from the rectangle and the corners have changed");

    InMemoryUserDefaults defaults;
    const UserDefaults& base = defaults;
    expect(dynamic_cast<const InMemoryUserDefaults*>(&base) == &defaults, "a type lost its name");
    return failures == 0 ? 0 : 1;
}
