#include "PictalCore/Platform/Foundation/JSON.h"

namespace pictal {

namespace {

std::string at(const std::vector<std::string>& codingPath, const std::string& reason) {
    std::string place;
    for (const std::string& key : codingPath)
        place += (place.empty() ? "" : ".") + key;
    return place.empty() ? reason : place + ": " + reason;
}

}  // namespace

std::string EncodingError::description() const {
    return at(codingPath, reason);
}

std::string DecodingError::description() const {
    return at(codingPath, reason);
}

}  // namespace pictal
