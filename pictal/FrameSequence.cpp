#include "pictal/FrameSequence.h"

#include "PictalCore/Scrolling/ScrollingFrameAnalyzer.h"
#include "pictal/Images.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include <fmt/format.h>

namespace pictal::program {

namespace {

std::uint64_t fingerprintOf(std::span<const std::byte> bytes) {
    std::uint64_t hash = 0xCBF29CE484222325;  // FNV-1a
    for (const std::byte byte : bytes)
        hash = (hash ^ static_cast<std::uint64_t>(byte)) * 0x100000001B3;
    return hash;
}

/// Frames that follow one another.
struct Run {
    struct Member {
        std::size_t frame;
        double position;
    };
    std::vector<Member> members;
    CGImage last;
    std::int64_t header = std::numeric_limits<std::int64_t>::max();
    std::int64_t footer = std::numeric_limits<std::int64_t>::max();

    void begin(std::size_t frame, const CGImage& image) {
        members = {{frame, 0}};
        last = image;
        header = footer = std::numeric_limits<std::int64_t>::max();
    }
};

enum class Fit { follows, repeats, none };

/// Adds the frame to the run if it is the next one.
Fit extend(Run& run, std::size_t frame, const CGImage& image) {
    if (run.members.empty()) return Fit::none;
    const auto measurement = ScrollingFrameAnalyzer().measure(run.last, image);
    if (!measurement) return Fit::none;
    const auto& accepted = measurement->accepted;
    if (!accepted) return Fit::none;
    const CGFloat moved = accepted->y;
    const auto analysis = ScrollingConsensus::classified(accepted);
    if (analysis.as<ScrollingFrameAnalysis::NoReliableMatch>()) return Fit::none;
    if (analysis.as<ScrollingFrameAnalysis::Unchanged>()) return Fit::repeats;
    // Not the rounded offset: at a scale of 1.5 the errors would add up.
    run.members.push_back({frame, run.members.back().position - moved});
    run.last = image;
    run.header = std::min(run.header, measurement->stillRowsAtTop);
    run.footer = std::min(run.footer, measurement->stillRowsAtBottom);
    return Fit::follows;
}

/// Decides frame by frame.
class Matcher {
  public:
    explicit Matcher(std::vector<FramePlace>& frames) : frames_(frames) {}

    void add(std::size_t frame, const CGImage& image) {
        FramePlace& place = frames_[frame];
        if (run_.members.empty()) {
            run_.begin(frame, image);
            return;
        }
        if (image.width() != run_.last.width() || image.height() != run_.last.height()) {
            place.reason = fmt::format("is {} × {} pixels, not {} × {}", image.width(),
                                       image.height(), run_.last.width(), run_.last.height());
            return;
        }
        const Fit fit = extend(run_, frame, image);
        if (fit == Fit::follows) strays_ = {};
        if (fit == Fit::repeats) repeats(place);
        if (fit == Fit::none) stray(frame, image);
    }

    /// @return the run with most frames, the first of those
    Run longest() && {
        if (run_.members.size() > best_.members.size()) best_ = std::move(run_);
        for (FramePlace& place : frames_)
            if (place.reason.empty()) place.reason = "belongs to another run of frames";
        for (const auto& [frame, position] : best_.members)
            frames_[frame].reason.clear();
        return std::move(best_);
    }

  private:
    static void repeats(FramePlace& place) {
        place.isRepetition = true;
        place.reason = "shows what the frame before it shows";
    }

    void stray(std::size_t frame, const CGImage& image) {
        constexpr std::size_t newRun = 3;
        FramePlace& place = frames_[frame];
        const Fit fit = extend(strays_, frame, image);
        if (fit == Fit::repeats) return repeats(place);
        place.reason = "does not match the frames before it";
        if (fit == Fit::none) return strays_.begin(frame, image);
        if (strays_.members.size() < newRun) return;
        for (const auto& member : strays_.members)
            frames_[member.frame].reason.clear();
        if (run_.members.size() > best_.members.size()) best_ = std::move(run_);
        best_.last = {};
        run_ = std::move(strays_);
        strays_ = {};
    }

    std::vector<FramePlace>& frames_;
    Run run_, strays_, best_;
};

FramePlace placeOf(const std::string& path, const FrameFile& file) {
    return {.path = path,
            .position = std::nullopt,
            .reason = {},
            .fingerprint = file.fingerprint,
            .width = file.image.width(),
            .height = file.image.height(),
            .isOpaque = file.image.isOpaque()};
}

}  // namespace

std::expected<FrameFile, Failure> FrameFile::read(const std::string& path) {
    ImageInput input;
    input.path = path;
    const auto bytes = input.readFile();
    if (!bytes) return std::unexpected(bytes.error());
    auto image = input.decode(*bytes);
    if (!image) return std::unexpected(image.error());
    return FrameFile{*std::move(image), fingerprintOf(*bytes)};
}

std::expected<FrameSequence, Failure> FrameSequence::matched(const std::vector<std::string>& paths,
                                                             const std::function<void()>& advance) {
    FrameSequence sequence;
    sequence.frames.reserve(paths.size());
    Matcher matcher(sequence.frames);
    for (const std::string& path : paths) {
        const auto file = FrameFile::read(path);
        if (!file) return std::unexpected(file.error());
        sequence.frames.push_back(placeOf(path, *file));
        matcher.add(sequence.frames.size() - 1, file->image);
        advance();
    }
    const Run run = std::move(matcher).longest();
    for (const auto& [frame, position] : run.members)
        sequence.frames[frame].position = std::llround(position);
    const std::int64_t height = sequence.frames[run.members.front().frame].height;
    if (run.members.size() > 1 && run.header < height - run.footer) {
        sequence.header = run.header;
        sequence.footer = run.footer;
    }
    return sequence;
}

std::expected<FrameSequence, Failure> FrameSequence::placed(
    const std::vector<std::string>& paths, const std::vector<std::int64_t>& positions,
    const std::function<void()>& advance) {
    FrameSequence sequence;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const auto file = FrameFile::read(paths[i]);
        if (!file) return std::unexpected(file.error());
        sequence.frames.push_back(placeOf(paths[i], *file));
        sequence.frames.back().position = positions[i];
        advance();
    }
    return sequence;
}

}  // namespace pictal::program
