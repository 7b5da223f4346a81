#pragma once

#include <variant>

namespace pictal {

/// The caller asked, by its `std::stop_token`, that the work be given up; nothing was produced.
struct CancellationError {
    friend constexpr bool operator==(CancellationError, CancellationError) = default;
};

/// The error of an operation that can also be cancelled.
template <class E>
using OrCancelled = std::variant<E, CancellationError>;

}  // namespace pictal
