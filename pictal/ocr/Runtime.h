#pragma once

#include <cstdint>
#include <expected>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace pictal::program {

/// A library that runs models, opened while the program runs, so that neither building nor
/// starting needs it. Errors are one line each.
class Runtime {
  public:
    struct Output {
        std::vector<std::int64_t> shape;
        /// Lasts as long as this.
        std::span<const float> data;
        std::shared_ptr<void> owner;
    };

    /// A model that is loaded. Needs its runtime to live.
    class Model {
      public:
        /// @param input  single precision, row-major; its memory is used as it is
        [[nodiscard]] std::expected<Output, std::string> run(
            std::span<float> input, std::span<const std::int64_t> shape) const;

        struct State;
        explicit Model(std::shared_ptr<const State> state) : state_(std::move(state)) {}

      private:
        std::shared_ptr<const State> state_;
    };

    /// @param library  a path, or a name that the loader looks for
    [[nodiscard]] static std::expected<Runtime, std::string> open(const std::string& library,
                                                                  int threads);
    [[nodiscard]] std::expected<Model, std::string> load(const std::string& path) const;

    struct Library;

  private:
    explicit Runtime(std::shared_ptr<const Library> library) : library_(std::move(library)) {}

    std::shared_ptr<const Library> library_;
};

}  // namespace pictal::program
