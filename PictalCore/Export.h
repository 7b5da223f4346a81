#pragma once

/// Marks what the shared library shows; everything else is hidden. It stands after standard
/// attributes and before the type: `[[nodiscard]] PICTAL_API int f();`, `class PICTAL_API C`.
#if defined(__GNUC__)
#define PICTAL_API __attribute__((visibility("default")))
#else
#define PICTAL_API
#endif
