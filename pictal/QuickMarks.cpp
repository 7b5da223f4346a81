#include "pictal/QuickMarks.h"

#include "PictalCore/Annotation/AnnotationDraftBuilder.h"
#include "pictal/Arguments.h"
#include "pictal/MarkStyle.h"

#include <algorithm>
#include <array>
#include <optional>

namespace pictal::program {

namespace {

using Tool = AnnotationTool;
using Step = std::expected<void, Failure>;

class MarkReader;

/// What an option adds, and how its value is read.
struct MarkOption {
    const char* name;
    const char* type;
    const char* help;
    Tool tool;
    Step (MarkReader::*read)(Tool tool, const std::string& value);
};

/// Reads the options one after another.
class MarkReader {
  public:
    MarkReader(CGFloat height, bool yUp) : height_(height), yUp_(yUp) {}

    Step option(const std::string& name, const std::string& value);
    /// After the last option.
    std::expected<std::vector<ScreenshotAnnotation>, Failure> marks();

    Step rectangle(Tool tool, const std::string& value) {
        const auto rect = parseRect(value);
        if (!rect) return std::unexpected(rect.error());
        const CGPoint end{rect->origin.x + rect->size.width, rect->origin.y + rect->size.height};
        return add(tool, {.start = rect->origin, .current = end});
    }
    Step line(Tool tool, const std::string& value) {
        const auto line = parseLine(value);
        if (!line) return std::unexpected(line.error());
        return add(tool, {.start = line->first, .current = line->second});
    }
    Step smear(Tool tool, const std::string& value);
    Step text(Tool tool, const std::string& value) {
        waiting_ = {tool, {.text = value}};
        return {};
    }
    Step number(Tool tool, const std::string& value) {
        const auto number = parseWholeNumber(value);
        if (!number) return std::unexpected(number.error());
        waiting_ = {tool, {.number = *number}};
        return {};
    }

  private:
    struct Gesture {
        // g++ asks for what clang-tidy calls redundant, wherever some of these are named.
        // NOLINTBEGIN(readability-redundant-member-init)
        CGPoint start{}, current{};
        std::vector<CGPoint> points{};
        std::string text{};
        // NOLINTEND(readability-redundant-member-init)
        std::int64_t number = 0;
    };
    struct Waiting {
        Tool tool;
        Gesture gesture;
    };

    [[nodiscard]] CGPoint placed(CGPoint point) const {
        return yUp_ ? point : CGPoint{point.x, height_ - point.y};
    }
    Step at(const std::string& value);
    Step add(Tool tool, const Gesture& gesture);
    Step add(Tool tool, const Gesture& gesture, const AnnotationStyle& style);

    CGFloat height_;
    bool yUp_;
    MarkStyle style_;
    /// A text or a number that has no place yet.
    std::optional<Waiting> waiting_;
    std::vector<ScreenshotAnnotation> marks_;
};

constexpr std::array markOptions{
    MarkOption{"--rectangle", "X,Y,W,H", "A rectangle", Tool::rectangle, &MarkReader::rectangle},
    MarkOption{"--ellipse", "X,Y,W,H", "An ellipse", Tool::ellipse, &MarkReader::rectangle},
    MarkOption{"--highlight", "X,Y,W,H", "A highlight", Tool::highlight, &MarkReader::rectangle},
    MarkOption{"--arrow", "X1,Y1,X2,Y2", "An arrow to the second point", Tool::arrow,
               &MarkReader::line},
    MarkOption{"--line", "X1,Y1,X2,Y2", "A line", Tool::line, &MarkReader::line},
    MarkOption{"--text", "TEXT", "A line of text; --at says where", Tool::text, &MarkReader::text},
    MarkOption{"--number", "N", "A badge with a number; --at says where", Tool::number,
               &MarkReader::number},
    MarkOption{"--mosaic", "X,Y,W,H", "Covers what is there with one colour", Tool::mosaic,
               &MarkReader::rectangle},
    MarkOption{"--smear", "POINTS", "Pixellates along \"X,Y X,Y\", or X,Y,W,H", Tool::mosaic,
               &MarkReader::smear},
};

Step inOption(const std::string& name, Step step) {
    if (step) return step;
    return badInput(name + ": " + step.error().message);
}

Step MarkReader::option(const std::string& name, const std::string& value) {
    if (MarkStyle::takes(name) && !waiting_) return style_.set(name, value);
    if (name == "--at") return inOption(name, at(value));
    const auto* const known = std::ranges::find_if(
        markOptions, [&](const MarkOption& option) { return option.name == name; });
    const bool isOurs = known != markOptions.end() || MarkStyle::takes(name);
    if (isOurs && waiting_) return badInput("--at has to follow --text and --number");
    return isOurs ? inOption(name, (this->*known->read)(known->tool, value)) : Step();
}

std::expected<std::vector<ScreenshotAnnotation>, Failure> MarkReader::marks() {
    if (waiting_) return badInput("--at has to follow --text and --number");
    return std::move(marks_);
}

Step MarkReader::at(const std::string& value) {
    if (!waiting_) return badInput("there is no --text or --number before it");
    const auto point = parsePoint(value);
    if (!point) return std::unexpected(point.error());
    Waiting mark = *waiting_;
    waiting_.reset();
    mark.gesture.start = *point;
    return add(mark.tool, mark.gesture);
}

Step MarkReader::smear(Tool tool, const std::string& value) {
    AnnotationStyle style = style_.of(tool);
    style.mosaicMode = AnnotationMosaicMode::smear;
    if (const auto rect = parseRect(value)) {
        // Builders of gestures smear along paths only.
        const CGPoint low = placed({rect->minX(), yUp_ ? rect->minY() : rect->maxY()});
        marks_.push_back(ScreenshotAnnotation::mosaic(
            CGRect(low.x, low.y, rect->width(), rect->height()).integral(), style));
        return {};
    }
    auto points = parsePoints(value);
    if (!points) return std::unexpected(points.error());
    return add(tool, {.points = *std::move(points)}, style);
}

Step MarkReader::add(Tool tool, const Gesture& gesture) {
    return add(tool, gesture, style_.of(tool));
}

Step MarkReader::add(Tool tool, const Gesture& gesture, const AnnotationStyle& style) {
    std::vector<CGPoint> points = gesture.points;
    for (CGPoint& point : points)
        point = placed(point);
    auto mark =
        AnnotationDraftBuilder::annotation(tool, placed(gesture.start), placed(gesture.current),
                                           points, gesture.text, gesture.number, style);
    if (!mark) return badInput("there is nothing to draw");
    marks_.push_back(*std::move(mark));
    return {};
}

}  // namespace

void QuickMarks::addTo(CLI::App& command) {
    command_ = &command;
    for (const MarkOption& option : markOptions)
        addRepeated(command, option.name, option.help, option.type)->group("Marks");
    addRepeated(command, "--at", "Where a text's upper left or a badge's middle is", "X,Y")
        ->group("Marks");
    MarkStyle::addTo(command);
    command.add_flag("--y-up", yUp_, "Count y upward from the lower left, as files of marks do")
        ->group("Marks");
}

std::expected<std::vector<ScreenshotAnnotation>, Failure> QuickMarks::marks(
    std::int64_t height) const {
    MarkReader reader(static_cast<CGFloat>(height), yUp_);
    const auto done =
        forEachOption(*command_, [&](const std::string& name, const std::string& value) {
            return reader.option(name, value);
        });
    if (!done) return std::unexpected(done.error());
    return reader.marks();
}

}  // namespace pictal::program
