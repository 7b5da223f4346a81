#include "Examples/overlay/Recording.h"

#include <cstdint>
#include <optional>
#include <sstream>

using pictal::CGPoint, pictal::CGRect;

namespace {

std::optional<Recording::Event> eventNamed(const std::string& word) {
    if (word == "press") return Recording::Event::press;
    if (word == "move") return Recording::Event::move;
    if (word == "release") return Recording::Event::release;
    return std::nullopt;
}

std::istream& operator>>(std::istream& words, CGRect& rect) {
    return words >> rect.origin.x >> rect.origin.y >> rect.size.width >> rect.size.height;
}

/// Whether the line could be read, to its end.
bool readLine(std::istringstream& words, const std::string& word, Recording& recording) {
    CGRect rect;
    if (word == "display") {
        if (words >> rect) recording.displays.push_back(rect);
    } else if (word == "window") {
        std::uint32_t id = 0;
        if (words >> id >> rect) recording.windows.push_back({id, rect, "", "", 0});
    } else if (const auto event = eventNamed(word)) {
        CGPoint point;
        if (words >> point.x >> point.y) recording.steps.push_back({*event, point});
    } else {
        return false;
    }
    return words && (words >> std::ws).eof();
}

}  // namespace

std::expected<Recording, std::string> Recording::read(std::istream& input) {
    Recording recording;
    std::string line;
    for (int number = 1; std::getline(input, line); ++number) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string word;
        if (words >> word && !readLine(words, word, recording))
            return std::unexpected("line " + std::to_string(number) +
                                   ": expected display, window, press, move or release and its "
                                   "numbers, found: " +
                                   line);
    }
    if (input.bad()) return std::unexpected("it cannot be read");  // a folder opens, and no more
    return recording;
}
