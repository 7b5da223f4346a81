#include "pictal/ocr/Runtime.h"

#include "pictal/Messages.h"
#include "pictal/ocr/RuntimeTable.h"

#include <optional>
#include <utility>

#include <dlfcn.h>

namespace pictal::program {

using ort::Table;

namespace {

/// The runtime's messages may have several lines.
std::string oneLine(std::string text) {
    for (char& character : text)
        if (character == '\n' || character == '\r' || character == '\t') character = ' ';
    return escaped(text);
}

/// What a status says; nothing when all is well. The status is released.
std::optional<std::string> complaint(const Table& table, ort::Status* status) {
    if (!status) return std::nullopt;
    std::string message = oneLine(table.errorMessage(status));
    table.releaseStatus(status);
    return message;
}

/// Owns what a function of the table made, and gives it back to another.
template <class T, class Release>
std::shared_ptr<T> owned(T* made, const Release& release) {
    return std::shared_ptr<T>(made, [release](T* old) {
        if (old) release(old);
    });
}

}  // namespace

struct Runtime::Library {
    Table table;
    std::shared_ptr<ort::Environment> environment;
    std::shared_ptr<ort::SessionOptions> options;
    std::shared_ptr<ort::MemoryInfo> memory;
    ort::Allocator* allocator;
};

struct Runtime::Model::State {
    std::shared_ptr<const Library> library;
    std::shared_ptr<ort::Session> session;
    std::string input, output;
};

std::expected<Runtime, std::string> Runtime::open(const std::string& library, int threads) {
    // Never closed again: the library's own threads and tables do not take it well.
    void* const handle = ::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) return std::unexpected(oneLine(::dlerror()));
    const auto base = reinterpret_cast<const ort::Base* (*)()>(::dlsym(handle, "OrtGetApiBase"));
    const void* const* const entries = base ? base()->table(ort::tableVersion) : nullptr;
    if (!entries)
        return std::unexpected(escaped(library) + " is no ONNX Runtime, or one without its table");

    const Table table(entries);
    ort::Environment* environment = nullptr;
    ort::SessionOptions* options = nullptr;
    ort::MemoryInfo* memory = nullptr;
    ort::Allocator* allocator = nullptr;
    auto failed =
        complaint(table, table.createEnvironment(ort::onlyFatalMessages, "pictal", &environment));
    const auto environmentOwner = owned(environment, table.releaseEnvironment);
    if (!failed) failed = complaint(table, table.createSessionOptions(&options));
    const auto optionsOwner = owned(options, table.releaseSessionOptions);
    if (!failed) failed = complaint(table, table.setOptimisation(options, ort::allOptimisations));
    // Its own store of memory is 6 % faster, and takes 650 MB for a screen where 430 to 550 do.
    if (!failed) failed = complaint(table, table.disableArena(options));
    if (!failed) failed = complaint(table, table.setThreads(options, threads));
    if (!failed)
        failed = complaint(table,
                           table.createMemoryInfo(ort::arenaAllocator, ort::usualMemory, &memory));
    const auto memoryOwner = owned(memory, table.releaseMemoryInfo);
    if (!failed) failed = complaint(table, table.usualAllocator(&allocator));
    if (failed) return std::unexpected(*failed);
    return Runtime(std::make_shared<const Library>(
        Library{table, environmentOwner, optionsOwner, memoryOwner, allocator}));
}

std::expected<Runtime::Model, std::string> Runtime::load(const std::string& path) const {
    const Table& table = library_->table;
    ort::Session* session = nullptr;
    auto failed = complaint(table, table.createSession(library_->environment.get(), path.c_str(),
                                                       library_->options.get(), &session));
    const auto owner = owned(session, table.releaseSession);
    std::string names[2];
    for (const int which : {0, 1}) {
        if (failed) break;
        char* name = nullptr;
        ort::Allocator* const allocator = library_->allocator;
        failed = complaint(table, which == 0 ? table.inputName(session, 0, allocator, &name)
                                             : table.outputName(session, 0, allocator, &name));
        if (failed) break;
        names[which] = name;
        failed = complaint(table, table.free(allocator, name));
    }
    if (failed) return std::unexpected(*failed);
    return Model(std::make_shared<const Model::State>(
        Model::State{library_, owner, std::move(names[0]), std::move(names[1])}));
}

std::expected<Runtime::Output, std::string> Runtime::Model::run(
    std::span<float> input, std::span<const std::int64_t> shape) const {
    const Library& library = *state_->library;
    const Table& table = library.table;
    ort::Value* value = nullptr;
    ort::Value* result = nullptr;
    ort::Shape* resultShape = nullptr;
    auto failed = complaint(
        table, table.createTensor(library.memory.get(), input.data(), input.size_bytes(),
                                  shape.data(), shape.size(), ort::singlePrecision, &value));
    const auto valueOwner = owned(value, table.releaseValue);
    const char* const inputName = state_->input.c_str();
    const char* const outputName = state_->output.c_str();
    if (!failed)
        failed = complaint(table, table.run(state_->session.get(), nullptr, &inputName, &value, 1,
                                            &outputName, 1, &result));
    const auto resultOwner = owned(result, table.releaseValue);
    if (!failed) failed = complaint(table, table.shapeOf(result, &resultShape));
    const auto shapeOwner = owned(resultShape, table.releaseShape);

    int type = 0;
    std::size_t count = 0;
    void* data = nullptr;
    Output output;
    if (!failed) failed = complaint(table, table.elementType(resultShape, &type));
    if (!failed) failed = complaint(table, table.dimensionCount(resultShape, &count));
    output.shape.resize(count);
    if (!failed)
        failed = complaint(table, table.dimensions(resultShape, output.shape.data(), count));
    if (!failed) failed = complaint(table, table.tensorData(result, &data));
    if (failed) return std::unexpected(*failed);
    if (type != ort::singlePrecision)
        return std::unexpected(std::string("its output is not single precision"));
    std::int64_t elements = 1;
    for (const std::int64_t side : output.shape)
        if (side < 0 || __builtin_mul_overflow(elements, side, &elements))
            return std::unexpected(std::string("its output has no usable shape"));
    output.data = {static_cast<const float*>(data), static_cast<std::size_t>(elements)};
    output.owner = resultOwner;
    return output;
}

}  // namespace pictal::program
