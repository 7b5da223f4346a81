#include "PictalCore/Platform/Foundation/UUID.h"

#include <random>

namespace pictal {

std::string randomUUID() {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::random_device random;
    // "x" is any digit, "y" one of 8, 9, A and B; the 4 is the version.
    std::string text = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
    for (char& c : text) {
        if (c == 'x') c = digits[random() & 0xF];
        if (c == 'y') c = digits[0x8 | (random() & 0x3)];
    }
    return text;
}

}  // namespace pictal
