#pragma once

#include <array>
#include <cstddef>

/// Kernels at more than one instruction set: one body, which is always inlined, wrapped in one
/// function a target. The best one that the processor has is chosen once; every target gives the
/// same bytes, and tests call each of them.
namespace pictal::kernels {

enum class Target {
    plain,
    /// AVX2, with the rest of x86-64-v3.
    v3,
    /// AVX-512, with the rest of x86-64-v4.
    v4,
};

#define PICTAL_BODY [[gnu::always_inline]] inline

inline constexpr std::array allTargets{Target::plain, Target::v3, Target::v4};

#if defined(__x86_64__)
#define PICTAL_TARGET_V3 [[gnu::target("arch=x86-64-v3")]]
#if defined(__clang__)
#define PICTAL_TARGET_V4 [[gnu::target("arch=x86-64-v4"), clang::min_vector_width(512)]]
#else
#define PICTAL_TARGET_V4 [[gnu::target("arch=x86-64-v4,prefer-vector-width=512")]]
#endif

[[nodiscard]] inline bool isAvailable(Target target) {
    switch (target) {
        case Target::plain:
            return true;
        case Target::v3:
            return __builtin_cpu_supports("x86-64-v3");
        case Target::v4:
            return __builtin_cpu_supports("x86-64-v4");
    }
    return false;
}
#else
#define PICTAL_TARGET_V3
#define PICTAL_TARGET_V4

[[nodiscard]] inline bool isAvailable(Target target) {
    return target == Target::plain;
}
#endif

/// A body compiled for one target: `AtV3<body>::run` is called like `body`.
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
    PICTAL_TARGET_V3 static Result run(Arguments... arguments) { return Body(arguments...); }
};

template <auto Body>
struct AtV4;
template <class Result, class... Arguments, Result (*Body)(Arguments...)>
struct AtV4<Body> {
    PICTAL_TARGET_V4 static Result run(Arguments... arguments) { return Body(arguments...); }
};

/// The best target of this processor.
[[nodiscard]] inline Target bestTarget() {
    static const Target best = isAvailable(Target::v4)   ? Target::v4
                               : isAvailable(Target::v3) ? Target::v3
                                                         : Target::plain;
    return best;
}

/// The table of a target out of the same table at each.
template <class Table>
[[nodiscard]] const Table& tableFor(Target target, const Table& plain, const Table& v3,
                                    const Table& v4) {
    const std::array<const Table*, allTargets.size()> tables{&plain, &v3, &v4};
    return *tables[static_cast<std::size_t>(target)];
}

}  // namespace pictal::kernels
