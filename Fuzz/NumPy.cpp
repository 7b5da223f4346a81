// What reads as a .npy file is written and read to the same.

#include "pictal/ocr/NumPyFile.h"

#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pictal::program;
    const auto array = parsedNumPyFile(std::as_bytes(std::span(data, size)));
    if (!array) return 0;
    const auto again = parsedNumPyFile(numPyFile(array->shape, array->data));
    // By bytes, since a NaN is unequal to itself.
    const std::size_t bytes = array->data.size() * sizeof(float);
    if (!again || again->shape != array->shape || again->data.size() != array->data.size() ||
        (bytes > 0 && std::memcmp(again->data.data(), array->data.data(), bytes) != 0))
        std::abort();
    return 0;
}
