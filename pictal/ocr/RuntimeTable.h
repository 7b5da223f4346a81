#pragma once

#include <cstddef>
#include <cstdint>

/// The few functions of ONNX Runtime that are used, declared here since its packages come without
/// a header. The library has one entry, `OrtGetApiBase`, whose table answers `GetApi(1)` by a table
/// of functions that only ever grows at its end: a function keeps its place in all versions. The
/// places were tried with 1.28.2 and 1.30.0.
namespace pictal::program::ort {

struct Status;
struct Environment;
struct Session;
struct SessionOptions;
struct RunOptions;
struct MemoryInfo;
struct Allocator;
struct Value;
struct Shape;

struct Base {
    const void* const* (*table)(std::uint32_t version);
    const char* (*version)();
};

inline constexpr std::uint32_t tableVersion = 1;
inline constexpr int onlyFatalMessages = 4;
inline constexpr int allOptimisations = 99;
inline constexpr int arenaAllocator = 1;
inline constexpr int usualMemory = 0;
inline constexpr int singlePrecision = 1;

/// A function and its place. Those that return a status return none when all went well.
template <std::size_t Place, class Signature>
struct Entry;

template <std::size_t Place, class Result, class... Parameters>
struct Entry<Place, Result(Parameters...)> {
    using Function = Result (*)(Parameters...);
    Function function;

    explicit Entry(const void* const* table)
        : function(reinterpret_cast<Function>(const_cast<void*>(table[Place]))) {}
    Result operator()(Parameters... parameters) const { return function(parameters...); }
};

struct Table {
    Entry<2, const char*(const Status*)> errorMessage;
    Entry<3, Status*(int, const char*, Environment**)> createEnvironment;
    Entry<7, Status*(const Environment*, const char*, const SessionOptions*, Session**)>
        createSession;
    Entry<9, Status*(Session*, const RunOptions*, const char* const*, const Value* const*,
                     std::size_t, const char* const*, std::size_t, Value**)>
        run;
    Entry<10, Status*(SessionOptions**)> createSessionOptions;
    Entry<19, Status*(SessionOptions*)> disableArena;
    Entry<23, Status*(SessionOptions*, int)> setOptimisation;
    Entry<24, Status*(SessionOptions*, int)> setThreads;
    Entry<36, Status*(const Session*, std::size_t, Allocator*, char**)> inputName;
    Entry<37, Status*(const Session*, std::size_t, Allocator*, char**)> outputName;
    Entry<49, Status*(const MemoryInfo*, void*, std::size_t, const std::int64_t*, std::size_t, int,
                      Value**)>
        createTensor;
    Entry<51, Status*(Value*, void**)> tensorData;
    Entry<60, Status*(const Shape*, int*)> elementType;
    Entry<61, Status*(const Shape*, std::size_t*)> dimensionCount;
    Entry<62, Status*(const Shape*, std::int64_t*, std::size_t)> dimensions;
    Entry<65, Status*(const Value*, Shape**)> shapeOf;
    Entry<69, Status*(int, int, MemoryInfo**)> createMemoryInfo;
    Entry<76, Status*(Allocator*, void*)> free;
    Entry<78, Status*(Allocator**)> usualAllocator;
    Entry<92, void(Environment*)> releaseEnvironment;
    Entry<93, void(Status*)> releaseStatus;
    Entry<94, void(MemoryInfo*)> releaseMemoryInfo;
    Entry<95, void(Session*)> releaseSession;
    Entry<96, void(Value*)> releaseValue;
    Entry<99, void(Shape*)> releaseShape;
    Entry<100, void(SessionOptions*)> releaseSessionOptions;

    explicit Table(const void* const* t)
        : errorMessage(t),
          createEnvironment(t),
          createSession(t),
          run(t),
          createSessionOptions(t),
          disableArena(t),
          setOptimisation(t),
          setThreads(t),
          inputName(t),
          outputName(t),
          createTensor(t),
          tensorData(t),
          elementType(t),
          dimensionCount(t),
          dimensions(t),
          shapeOf(t),
          createMemoryInfo(t),
          free(t),
          usualAllocator(t),
          releaseEnvironment(t),
          releaseStatus(t),
          releaseMemoryInfo(t),
          releaseSession(t),
          releaseValue(t),
          releaseShape(t),
          releaseSessionOptions(t) {}
};

}  // namespace pictal::program::ort
