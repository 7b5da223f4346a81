#include "pictal/ocr/BoxesJSON.h"

#include "pictal/InputFile.h"
#include "pictal/ocr/TextLines.h"

#include <array>
#include <cmath>
#include <optional>

#include <fmt/format.h>

namespace pictal::program {

using nlohmann::json;
using nlohmann::ordered_json;

namespace {

constexpr std::uint64_t largestFile = std::uint64_t{64} << 20;

std::optional<PaddleOCRDetectionBox> boxOf(const json& entry) {
    const auto sides = entry.is_object() ? entry.find("box") : entry.end();
    if (!entry.is_object() || sides == entry.end() || !sides->is_array() || sides->size() != 4)
        return std::nullopt;
    std::array<float, 4> side{};
    for (std::size_t i = 0; i < side.size(); ++i) {
        if (!(*sides)[i].is_number()) return std::nullopt;
        side[i] = (*sides)[i].get<float>();
        if (!std::isfinite(side[i])) return std::nullopt;
    }
    const auto [left, top, right, bottom] = side;
    PaddleOCRDetectionBox box{{{left, top}, {right, top}, {right, bottom}, {left, bottom}}, 0};
    const auto confidence = entry.find("confidence");
    if (confidence != entry.end() && confidence->is_number())
        box.confidence = confidence->get<float>();
    return box;
}

}  // namespace

ordered_json boxJSON(const PaddleOCRDetectionBox& box) {
    return {shortNumber(box.minX()), shortNumber(box.minY()), shortNumber(box.maxX()),
            shortNumber(box.maxY())};
}

std::string documentText(const ordered_json& document) {
    return document.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

std::string boxesJSON(const std::vector<PaddleOCRDetectionBox>& boxes) {
    ordered_json entries = ordered_json::array();
    for (const PaddleOCRDetectionBox& box : boxes)
        entries.push_back({{"box", boxJSON(box)}, {"confidence", shortNumber(box.confidence)}});
    return documentText({{"boxes", entries}});
}

std::expected<std::vector<PaddleOCRDetectionBox>, Failure> readBoxes(const std::string& path) {
    auto file = InputFile::open(path, largestFile);
    if (!file) return std::unexpected(file.error());
    const auto bytes = std::move(*file).all();
    if (!bytes) return std::unexpected(bytes.error());
    const auto* const text = reinterpret_cast<const char*>(bytes->data());
    const json document = json::parse(text, text + bytes->size(), nullptr, false);
    const auto list = document.is_object() ? document.find("boxes") : document.end();
    if (!document.is_object() || list == document.end() || !list->is_array())
        return badInput(fmt::format(
            "{}: has no list of \"boxes\", as \"pictal ocr-boxes\" prints it", inputName(path)));
    std::vector<PaddleOCRDetectionBox> boxes;
    for (const json& entry : *list) {
        const auto box = boxOf(entry);
        if (!box)
            return badInput(fmt::format("{}: box {} is no \"box\" of four numbers", inputName(path),
                                        boxes.size() + 1));
        boxes.push_back(*box);
    }
    return boxes;
}

}  // namespace pictal::program
