#include "pictal/ocr/ModelFolder.h"

#include "pictal/Messages.h"
#include "pictal/ocr/Configurations.h"

#include <cstdlib>
#include <filesystem>
#include <vector>

#include <fmt/format.h>

namespace pictal::program {

namespace fs = std::filesystem;

namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::string fetching(const std::string& folder) {
    return fmt::format("\"pictal-ocr-models {}\" fetches them", escaped(folder));
}

std::expected<Runtime, Failure> openRuntime(const std::string& folder, std::string library,
                                            int threads) {
    if (library.empty()) library = variable("PICTAL_ONNXRUNTIME");
    if (!library.empty()) {
        // A name without a slash would be looked for among the system's libraries only.
        std::error_code ignored;
        if (!library.contains('/') && fs::exists(library, ignored)) library = "./" + library;
        auto runtime = Runtime::open(library, threads);
        if (runtime) return *std::move(runtime);
        return badInput(fmt::format("the ONNX Runtime cannot be used: {}", runtime.error()));
    }
    for (const char* const name : {"libonnxruntime.so", "libonnxruntime.so.1"}) {
        const fs::path path = fs::absolute(fs::path(folder) / name);
        std::error_code ignored;
        if (!fs::exists(path, ignored)) continue;
        auto runtime = Runtime::open(path, threads);
        if (runtime) return *std::move(runtime);
        return badInput(fmt::format("the ONNX Runtime cannot be used: {}", runtime.error()));
    }
    for (const char* const name : {"libonnxruntime.so.1", "libonnxruntime.so"})
        if (auto runtime = Runtime::open(name, threads)) return *std::move(runtime);
    return badInput(
        fmt::format("there is no ONNX Runtime; {}, or name its library by --runtime or "
                    "PICTAL_ONNXRUNTIME",
                    fetching(folder)));
}

std::expected<Runtime::Model, Failure> loadModel(const Runtime& runtime, const fs::path& path) {
    auto model = runtime.load(path);
    if (model) return *std::move(model);
    return badInput(
        fmt::format("{}: the model cannot be used: {}", escaped(path.native()), model.error()));
}

}  // namespace

std::string usualModelFolder() {
    if (auto folder = variable("PICTAL_OCR_MODELS"); !folder.empty()) return folder;
    // An unset, empty or relative folder of the user's data counts as none.
    fs::path data = variable("XDG_DATA_HOME");
    if (!data.is_absolute()) data = fs::path(variable("HOME")) / ".local/share";
    return data / "pictal/ocr";
}

std::expected<LoadedModels, Failure> loadModels(const std::string& folder,
                                                const std::string& library, int threads) {
    const fs::path root(folder);
    for (const char* const name : {"det.onnx", "rec.onnx", "det.yml", "rec.yml"}) {
        std::error_code ignored;
        if (!fs::exists(root / name, ignored))
            return badInput(
                fmt::format("{}: there is no {}, one of the models for text "
                            "recognition or its configuration; {}",
                            escaped(folder), name, fetching(folder)));
    }
    auto detection = readDetectionConfig(root / "det.yml");
    if (!detection) return std::unexpected(detection.error());
    auto recognition = readRecognitionConfig(root / "rec.yml");
    if (!recognition) return std::unexpected(recognition.error());
    auto runtime = openRuntime(folder, library, threads);
    if (!runtime) return std::unexpected(runtime.error());
    auto detector = loadModel(*runtime, root / "det.onnx");
    if (!detector) return std::unexpected(detector.error());
    auto recogniser = loadModel(*runtime, root / "rec.onnx");
    if (!recogniser) return std::unexpected(recogniser.error());
    return LoadedModels{*std::move(runtime),   *std::move(detector),    *std::move(recogniser),
                        *std::move(detection), *std::move(recognition), folder};
}

}  // namespace pictal::program
