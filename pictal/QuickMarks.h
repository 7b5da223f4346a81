#pragma once

#include "PictalCore/Annotation/ScreenshotAnnotation.h"
#include "pictal/Program.h"

#include <cstdint>
#include <vector>

namespace pictal::program {

/// Marks that are described on the command line. They are drawn in its order, with the looks that
/// the options before each give.
class QuickMarks {
  public:
    void addTo(CLI::App& command);

    /// @param height  of the picture: the options count y downward from its top, unless they say
    ///                `--y-up`
    [[nodiscard]] std::expected<std::vector<ScreenshotAnnotation>, Failure> marks(
        std::int64_t height) const;

  private:
    const CLI::App* command_ = nullptr;
    bool yUp_ = false;
};

}  // namespace pictal::program
