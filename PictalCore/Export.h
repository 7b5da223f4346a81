#pragma once

/// Marks what the shared library shows. Everything else is hidden.
#if defined(__GNUC__)
#define PICTAL_API [[gnu::visibility("default")]]
#else
#define PICTAL_API
#endif
