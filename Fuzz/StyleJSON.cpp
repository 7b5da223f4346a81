// What decodes as a style encodes and decodes to the same.

#include "Fuzz/RoundTrip.h"
#include "PictalCore/Annotation/AnnotationStyle.h"
#include "PictalCore/Styling/ScreenshotStyle.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    pictal::roundTrip<pictal::ScreenshotStyle>(text);
    pictal::roundTrip<pictal::AnnotationStyle>(text);
    return 0;
}
