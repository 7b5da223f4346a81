// What decodes as a list of annotations, or as one, encodes and decodes to the same.

#include "Fuzz/RoundTrip.h"
#include "PictalCore/Annotation/ScreenshotAnnotation.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    pictal::roundTrip<pictal::ScreenshotAnnotation>(text);
    pictal::roundTrip<std::vector<pictal::ScreenshotAnnotation>>(text);
    return 0;
}
