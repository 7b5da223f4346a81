#pragma once

#include <array>
#include <cstddef>

/// Kernels at more than one instruction level: one body, which is always inlined, wrapped in one
/// function a level. The best one that the processor has is chosen once; every level gives the same
/// bytes, and tests call each of them.
namespace pictal::kernels {

enum class Level {
    plain,
    /// AVX2, with the rest of x86-64-v3.
    v3,
    /// AVX-512, with the rest of x86-64-v4.
    v4,
};

#define PICTAL_BODY [[gnu::always_inline]] inline

inline constexpr std::array allLevels{Level::plain, Level::v3, Level::v4};

#if defined(__x86_64__)
#define PICTAL_LEVEL_V3 [[gnu::target("arch=x86-64-v3")]]
#if defined(__clang__)
#define PICTAL_LEVEL_V4 [[gnu::target("arch=x86-64-v4"), clang::min_vector_width(512)]]
#else
#define PICTAL_LEVEL_V4 [[gnu::target("arch=x86-64-v4,prefer-vector-width=512")]]
#endif

[[nodiscard]] inline bool isAvailable(Level level) {
    switch (level) {
        case Level::plain:
            return true;
        case Level::v3:
            return __builtin_cpu_supports("x86-64-v3");
        case Level::v4:
            return __builtin_cpu_supports("x86-64-v4");
    }
    return false;
}
#else
#define PICTAL_LEVEL_V3
#define PICTAL_LEVEL_V4

[[nodiscard]] inline bool isAvailable(Level level) {
    return level == Level::plain;
}
#endif

/// A body compiled for one level: `AtV3<body>::run` is called like `body`.
template <auto Body>
struct AtPlain;
template <class Result, class... Arguments, Result (*Body)(Arguments...)>
struct AtPlain<Body> {
    static Result run(Arguments... arguments) { return Body(arguments...); }
};

template <auto Body>
struct AtV3;
template <class Result, class... Arguments, Result (*Body)(Arguments...)>
struct AtV3<Body> {
    PICTAL_LEVEL_V3 static Result run(Arguments... arguments) { return Body(arguments...); }
};

template <auto Body>
struct AtV4;
template <class Result, class... Arguments, Result (*Body)(Arguments...)>
struct AtV4<Body> {
    PICTAL_LEVEL_V4 static Result run(Arguments... arguments) { return Body(arguments...); }
};

/// The highest level of this processor.
[[nodiscard]] inline Level bestLevel() {
    static const Level best = isAvailable(Level::v4)   ? Level::v4
                              : isAvailable(Level::v3) ? Level::v3
                                                       : Level::plain;
    return best;
}

/// The table of a level out of the same table at each.
template <class Table>
[[nodiscard]] const Table& atLevel(Level level, const Table& plain, const Table& v3,
                                   const Table& v4) {
    const std::array<const Table*, allLevels.size()> tables{&plain, &v3, &v4};
    return *tables[static_cast<std::size_t>(level)];
}

}  // namespace pictal::kernels
