#include "PictalCore/Platform/Foundation/FileError.h"

namespace pictal {

std::string FileError::description() const {
    return path.string() + ": " + code.message();
}

}  // namespace pictal
